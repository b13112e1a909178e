// The pan adds up the fingers' steps, each by its share of the middle.
// Places would jump with the number of fingers; steps do not.
#include "platform/ui/ui_pan_gesture_recognizer.h"

#include <cmath>

UIPanGestureRecognizer::UIPanGestureRecognizer(std::function<void(UIPanGestureRecognizer&)> action)
    : UIContinuousGestureRecognizer(
          [action = std::move(action)](UIGestureRecognizer& pan) {
              action(static_cast<UIPanGestureRecognizer&>(pan));
          },
          1) {}

CGPoint UIPanGestureRecognizer::translationInView(const UIView&) const {
    return {_path.x - _origin.x, _path.y - _origin.y};
}

void UIPanGestureRecognizer::setTranslation(CGPoint translation, const UIView&) {
    _origin = {_path.x - translation.x, _path.y - translation.y};
}

CGPoint UIPanGestureRecognizer::velocityInView(const UIView&) const {
    return _tracker.velocity();
}

void UIPanGestureRecognizer::fingersChanged(HostTime time) {
    _tracker.add(time, _path);
}

void UIPanGestureRecognizer::follow(const UITouch& touch) {
    const auto fingers = static_cast<CGFloat>(numberOfTouches());
    _path.x += (touch.location.x - touch.previousLocation.x) / fingers;
    _path.y += (touch.location.y - touch.previousLocation.y) / fingers;
    _tracker.add(touch.timestamp, _path);
}

bool UIPanGestureRecognizer::isPastHysteresis() const {
    return std::hypot(_path.x, _path.y) >= hysteresis;
}

void UIPanGestureRecognizer::reset() {
    _path = _origin = CGPointZero;
    _tracker.clear();
}
