// The common course of continuous gestures.
// Nothing is allocated by a move: the list of a round keeps its room.
#include "platform/ui/ui_continuous_gesture_recognizer.h"

#include <algorithm>

void UIContinuousGestureRecognizer::touchesBegan(const UITouches& touches, const UIEvent&) {
    _moved.clear();
    _moved.reserve(numberOfTouches());
    fingersChanged(touches.front()->timestamp);
}

void UIContinuousGestureRecognizer::touchesMoved(const UITouches& touches, const UIEvent&) {
    const UITouch& touch = *touches.front();
    if (std::find(_moved.begin(), _moved.end(), touch.id) != _moved.end()) endRound();
    follow(touch);
    if (isActive()) return setState(UIGestureRecognizerState::changed);
    _moved.push_back(touch.id);
    if (_moved.size() == numberOfTouches()) endRound();
}

void UIContinuousGestureRecognizer::endRound() {
    _moved.clear();
    if (isActive() || numberOfTouches() < _minimumNumberOfTouches || !isPastHysteresis()) return;
    startMeasuring();
    setState(UIGestureRecognizerState::began);
}

void UIContinuousGestureRecognizer::touchesEnded(const UITouches& touches, const UIEvent&) {
    lift(touches.front()->timestamp, UIGestureRecognizerState::ended);
}

void UIContinuousGestureRecognizer::touchesCancelled(const UITouches& touches, const UIEvent&) {
    lift(touches.front()->timestamp, UIGestureRecognizerState::cancelled);
}

/// With fingers left, but too few, the gesture is over, and a finger more begins another.
void UIContinuousGestureRecognizer::lift(HostTime time, UIGestureRecognizerState end) {
    _moved.clear();
    fingersChanged(time);
    if (!isActive() || numberOfTouches() >= _minimumNumberOfTouches) return;
    setState(end);
    setState(UIGestureRecognizerState::possible);
}
