// The closed forms of the spring, written so that they stay exact where the cases meet, and the search for
// its frequency.
#include "platform/ui/spring_curve.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double settledDistance = 1e-3;

double finiteOr(double value, double fallback) {
    return std::isfinite(value) ? value : fallback;
}

/// sin(y) / y.
double cardinalSine(double y) {
    return std::abs(y) < 1e-8 ? 1 : std::sin(y) / y;
}

/// (1 - exp(-y)) / y.
double meanDecay(double y) {
    return std::abs(y) < 1e-8 ? 1 : -std::expm1(-y) / y;
}

}  // namespace

SpringCurve::SpringCurve(double dampingRatio, double initialVelocity, double duration)
    : _ratio(std::clamp(finiteOr(dampingRatio, 1), 0.05, 1000.0)),
      _velocity(std::clamp(finiteOr(initialVelocity * duration, 0), -1e6, 1e6)) {
    // The bound falls with the frequency everywhere, so bisection cannot miss.
    double low = 0;
    while (remainingBound() > settledDistance) {
        low = _frequency;
        _frequency *= 2;
    }
    double high = _frequency;
    while (high - low > 1e-12 * high) {
        _frequency = 0.5 * (low + high);
        (remainingBound() > settledDistance ? low : high) = _frequency;
    }
    _frequency = high;
}

double SpringCurve::valueAt(double normalisedTime) const {
    if (!(normalisedTime > 0)) return 0;
    if (normalisedTime >= 1) return 1;
    return 1 - remainingAt(normalisedTime);
}

/// The over-damped form is the header's with exp(r1 t) taken out, which holds for z = 1 too.
double SpringCurve::remainingAt(double t) const {
    if (_ratio < 1) {
        const double damped = _frequency * std::sqrt((1 - _ratio) * (1 + _ratio));
        const double pull = _ratio * _frequency - _velocity;
        return std::exp(-_ratio * _frequency * t) *
               (std::cos(damped * t) + pull * t * cardinalSine(damped * t));
    }
    const double root = std::sqrt((_ratio - 1) * (_ratio + 1));
    const double slowRate = _frequency / (_ratio + root);
    const double gap = 2 * _frequency * root;
    return std::exp(-slowRate * t) * (1 + (slowRate - _velocity) * t * meanDecay(gap * t));
}

/// No less than the distance at any time from 1 on. It is the distance at time 1 itself for z >= 1 unless the
/// spring is thrown past its end, and at most the envelope's height times sqrt(2) for z < 1.
double SpringCurve::remainingBound() const {
    if (_ratio < 1) {
        const double damped = _frequency * std::sqrt((1 - _ratio) * (1 + _ratio));
        const double pull = std::abs(_ratio * _frequency - _velocity);
        return std::exp(-_ratio * _frequency) * (1 + pull / std::max(1.0, damped));
    }
    const double root = std::sqrt((_ratio - 1) * (_ratio + 1));
    const double slowRate = _frequency / (_ratio + root);
    return std::exp(-slowRate) * (1 + std::abs(slowRate - _velocity) * meanDecay(2 * _frequency * root));
}
