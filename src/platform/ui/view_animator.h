// The running view animations: one clock for all, stepped once per frame.
// A change made inside an animation block becomes a track here; the view keeps the end value.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/foundation/geometry.h"

class UIView;

/// Progress of a spring from 0 to 1 over normalised time 0 to 1: the damped oscillator x'' = -w^2 (x - 1) - 2
/// z w x' with x(0) = 0, its frequency chosen so that it has settled to 1/1000 at time 1.
class SpringCurve {
  public:
    SpringCurve(double dampingRatio, double initialVelocity, double duration);
    double valueAt(double normalisedTime) const;
    /* fields: the implementer's */
  private:
    double _ratio;
    double _velocity;
    double _frequency;
};

class ViewAnimator {
  public:
    static ViewAnimator& shared();

    /// Steps every animation to the time (seconds, never backwards) and runs the completions that are due.
    void step(double time);
    bool isRunning() const;
    /// Forgets everything without running completions (the app is going away).
    void reset();

    /* begin/end of a block, alphaChanged(view, from, to), frameChanged(...), presentation values,
     * viewDestroyed(view): the implementer's */
};
