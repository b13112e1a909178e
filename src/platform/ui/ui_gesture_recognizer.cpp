// The states of gestures, and the tap.
// The base keeps the list of fingers, so that a gesture is ready for the next one whatever happened to it.
#include "platform/ui/ui_gesture_recognizer.h"

#include <cmath>

namespace {

constexpr CGFloat tapSlop = 10;
constexpr HostTime tapDuration = 0.75;

}  // namespace

void UIGestureRecognizer::setState(UIGestureRecognizerState state) {
    const bool recognizes =
        state == UIGestureRecognizerState::began || state == UIGestureRecognizerState::ended;
    if (_state == UIGestureRecognizerState::possible && recognizes) _recognized = true;
    _state = state;
    const bool acts =
        state != UIGestureRecognizerState::possible && state != UIGestureRecognizerState::failed;
    if (acts && _action) _action(*this);
}

void UIGestureRecognizer::takeTouches(const UITouches& touches, const UIEvent& event) {
    const UITouchPhase phase = touches.front()->phase;
    if (phase == UITouchPhase::began) {
        _touches.insert(_touches.end(), touches.begin(), touches.end());
    } else if (isLift(phase)) {
        for (const auto& touch : touches)
            std::erase(_touches, touch);
    }
    if (_state != UIGestureRecognizerState::failed) {
        switch (phase) {
            case UITouchPhase::began:
                touchesBegan(touches, event);
                break;
            case UITouchPhase::moved:
                touchesMoved(touches, event);
                break;
            case UITouchPhase::ended:
                touchesEnded(touches, event);
                break;
            case UITouchPhase::cancelled:
                touchesCancelled(touches, event);
                break;
        }
    }
    if (!_touches.empty()) return;
    _state = UIGestureRecognizerState::possible;
    reset();
}

void UIGestureRecognizer::yield() {
    if (_state == UIGestureRecognizerState::possible && !_touches.empty()) {
        _state = UIGestureRecognizerState::failed;
    }
}

bool UITapGestureRecognizer::isNearStart(const UITouch& touch) const {
    return std::hypot(touch.location.x - _start.x, touch.location.y - _start.y) <= tapSlop;
}

void UITapGestureRecognizer::touchesBegan(const UITouches& touches, const UIEvent&) {
    if (numberOfTouches() > 1) return setState(UIGestureRecognizerState::failed);
    _start = touches.front()->location;
    _startTime = touches.front()->timestamp;
}

void UITapGestureRecognizer::touchesMoved(const UITouches& touches, const UIEvent&) {
    if (!isNearStart(*touches.front())) setState(UIGestureRecognizerState::failed);
}

void UITapGestureRecognizer::touchesEnded(const UITouches& touches, const UIEvent&) {
    const UITouch& touch = *touches.front();
    const bool tapped = isNearStart(touch) && touch.timestamp - _startTime <= tapDuration;
    setState(tapped ? UIGestureRecognizerState::ended : UIGestureRecognizerState::failed);
}

void UITapGestureRecognizer::touchesCancelled(const UITouches&, const UIEvent&) {
    setState(UIGestureRecognizerState::failed);
}
