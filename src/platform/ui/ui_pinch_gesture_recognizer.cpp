// The pinch multiplies the ratios of each step.
// Its speed is that of the logarithm, so that setting the scale in between changes nothing in it.
#include "platform/ui/ui_pinch_gesture_recognizer.h"

#include <algorithm>
#include <cmath>

namespace {

/// Fingers in one place would have no ratio.
constexpr CGFloat smallestSpread = 1;
constexpr std::size_t fingersOfAPinch = 2;

}  // namespace

UIPinchGestureRecognizer::UIPinchGestureRecognizer(std::function<void(UIPinchGestureRecognizer&)> action)
    : UIContinuousGestureRecognizer(
          [action = std::move(action)](UIGestureRecognizer& pinch) {
              action(static_cast<UIPinchGestureRecognizer&>(pinch));
          },
          fingersOfAPinch) {}

void UIPinchGestureRecognizer::setScale(CGFloat scale) {
    if (std::isfinite(scale) && scale > 0) _scale = scale;
}

CGFloat UIPinchGestureRecognizer::velocity() const {
    return _scale * _tracker.velocity().x;
}

CGFloat UIPinchGestureRecognizer::currentSpread() const {
    const auto fingers = static_cast<CGFloat>(numberOfTouches());
    CGPoint middle;
    for (const auto& touch : touches()) {
        middle.x += touch->location.x / fingers;
        middle.y += touch->location.y / fingers;
    }
    CGFloat spread = 0;
    for (const auto& touch : touches())
        spread += std::hypot(touch->location.x - middle.x, touch->location.y - middle.y) / fingers;
    return std::max(spread, smallestSpread);
}

void UIPinchGestureRecognizer::track(HostTime time) {
    _tracker.add(time, {_logScale, 0});
}

/// The last finger but one gone, the speed stays what it was until the action has read it.
void UIPinchGestureRecognizer::fingersChanged(HostTime time) {
    if (!isActive()) _tracker.clear();
    track(time);
    if (numberOfTouches() >= fingersOfAPinch) _spread = _spreadAtRest = currentSpread();
}

void UIPinchGestureRecognizer::follow(const UITouch& touch) {
    if (numberOfTouches() < fingersOfAPinch) return;
    const CGFloat spread = currentSpread();
    const CGFloat ratio = spread / _spread;
    _spread = spread;
    _scale *= ratio;
    _logScale += std::log(ratio);
    track(touch.timestamp);
}

bool UIPinchGestureRecognizer::isPastHysteresis() const {
    return 2 * std::abs(_spread - _spreadAtRest) >= hysteresis;
}

void UIPinchGestureRecognizer::reset() {
    _scale = 1;
    _logScale = 0;
    _tracker.clear();
}
