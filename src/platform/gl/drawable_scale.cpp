// The steps and their hysteresis.
// A finer step costs twice as much at most: it is taken only if that is still within the band, so it stays.
#include "platform/gl/drawable_scale.h"

#include <cmath>

namespace {

/// Milliseconds: the upper end of the band in which the iteration limit rests.
constexpr double slowFrame = 80;
/// About a third of the pixels along each side is left.
constexpr int32_t mostHalvings = 3;
/// Frames: longer than the host's measurement looks back, so that each step is judged by its own frames.
constexpr int32_t slowFramesForStep = 12;
constexpr int32_t fastFramesForStep = 60;

}  // namespace

void DrawableScale::noteFrame(double cost, Limit limit) {
    const bool slow = cost > slowFrame && limit == Limit::atFloor;
    const bool fast = 2 * cost <= slowFrame && limit == Limit::atCeiling;
    _slowFrames = slow ? _slowFrames + 1 : 0;
    _fastFrames = fast ? _fastFrames + 1 : 0;
    if (_slowFrames >= slowFramesForStep && _halvings < mostHalvings) step(1);
    if (_fastFrames >= fastFramesForStep && _halvings > 0) step(-1);
}

void DrawableScale::step(int32_t direction) {
    _halvings += direction;
    _slowFrames = 0;
    _fastFrames = 0;
}

double DrawableScale::factor() const {
    return std::exp2(-0.5 * _halvings);
}
