// Fingers draw, everything else sets a motion going; the motion is stepped once a frame, only while there is
// one. Beyond the edges the content follows the finger less and less.
#include "platform/ui/ui_scroll_view.h"

#include <algorithm>
#include <cmath>

#include "platform/ui/ui_accessibility.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_magnification_gesture_recognizer.h"
#include "platform/ui/ui_pan_gesture_recognizer.h"

namespace {

constexpr CGFloat pointsPerNotch = 100;
constexpr CGFloat pointsPerKey = 64;
/// What stays in sight when a page is turned.
constexpr CGFloat pageOverlap = 40;
constexpr CGFloat indicatorWidth = 4;
constexpr CGFloat indicatorMargin = 3;
constexpr CGFloat shortestIndicator = 36;
constexpr UIColor indicatorColor = UIColor::white(1, 0.45);
constexpr double indicatorRest = 0.7;  // s
constexpr double indicatorFade = 0.3;  // s

}  // namespace

UIScrollView::UIScrollView(CGRect frame) : UIView(frame) {
    _indicator->setUserInteractionEnabled(false);
    _indicator->setBackgroundColor(indicatorColor);
    _indicator->setCornerRadius(indicatorWidth / 2);
    _indicator->setAlpha(0);
    addSubview(_content);
    addSubview(_indicator);
    addGestureRecognizer(
        std::make_shared<UIPanGestureRecognizer>([this](UIPanGestureRecognizer& drag) { pan(drag); }));
    addGestureRecognizer(std::make_shared<UIMagnificationGestureRecognizer>(
        [this](UIMagnificationGestureRecognizer& turn) { wheel(turn); }));
}

UIScrollView::~UIScrollView() {
    stop();
}

CGFloat UIScrollView::lastOffset() const {
    return std::max(contentSize().height - bounds().size.height, 0.0);
}

CGFloat UIScrollView::clamped(CGFloat offset) const {
    return std::clamp(offset, 0.0, lastOffset());
}

void UIScrollView::setContentHeight(CGFloat height) {
    _content->setFrame(CGRectMake(0, -_offset, bounds().size.width, height));
    if (!_isDragging && !_motion) moveTo(clamped(_offset));
}

void UIScrollView::layoutSubviews() {
    setContentHeight(contentSize().height);
}

void UIScrollView::setIndicatorInset(CGFloat inset) {
    _indicatorInset = inset;
}

void UIScrollView::moveTo(CGFloat offset) {
    _offset = offset;
    CGRect place = _content->frame();
    place.origin.y = -offset;
    _content->setFrame(place);

    const CGFloat room = bounds().size.height - 2 * indicatorMargin;
    const CGFloat height = contentSize().height;
    if (height <= 0 || room <= shortestIndicator) return;
    // Drawn beyond an edge it gets shorter, as what shows does.
    const CGFloat beyond = std::abs(offset - clamped(offset));
    const CGFloat length =
        std::max(room * std::min(bounds().size.height / height, 1.0) - beyond, indicatorWidth * 2);
    const CGFloat shown = std::clamp(std::max(length, shortestIndicator - beyond), indicatorWidth * 2, room);
    const CGFloat share = lastOffset() > 0 ? clamped(offset) / lastOffset() : 0;
    _indicator->setFrame(CGRectMake(bounds().size.width - indicatorWidth - indicatorMargin - _indicatorInset,
                                    indicatorMargin + share * (room - shown), indicatorWidth, shown));
}

void UIScrollView::showIndicator() {
    if (lastOffset() > 0) _indicator->setAlpha(1);
}

void UIScrollView::fadeIndicator() {
    if (_indicator->alpha() <= 0) return;
    UIView::animateWithDuration(indicatorFade, indicatorRest, UIViewAnimationOptionBeginFromCurrentState,
                                [bar = _indicator] { bar->setAlpha(0); });
}

void UIScrollView::setContentOffset(CGPoint offset, bool animated) {
    const CGFloat place = clamped(offset.y);
    if (animated && !UIAccessibilityIsReduceMotionEnabled()) {
        return start(ScrollMotion::springTo(_offset, 0, place));
    }
    stop();
    moveTo(place);
}

void UIScrollView::scrollRectToVisible(CGRect rect, bool animated) {
    const CGFloat height = bounds().size.height;
    const CGFloat last = CGRectGetMaxY(rect) - height;
    const CGFloat first = CGRectGetMinY(rect);
    const CGFloat place = last > first ? first : std::clamp(goal(), last, first);
    if (clamped(place) != goal()) setContentOffset({0, place}, animated);
}

void UIScrollView::pan(UIPanGestureRecognizer& pan) {
    switch (pan.state()) {
        case UIGestureRecognizerState::began:
            stop();
            _isDragging = true;
            _dragOrigin = clamped(_offset) + rubberBandPull(_offset - clamped(_offset), bounds().size.height);
            showIndicator();
            willBeginDragging();
            [[fallthrough]];
        case UIGestureRecognizerState::changed:
            return drawTo(_dragOrigin - pan.translationInView(*this).y);
        case UIGestureRecognizerState::ended:
            _isDragging = false;
            return comeToRest(-pan.velocityInView(*this).y);
        case UIGestureRecognizerState::cancelled:
            _isDragging = false;
            return comeToRest(0);
        default:
            return;
    }
}

void UIScrollView::drawTo(CGFloat pulled) {
    const CGFloat inside = clamped(pulled);
    moveTo(inside + rubberBand(pulled - inside, bounds().size.height));
}

void UIScrollView::comeToRest(double velocity) {
    const bool isInside = _offset == clamped(_offset);
    if (UIAccessibilityIsReduceMotionEnabled()) moveTo(clamped(_offset));
    if (UIAccessibilityIsReduceMotionEnabled() || (isInside && velocity == 0)) return fadeIndicator();
    start(ScrollMotion::glide(_offset, velocity, 0, lastOffset()));
}

/// Whole notches come one by one and are smoothed; trackpads send what the fingers do.
void UIScrollView::wheel(UIMagnificationGestureRecognizer& wheel) {
    const CGFloat distance = -wheel.notches() * pointsPerNotch;
    if (distance == 0 || _isDragging) return;
    if (std::abs(wheel.notches()) >= 1) return scrollBy(distance);
    stop();
    showIndicator();
    moveTo(clamped(_offset + distance));
    fadeIndicator();
}

void UIScrollView::scrollBy(CGFloat distance) {
    showIndicator();
    setContentOffset({0, goal() + distance}, true);
    if (!_motion) fadeIndicator();
}

bool UIScrollView::keyPressed(const HostKeyPress& press) {
    const CGFloat page = std::max(bounds().size.height - pageOverlap, pointsPerKey);
    switch (press.key) {
        case HostKey::up:
            scrollBy(-pointsPerKey);
            return true;
        case HostKey::down:
            scrollBy(pointsPerKey);
            return true;
        case HostKey::pageUp:
            scrollBy(-page);
            return true;
        case HostKey::pageDown:
            scrollBy(page);
            return true;
        case HostKey::home:
            scrollBy(-contentSize().height);
            return true;
        case HostKey::end:
            scrollBy(contentSize().height);
            return true;
        default:
            return false;
    }
}

void UIScrollView::start(const ScrollMotion& motion) {
    UIApplication* const application = UIApplication::sharedApplication();
    if (!application) return moveTo(static_cast<CGFloat>(motion.rest()));
    showIndicator();
    _motion = motion;
    _motionStart = application->time();
    if (_frameCallback == 0)
        _frameCallback = application->addFrameCallback([this](double time) { step(time); });
}

void UIScrollView::step(double time) {
    const double passed = time - _motionStart;
    moveTo(static_cast<CGFloat>(_motion->at(passed)));
    if (passed < _motion->duration()) return;
    stop();
    // The content or the room may have changed on the way.
    comeToRest(0);
}

void UIScrollView::stop() {
    _motion.reset();
    UIApplication* const application = UIApplication::sharedApplication();
    if (_frameCallback != 0 && application) application->removeFrameCallback(_frameCallback);
    _frameCallback = 0;
}

void UIScrollView::touchesBegan(const UITouches&, const UIEvent&) {
    _hasCaught = _motion.has_value();
    stop();
}

/// A finger that only held the content leaves it; one that drew it is the pan's.
void UIScrollView::touchesEnded(const UITouches&, const UIEvent&) {
    if (!_isDragging && !_motion) comeToRest(0);
}

void UIScrollView::touchesCancelled(const UITouches& touches, const UIEvent& event) {
    touchesEnded(touches, event);
}
