// Curves of sines, powers of two and circle arcs.
// In the in-out curves u runs from 0 to 2.
#include <cmath>
#include <numbers>

#include "tween/easing.h"

namespace {

constexpr double pi = std::numbers::pi;
constexpr double halfPi = pi / 2;

}  // namespace

GSEasingFunction Sine::easeIn() {
    static const GSEasingFunction curve([](double t) { return 1 - std::cos(t * halfPi); });
    return curve;
}

GSEasingFunction Sine::easeOut() {
    static const GSEasingFunction curve([](double t) { return std::sin(t * halfPi); });
    return curve;
}

GSEasingFunction Sine::easeInOut() {
    static const GSEasingFunction curve([](double t) { return -0.5 * (std::cos(pi * t) - 1); });
    return curve;
}

/// The powers miss 0 and 1 at the ends, which are exact all the same.
GSEasingFunction Expo::easeIn() {
    static const GSEasingFunction curve([](double t) { return t == 0 ? 0 : std::exp2(10 * (t - 1)); });
    return curve;
}

GSEasingFunction Expo::easeOut() {
    static const GSEasingFunction curve([](double t) { return t == 1 ? 1 : 1 - std::exp2(-10 * t); });
    return curve;
}

GSEasingFunction Expo::easeInOut() {
    static const GSEasingFunction curve([](double t) -> double {
        if (t == 0) return 0;
        if (t >= 1) return 1;
        const double u = 2 * t;
        const double w = u - 1;
        return u < 1 ? 0.5 * std::exp2(10 * w) : 0.5 * (2 - std::exp2(-10 * w));
    });
    return curve;
}

GSEasingFunction Circular::easeIn() {
    static const GSEasingFunction curve([](double t) { return -(std::sqrt(1 - t * t) - 1); });
    return curve;
}

GSEasingFunction Circular::easeOut() {
    static const GSEasingFunction curve([](double t) {
        const double v = t - 1;
        return std::sqrt(1 - v * v);
    });
    return curve;
}

GSEasingFunction Circular::easeInOut() {
    static const GSEasingFunction curve([](double t) {
        const double u = 2 * t;
        if (u < 1) return -0.5 * (std::sqrt(1 - u * u) - 1);
        const double v = u - 2;
        return 0.5 * (std::sqrt(1 - v * v) + 1);
    });
    return curve;
}
