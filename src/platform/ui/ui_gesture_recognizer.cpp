// The states of gestures, and the tap.
// A recogniser counts fingers itself: touches may come and go in any order.
#include "platform/ui/ui_gesture_recognizer.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr CGFloat tapSlop = 10;
constexpr HostTime tapDuration = 0.75;

bool isNear(CGPoint a, CGPoint b, CGFloat distance) {
    return std::hypot(a.x - b.x, a.y - b.y) <= distance;
}

}  // namespace

void UIGestureRecognizer::setState(UIGestureRecognizerState state) {
    if (_state == UIGestureRecognizerState::possible && state == UIGestureRecognizerState::ended) {
        _recognized = true;
    }
    _state = state;
    const bool acts =
        state != UIGestureRecognizerState::possible && state != UIGestureRecognizerState::failed;
    if (acts && _action) _action(*this);
}

void UITapGestureRecognizer::touchesBegan(const UITouches& touches, const UIEvent&) {
    for (const auto& touch : touches) {
        _fingers.push_back(touch->id);
        _start = touch->location;
        _startTime = touch->timestamp;
    }
    if (_fingers.size() > 1) setState(UIGestureRecognizerState::failed);
}

void UITapGestureRecognizer::touchesMoved(const UITouches& touches, const UIEvent&) {
    for (const auto& touch : touches) {
        if (!isNear(touch->location, _start, tapSlop)) setState(UIGestureRecognizerState::failed);
    }
}

void UITapGestureRecognizer::touchesEnded(const UITouches& touches, const UIEvent&) {
    forgetFingers(touches);
    if (!_fingers.empty()) return;
    const UITouch& touch = *touches.back();
    const bool tapped = state() == UIGestureRecognizerState::possible &&
                        isNear(touch.location, _start, tapSlop) &&
                        touch.timestamp - _startTime <= tapDuration;
    if (tapped) setState(UIGestureRecognizerState::ended);
    setState(UIGestureRecognizerState::possible);
}

void UITapGestureRecognizer::touchesCancelled(const UITouches& touches, const UIEvent&) {
    forgetFingers(touches);
    setState(_fingers.empty() ? UIGestureRecognizerState::possible : UIGestureRecognizerState::failed);
}

void UITapGestureRecognizer::forgetFingers(const UITouches& touches) {
    for (const auto& touch : touches)
        std::erase(_fingers, touch->id);
}
