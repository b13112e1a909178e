// A glide loses a fixed share of its speed in each moment; the spring is critically damped.
// Where the one turns into the other is worked out at the beginning.
#include "platform/ui/scroll_motion.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double friction = 2;          // 1/s: 0.998 of the speed is left after a millisecond
constexpr double stiffness = 11;        // 1/s
constexpr double slowest = 10;          // points per second; a glide that is slower ends
constexpr double fastest = 8000;        // points per second
constexpr double fastestBounce = 3000;  // points per second; a spring swings out by a hundred points at most
constexpr double nearEnough = 0.25;     // points
constexpr double longestSpring = 3;     // s
constexpr double bandStretch = 0.55;    // of a pull, while it is small

}  // namespace

ScrollMotion ScrollMotion::springTo(double from, double velocity, double to) {
    velocity = std::clamp(velocity, -fastest, fastest);
    ScrollMotion motion(from, velocity);
    motion._to = to;
    motion.springFrom(0, from - to, velocity);
    return motion;
}

ScrollMotion ScrollMotion::glide(double from, double velocity, double least, double most) {
    velocity = std::clamp(velocity, -fastest, fastest);
    if (from < least || from > most) {
        const double edge = std::clamp(from, least, most);
        // Not much farther out than the finger drew it.
        const double outwards = fastestBounce / 4;
        return springTo(from, from < edge ? std::max(velocity, -outwards) : std::min(velocity, outwards),
                        edge);
    }
    ScrollMotion motion(from, velocity);
    const double speed = std::abs(velocity);
    const double end = speed > slowest ? std::log(speed / slowest) / friction : 0;
    motion._to = motion.glidedTo(end);
    motion._springStart = end;
    if (motion._to >= least && motion._to <= most) return motion;
    motion._to = std::clamp(motion._to, least, most);
    const double crossing = -std::log1p(-(motion._to - from) * friction / velocity) / friction;
    const double left = velocity * std::exp(-friction * crossing);
    motion.springFrom(crossing, 0, std::clamp(left, -fastestBounce, fastestBounce));
    return motion;
}

void ScrollMotion::springFrom(double seconds, double offset, double velocity) {
    _springStart = seconds;
    _springOffset = offset;
    _springVelocity = velocity + stiffness * offset;
    const auto reach = [this](double t) {
        return (std::abs(_springOffset) + std::abs(_springVelocity) * t) * std::exp(-stiffness * t);
    };
    if (std::abs(offset) <= nearEnough && std::abs(velocity) <= slowest) return;
    // Until then it may still be on its way out.
    _springDuration = 1 / stiffness;
    while (_springDuration < longestSpring && reach(_springDuration) > nearEnough)
        _springDuration += 1.0 / 64;
}

double ScrollMotion::glidedTo(double seconds) const {
    return _from - _velocity / friction * std::expm1(-friction * seconds);
}

double ScrollMotion::at(double seconds) const {
    if (seconds >= duration()) return _to;
    if (seconds < _springStart) return glidedTo(std::max(seconds, 0.0));
    const double t = seconds - _springStart;
    return _to + (_springOffset + _springVelocity * t) * std::exp(-stiffness * t);
}

double rubberBand(double overshoot, double room) {
    if (!(room > 0)) return 0;
    const double pull = std::abs(overshoot);
    return std::copysign(room * (1 - 1 / (pull * bandStretch / room + 1)), overshoot);
}

double rubberBandPull(double shown, double room) {
    if (!(room > 0)) return 0;
    const double share = std::min(std::abs(shown) / room, 0.99);
    return std::copysign((1 / (1 - share) - 1) * room / bandStretch, shown);
}
