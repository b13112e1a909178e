// Curves that swing past their end or bounce back from it, with the tunables of those that have some.
// In the in-out curves u runs from 0 to 2.
#include <cmath>
#include <numbers>

#include "tween/easing.h"

namespace {

constexpr double twoPi = 2 * std::numbers::pi;

struct ElasticTuning {
    double p = static_cast<double>(0.3F);
    double a = 1;
    double s = static_cast<double>(0.075F);

    /// The phase at which the swing starts from amplitude a.
    double phase() const { return p / twoPi * std::asin(1 / a); }
};

ElasticTuning elastic;
double backOvershoot = static_cast<double>(1.70158F);

/// The in-out curve's halves have their overshoot raised by this.
constexpr double backInOutFactor = static_cast<double>(1.525F);

}  // namespace

GSEasingFunction Elastic::easeIn() {
    static const GSEasingFunction curve([](double t) -> double {
        if (t == 0) return 0;
        if (t == 1) return 1;
        const double w = t - 1;
        return std::exp2(10 * w) * std::sin((w - elastic.s) * -twoPi / elastic.p);
    });
    return curve;
}

GSEasingFunction Elastic::easeOut() {
    static const GSEasingFunction curve([](double t) -> double {
        if (t == 0) return 0;
        if (t == 1) return 1;
        return std::exp2(-10 * t) * std::sin((t - elastic.s) * twoPi / elastic.p) + 1;
    });
    return curve;
}

GSEasingFunction Elastic::easeInOut() {
    static const GSEasingFunction curve([](double t) -> double {
        if (t == 0) return 0;
        if (t >= 1) return 1;
        const double u = 2 * t;
        const double w = u - 1;
        const double swing = std::sin((w - elastic.s) * twoPi / elastic.p);
        return u < 1 ? -0.5 * std::exp2(10 * w) * swing : 0.5 * std::exp2(-10 * w) * swing + 1;
    });
    return curve;
}

double Elastic::pValue() {
    return elastic.p;
}

void Elastic::setPValue(double p) {
    elastic.p = p;
    elastic.s = elastic.a < 1 ? p * 0.25 : elastic.phase();
}

double Elastic::aValue() {
    return elastic.a;
}

void Elastic::setAValue(double a) {
    if (a < 1) return;
    elastic.a = a;
    elastic.s = elastic.phase();
}

GSEasingFunction Back::easeIn() {
    static const GSEasingFunction curve([](double t) {
        const double s = backOvershoot;
        return t * t * ((s + 1) * t - s);
    });
    return curve;
}

GSEasingFunction Back::easeOut() {
    static const GSEasingFunction curve([](double t) {
        const double s = backOvershoot;
        const double v = t - 1;
        return v * v * ((s + 1) * v + s) + 1;
    });
    return curve;
}

GSEasingFunction Back::easeInOut() {
    static const GSEasingFunction curve([](double t) {
        const double k = backOvershoot * backInOutFactor;
        const double u = 2 * t;
        if (u < 1) return 0.5 * u * u * ((k + 1) * u - k);
        const double v = u - 2;
        return 0.5 * (v * v * ((k + 1) * v + k) + 2);
    });
    return curve;
}

double Back::sValue() {
    return backOvershoot;
}

void Back::setSValue(double s) {
    backOvershoot = s;
}

/// Each arc is the parabola 7.5625 = (11/4)^2 around the middle between its bounces, which lie at elevenths.
double bounceArcs(double x) {
    constexpr double steepness = 7.5625;
    const auto arc = [x](float middle, double top) {
        const double v = x - static_cast<double>(middle);
        return steepness * (v * v) + top;
    };
    if (x < static_cast<double>(4.0F / 11)) return steepness * (x * x);
    if (x < static_cast<double>(8.0F / 11)) return arc(6.0F / 11, 0.75);
    if (x < static_cast<double>(10.0F / 11)) return arc(9.0F / 11, 0.9375);
    return arc(21.0F / 22, 0.984375);
}
