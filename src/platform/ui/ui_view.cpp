// Views: their tree, layout, hit testing and animated values. Painting is in ui_view_painting.cpp.
// Every change that shows marks the window's overlay, and only those do.
#include "platform/ui/ui_view.h"

#include <algorithm>
#include <any>
#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_gesture_recognizer.h"
#include "platform/ui/ui_view_controller.h"
#include "platform/ui/ui_window.h"
#include "platform/ui/view_animator.h"

namespace {

/// Where an interval lies after its container grew by `growth`. The flexible ones of margin before, length
/// and margin after share the growth in proportion to their sizes, or evenly where they have none.
void resizeAxis(CGFloat& origin, CGFloat& length, CGFloat container, CGFloat growth, const bool flexible[3]) {
    const CGFloat sizes[3] = {origin, length, container - origin - length};
    CGFloat total = 0;
    int count = 0;
    for (int i = 0; i < 3; ++i) {
        if (!flexible[i]) continue;
        total += std::max(sizes[i], 0.0);
        ++count;
    }
    if (count == 0) return;
    const auto share = [&](int i) {
        if (!flexible[i]) return 0.0;
        return total > 0 ? growth * (std::max(sizes[i], 0.0) / total) : growth / count;
    };
    origin += share(0);
    length += share(1);
}

CGRect autoresized(CGRect frame, uint32_t mask, CGSize from, CGSize to) {
    const auto has = [mask](UIViewAutoresizing bit) { return (mask & bit) != 0; };
    const bool horizontal[3] = {has(UIViewAutoresizingFlexibleLeftMargin),
                                has(UIViewAutoresizingFlexibleWidth),
                                has(UIViewAutoresizingFlexibleRightMargin)};
    const bool vertical[3] = {has(UIViewAutoresizingFlexibleTopMargin), has(UIViewAutoresizingFlexibleHeight),
                              has(UIViewAutoresizingFlexibleBottomMargin)};
    resizeAxis(frame.origin.x, frame.size.width, from.width, to.width - from.width, horizontal);
    resizeAxis(frame.origin.y, frame.size.height, from.height, to.height - from.height, vertical);
    return frame;
}

void runBlock(const ViewAnimator::Timing& timing, const std::function<void()>& animations,
              UIView::Completion completion) {
    struct OpenBlock {
        ~OpenBlock() { ViewAnimator::shared().endBlock(); }
    };
    ViewAnimator::shared().beginBlock(timing, std::move(completion));
    const OpenBlock open;
    if (animations) animations();
}

}  // namespace

UIView::~UIView() {
    ViewAnimator::shared().viewDestroyed(*this);
    for (const auto& view : _subviews)
        view->_superview = nullptr;
    for (const auto& recognizer : _recognizers)
        recognizer->attachToView(nullptr);
}

void UIView::setFrame(CGRect frame) {
    ViewAnimator::shared().frameChanges(*this, _frame, frame);
    if (frame == _frame) return;
    setNeedsDisplay();
    const CGSize from = _frame.size;
    _frame = frame;
    if (from == frame.size) return;
    resizeSubviews(from, frame.size);
    setNeedsLayout();
}

void UIView::resizeSubviews(CGSize from, CGSize to) {
    for (const auto& view : _subviews) {
        if (view->_autoresizingMask == UIViewAutoresizingNone) continue;
        view->setFrame(autoresized(view->_frame, view->_autoresizingMask, from, to));
    }
}

void UIView::setAlpha(double alpha) {
    alpha = alpha > 0 ? std::min(alpha, 1.0) : 0;
    ViewAnimator::shared().alphaChanges(*this, _alpha, alpha);
    _alpha = alpha;
    setNeedsDisplay();
}

void UIView::setHidden(bool hidden) {
    if (hidden == _hidden) return;
    _hidden = hidden;
    setNeedsDisplay();
}

void UIView::setBackgroundColor(UIColor color) {
    if (color == _backgroundColor) return;
    _backgroundColor = color;
    setNeedsDisplay();
}

void UIView::setCornerRadius(double radius) {
    _cornerRadius = radius;
    setNeedsDisplay();
}

void UIView::setAccessibilityLabel(std::string label) {
    if (label == _accessibilityLabel) return;
    _accessibilityLabel = std::move(label);
    setNeedsDisplay();
}

double UIView::presentationAlpha() const {
    return ViewAnimator::shared().alphaOnScreen(*this, _alpha);
}

CGRect UIView::presentationFrame() const {
    return ViewAnimator::shared().frameOnScreen(*this, _frame);
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
    insertSubviewAtIndex(view, _subviews.size());
}

void UIView::insertSubviewAtIndex(const std::shared_ptr<UIView>& view, std::size_t index) {
    if (!view) return;
    for (const UIView* above = this; above; above = above->_superview) {
        if (above != view.get()) continue;
        NSLog("UIView: a view cannot be put into itself");
        return;
    }
    const std::shared_ptr<UIView> kept = view;
    kept->removeFromSuperview();
    const auto position = static_cast<std::ptrdiff_t>(std::min(index, _subviews.size()));
    _subviews.insert(_subviews.begin() + position, kept);
    kept->_superview = this;
    setNeedsLayout();
    kept->setNeedsDisplay();
}

void UIView::removeFromSuperview() {
    if (!_superview) return;
    setNeedsDisplay();
    const std::shared_ptr<UIView> self = shared_from_this();
    std::erase(_superview->_subviews, self);
    _superview->setNeedsLayout();
    _superview = nullptr;
}

void UIView::setNeedsLayout() {
    _needsLayout = true;
}

void UIView::layoutItselfIfNeeded() {
    if (!std::exchange(_needsLayout, false)) return;
    layoutSubviews();
    if (_controller) _controller->viewDidLayoutSubviews();
}

void UIView::layoutIfNeeded() {
    layoutItselfIfNeeded();
    for (std::size_t i = 0; i < _subviews.size(); ++i) {
        const std::shared_ptr<UIView> view = _subviews[i];
        view->layoutIfNeeded();
    }
}

void UIView::setNeedsDisplay() {
    if (UIWindow* shownOn = window()) shownOn->overlayNeedsDisplay();
}

CGPoint UIView::convertPointToWindow(CGPoint p) const {
    for (const UIView* view = this; view->_superview; view = view->_superview) {
        p.x += view->_frame.origin.x;
        p.y += view->_frame.origin.y;
    }
    return p;
}

CGPoint UIView::convertPointFromWindow(CGPoint p) const {
    const CGPoint origin = convertPointToWindow(CGPointZero);
    return {p.x - origin.x, p.y - origin.y};
}

CGRect UIView::convertRectToWindow(CGRect r) const {
    return {convertPointToWindow(r.origin), r.size};
}

std::shared_ptr<UIView> UIView::hitTest(CGPoint p) {
    if (_hidden || !_userInteractionEnabled || _alpha < minimumTouchableAlpha || !pointInside(p)) return {};
    for (auto view = _subviews.rbegin(); view != _subviews.rend(); ++view) {
        const CGPoint origin = (*view)->_frame.origin;
        if (auto hit = (*view)->hitTest({p.x - origin.x, p.y - origin.y})) return hit;
    }
    return shared_from_this();
}

void UIView::addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> recognizer) {
    recognizer->attachToView(this);
    _recognizers.push_back(std::move(recognizer));
}

UIResponder* UIView::nextResponder() {
    if (_controller) return _controller;
    return _superview;
}

UIEdgeInsets UIView::safeAreaInsets() {
    const UIWindow* const shownBy = window();
    if (!shownBy) return {};
    const CGRect frame = convertRectToWindow(bounds());
    const CGRect safe = UIEdgeInsetsInsetRect(shownBy->bounds(), shownBy->windowInsets());
    const auto covered = [](CGFloat points) { return std::max(points, 0.0); };
    return {covered(CGRectGetMinY(safe) - CGRectGetMinY(frame)),
            covered(CGRectGetMinX(safe) - CGRectGetMinX(frame)),
            covered(CGRectGetMaxY(frame) - CGRectGetMaxY(safe)),
            covered(CGRectGetMaxX(frame) - CGRectGetMaxX(safe))};
}

void UIView::animateWithDuration(double duration, double delay, uint32_t options,
                                 const std::function<void()>& animations, Completion completion) {
    const bool current = (options & UIViewAnimationOptionBeginFromCurrentState) != 0;
    runBlock({duration, delay, current, std::nullopt}, animations, std::move(completion));
}

void UIView::animateWithSpring(double duration, double delay, double dampingRatio, double initialVelocity,
                               uint32_t options, const std::function<void()>& animations,
                               Completion completion) {
    const bool current = (options & UIViewAnimationOptionBeginFromCurrentState) != 0;
    const SpringCurve spring(dampingRatio, initialVelocity, duration);
    runBlock({duration, delay, current, spring}, animations, std::move(completion));
}

void UIView::setAnimationsEnabled(bool enabled) {
    ViewAnimator::shared().setEnabled(enabled);
}

KeyValueTable UIView::makeKeyValueTable() {
    return {
        {"alpha",
         KeyValueAccess<double>{[this] { return alpha(); }, [this](double value) { setAlpha(value); }}},
        {"frame",
         KeyValueAccess<CGRect>{[this] { return frame(); }, [this](CGRect value) { setFrame(value); }}},
        {"hidden",
         KeyValueAccess<bool>{[this] { return isHidden(); }, [this](bool value) { setHidden(value); }}},
    };
}
