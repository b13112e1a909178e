// A drag with one finger or several, and the speed at which they let go.
// Several fingers count as one in their middle, which does not jump when one of them comes or goes.
#pragma once

#include "platform/ui/ui_continuous_gesture_recognizer.h"
#include "platform/ui/velocity_tracker.h"

class UIPanGestureRecognizer : public UIContinuousGestureRecognizer {
  public:
    /// Begins after 10 points.
    static constexpr CGFloat hysteresis = 10;

    explicit UIPanGestureRecognizer(std::function<void(UIPanGestureRecognizer&)> action);

    /// Points that the fingers have moved since the gesture began, or since it was last set. The same for
    /// all views, as none is turned or stretched.
    CGPoint translationInView(const UIView& view) const;
    void setTranslation(CGPoint translation, const UIView& view);
    /// Points per second over the last tenth of a second.
    CGPoint velocityInView(const UIView& view) const;

  protected:
    void fingersChanged(HostTime time) override;
    void follow(const UITouch& touch) override;
    bool isPastHysteresis() const override;
    void startMeasuring() override { _origin = _path; }
    void reset() override;

  private:
    /// The way of the fingers' middle since the first one landed.
    CGPoint _path;
    /// Where on it the translation is zero.
    CGPoint _origin;
    VelocityTracker _tracker;
};
