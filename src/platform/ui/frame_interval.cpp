// The median of the last frames, in whole refreshes.
// It moves on only when the median has clearly left the present number, so that it does not flutter.
#include "platform/ui/frame_interval.h"

#include <algorithm>
#include <cmath>

namespace {

/// Refreshes beyond the halfway point between two numbers.
constexpr double hysteresis = 0.1;

}  // namespace

void FrameInterval::noteFrame(double seconds, double refreshInterval) {
    _seconds[_noted++ % framesJudged] = seconds;
    if (_noted % framesJudged != 0) return;
    std::array<double, framesJudged> sorted = _seconds;
    const auto middle = sorted.begin() + framesJudged / 2;
    std::nth_element(sorted.begin(), middle, sorted.end());
    const double refreshes = *middle / refreshInterval;
    if (std::abs(refreshes - _refreshes) < 0.5 + hysteresis) return;
    _refreshes = static_cast<int>(std::lround(std::clamp(refreshes, 1.0, static_cast<double>(longest))));
}
