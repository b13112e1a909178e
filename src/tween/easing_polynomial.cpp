// Curves that are powers of time. Products associate to the left, so that every bit is fixed.
// In the in-out curves u runs from 0 to 2.
#include <cmath>

#include "tween/easing.h"

GSEasingFunction Linear::easeNone() {
    static const GSEasingFunction curve([](double t) {
        return static_cast<double>(std::fmin(std::fmax(static_cast<float>(t), 0.0F), 1.0F));
    });
    return curve;
}

GSEasingFunction Quadratic::easeIn() {
    static const GSEasingFunction curve([](double t) { return t * t; });
    return curve;
}

GSEasingFunction Quadratic::easeOut() {
    static const GSEasingFunction curve([](double t) { return -t * (t - 2); });
    return curve;
}

GSEasingFunction Quadratic::easeInOut() {
    static const GSEasingFunction curve([](double t) {
        const double u = 2 * t;
        if (u < 1) return 0.5 * u * u;
        const double v = u - 1;
        return -0.5 * (v * (v - 2) - 1);
    });
    return curve;
}

GSEasingFunction Cubic::easeIn() {
    static const GSEasingFunction curve([](double t) { return t * t * t; });
    return curve;
}

GSEasingFunction Cubic::easeOut() {
    static const GSEasingFunction curve([](double t) {
        const double v = t - 1;
        return v * v * v + 1;
    });
    return curve;
}

GSEasingFunction Cubic::easeInOut() {
    static const GSEasingFunction curve([](double t) {
        const double u = 2 * t;
        if (u < 1) return 0.5 * u * u * u;
        const double v = u - 2;
        return 0.5 * (v * v * v + 2);
    });
    return curve;
}

GSEasingFunction Quartic::easeIn() {
    static const GSEasingFunction curve([](double t) { return t * t * t * t; });
    return curve;
}

GSEasingFunction Quartic::easeOut() {
    static const GSEasingFunction curve([](double t) {
        const double v = t - 1;
        return 1 - v * v * v * v;
    });
    return curve;
}

GSEasingFunction Quartic::easeInOut() {
    static const GSEasingFunction curve([](double t) {
        const double u = 2 * t;
        if (u < 1) return 0.5 * u * u * u * u;
        const double v = u - 2;
        return -0.5 * (v * v * v * v - 2);
    });
    return curve;
}

GSEasingFunction Quintic::easeIn() {
    static const GSEasingFunction curve([](double t) { return t * t * t * t * t; });
    return curve;
}

GSEasingFunction Quintic::easeOut() {
    static const GSEasingFunction curve([](double t) {
        const double v = t - 1;
        return v * v * v * v * v + 1;
    });
    return curve;
}

GSEasingFunction Quintic::easeInOut() {
    static const GSEasingFunction curve([](double t) {
        const double u = 2 * t;
        if (u < 1) return 0.5 * u * u * u * u * u;
        const double v = u - 2;
        return 0.5 * (v * v * v * v * v + 2);
    });
    return curve;
}
