// Progress of a damped spring over normalised time: what spring animations move along.
// Kept apart from the animator so that its formula can be tested by itself.
#pragma once

/// The oscillator x'' = -w^2 (x - 1) - 2 z w x' with x(0) = 0 and x'(0) = v, z the damping ratio. For the
/// distance e = 1 - x, with e(0) = 1 and e'(0) = -v, the textbook solutions of the linear equation with
/// constant coefficients are
///     z < 1:  e = exp(-z w t) (cos d t + (z w - v) sin(d t) / d),  d = w sqrt(1 - z^2)
///     z = 1:  e = exp(-w t) (1 + (w - v) t)
///     z > 1:  e = A exp(r1 t) + (1 - A) exp(r2 t),  r1,2 = -w (z -+ sqrt(z^2 - 1)),  A = (v + r2) / (r2 -
///     r1)
/// The frequency w is the one at which the remaining distance has settled to 1/1000 at time 1.
class SpringCurve {
  public:
    /// A damping ratio outside 0.05 to 1000 is taken as the nearest of the two. The velocity is in whole
    /// distances per second, the duration in seconds.
    SpringCurve(double dampingRatio, double initialVelocity, double duration);
    /// 0 at 0 and before; 1 from 1 on.
    double valueAt(double normalisedTime) const;
    /// w, in radians per duration.
    double frequency() const { return _frequency; }

  private:
    double remainingAt(double time) const;
    double remainingBound() const;

    double _ratio;
    double _velocity;  ///< whole distances per duration
    double _frequency = 1;
};
