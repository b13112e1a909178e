// The families of easing curves. Every operation answers a curve; none clamps its input but Linear's.
// Constants are single-precision literals widened to double where the curves were tuned with those.
#pragma once

#include "tween/gs_easing_function.h"

class Linear {
  public:
    Linear() = delete;
    /// Clamps to 0...1 and rounds to single precision.
    static GSEasingFunction easeNone();
};

class Quadratic {
  public:
    Quadratic() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

class Cubic {
  public:
    Cubic() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

class Quartic {
  public:
    Quartic() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

class Quintic {
  public:
    Quintic() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

class Sine {
  public:
    Sine() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

class Expo {
  public:
    Expo() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

/// NaN outside 0...1.
class Circular {
  public:
    Circular() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
};

/// Period p and amplitude a are the whole process's, read at each evaluation. The amplitude only shifts the
/// phase: the overshoot is never scaled.
class Elastic {
  public:
    Elastic() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();

    static double pValue();
    static void setPValue(double p);
    static double aValue();
    /// Ignores values below 1.
    static void setAValue(double a);
};

/// The overshoot s is the whole process's, read at each evaluation.
class Back {
  public:
    Back() = delete;
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();

    static double sValue();
    static void setSValue(double s);
};

/// The curves of Bounce and of its kin: a class derived from BounceFamily of itself that has an easeOut or an
/// easeOutWithTime of its own gets its easeIn and easeInOut from these.
template <typename Class>
class BounceFamily {
  public:
    BounceFamily() = delete;
    /// A new curve on each call, as easeInOut.
    static GSEasingFunction easeIn();
    static GSEasingFunction easeOut();
    static GSEasingFunction easeInOut();
    /// The out curve at time / duration.
    static double easeOutWithTime(double time, double duration);
};

class Bounce : public BounceFamily<Bounce> {};

/// Four parabolic arcs: what a ball does that falls on x = 1.
double bounceArcs(double x);

template <typename Class>
GSEasingFunction BounceFamily<Class>::easeIn() {
    return GSEasingFunction([](double t) { return 1 - Class::easeOut()(1 - t); });
}

template <typename Class>
GSEasingFunction BounceFamily<Class>::easeOut() {
    static const GSEasingFunction curve(&bounceArcs);
    return curve;
}

template <typename Class>
GSEasingFunction BounceFamily<Class>::easeInOut() {
    return GSEasingFunction([](double t) {
        const double u = 2 * t;
        if (u < 1) return 0.5 * (1 - Class::easeOutWithTime(1 - u, 1));
        return 0.5 * Class::easeOutWithTime(u - 1, 1) + 0.5;
    });
}

template <typename Class>
double BounceFamily<Class>::easeOutWithTime(double time, double duration) {
    return bounceArcs(time / duration);
}
