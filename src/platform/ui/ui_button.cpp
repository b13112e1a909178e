// Buttons: one finger presses, a light shows it, the lift on the button acts.
// A finger that slides off and lifts elsewhere has changed its mind.
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/ui/text_measure.h"
#include "platform/ui/ui_control.h"

namespace {

constexpr CGFloat imageGap = 5;
/// How far outside the button a finger may lift: it wobbles when it presses hard.
constexpr CGFloat pressSlop = 8;
constexpr CGFloat glowRadius = 10;
constexpr UIColor glowColor = UIColor::white(1, 0.24);
constexpr double glowFade = 0.35;

}  // namespace

void UIButton::setTitle(std::string title) {
    if (title == _title) return;
    _title = std::move(title);
    setNeedsDisplay();
}

void UIButton::setImage(UIImageRef image) {
    _image = std::move(image);
    setNeedsDisplay();
}

void UIButton::setFont(UIFont font) {
    _font = std::move(font);
    setNeedsDisplay();
}

void UIButton::setTintColor(UIColor color) {
    _tint = color;
    setNeedsDisplay();
}

CGSize UIButton::contentSize() const {
    CGSize size = _image ? _image->size() : CGSizeZero;
    if (_title.empty()) return size;
    const CGSize text = measureText(_title, _font, 0);
    size.width += text.width + (_image ? imageGap : 0);
    size.height = std::max(size.height, text.height);
    return size;
}

/// The image, then the title beside it, both together in the middle.
void UIButton::drawRect(Canvas& canvas, CGRect bounds) {
    CGFloat x = (bounds.size.width - contentSize().width) / 2;
    if (_image) {
        const CGSize size = _image->size();
        canvas.drawImage(*_image, {{x, (bounds.size.height - size.height) / 2}, size}, _tint);
        x += size.width + imageGap;
    }
    if (_title.empty()) return;
    const CGSize text = measureText(_title, _font, 0);
    canvas.drawText(_title, _font, _tint, {{x, (bounds.size.height - text.height) / 2}, text},
                    NSTextAlignment::left, true);
}

void UIButton::layoutSubviews() {
    if (_glow) _glow->setFrame(CGRectInset(bounds(), 2, 4));
}

void UIButton::flash() {
    showGlow();
    fadeGlow();
}

void UIButton::showGlow() {
    if (!_glow) {
        _glow = std::make_shared<UIView>();
        _glow->setUserInteractionEnabled(false);
        _glow->setBackgroundColor(glowColor);
        _glow->setCornerRadius(glowRadius);
        addSubview(_glow);
        layoutSubviews();
    }
    _glow->setAlpha(1);
}

void UIButton::fadeGlow() {
    if (!_glow) return;
    UIView::animateWithDuration(glowFade, 0, UIViewAnimationOptionNone,
                                [glow = _glow] { glow->setAlpha(0); });
}

void UIButton::setHighlighted(bool highlighted) {
    if (highlighted == _highlighted) return;
    _highlighted = highlighted;
    if (highlighted) {
        showGlow();
    } else {
        fadeGlow();
    }
}

/// Whether the pressing finger is among the touches, and whether it is on the button.
bool UIButton::holdsFinger(const UITouches& touches, bool* inside) const {
    for (const auto& touch : touches) {
        if (touch->id != _finger) continue;
        *inside =
            CGRectContainsPoint(CGRectInset(bounds(), -pressSlop, -pressSlop), touch->locationInView(*this));
        return true;
    }
    return false;
}

void UIButton::touchesBegan(const UITouches& touches, const UIEvent&) {
    if (_finger || touches.empty()) return;
    _finger = touches.front()->id;
    setHighlighted(true);
}

void UIButton::touchesMoved(const UITouches& touches, const UIEvent&) {
    bool inside = false;
    if (holdsFinger(touches, &inside)) setHighlighted(inside);
}

void UIButton::touchesEnded(const UITouches& touches, const UIEvent&) {
    bool inside = false;
    if (!holdsFinger(touches, &inside)) return;
    _finger.reset();
    setHighlighted(false);
    if (!inside || !_action) return;
    const auto action = _action;
    action();
}

const std::string& UIButton::accessibilityLabel() const {
    const std::string& own = UIView::accessibilityLabel();
    return own.empty() ? _title : own;
}

bool UIButton::accessibilityActivate() {
    if (!_action) return false;
    flash();
    const auto action = _action;
    action();
    return true;
}

void UIButton::touchesCancelled(const UITouches& touches, const UIEvent&) {
    bool inside = false;
    if (!holdsFinger(touches, &inside)) return;
    _finger.reset();
    setHighlighted(false);
}

void UIFocusableButton::setFocused(bool focused) {
    if (focused == _isFocused) return;
    _isFocused = focused;
    setNeedsDisplay();
}
