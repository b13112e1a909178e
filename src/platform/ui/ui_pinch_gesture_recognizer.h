// Two fingers or more that spread or close, and how fast they did so at last.
// What counts is the mean distance from their middle; a finger that comes or goes changes no scale.
#pragma once

#include "platform/ui/ui_continuous_gesture_recognizer.h"
#include "platform/ui/velocity_tracker.h"

class UIPinchGestureRecognizer : public UIContinuousGestureRecognizer {
  public:
    /// Begins after the fingers' distance has changed by 8 points.
    static constexpr CGFloat hysteresis = 8;

    explicit UIPinchGestureRecognizer(std::function<void(UIPinchGestureRecognizer&)> action);

    /// The distance of the fingers as a multiple of that at the beginning, or since it was last set.
    CGFloat scale() const { return _scale; }
    /// Ignores what is not finite or not above 0.
    void setScale(CGFloat scale);
    /// Change of scale() per second over the last tenth of a second.
    CGFloat velocity() const;

  protected:
    void fingersChanged(HostTime time) override;
    void follow(const UITouch& touch) override;
    bool isPastHysteresis() const override;
    void startMeasuring() override { _scale = 1; }
    void reset() override;

  private:
    CGFloat currentSpread() const;
    void track(HostTime time);

    CGFloat _scale = 1;
    /// Points from the middle, as it was after the last move.
    CGFloat _spread = 0;
    CGFloat _spreadAtRest = 0;
    /// Logarithm of the whole gesture's scale, whatever was set meanwhile.
    CGFloat _logScale = 0;
    VelocityTracker _tracker;
};
