// The ring of times.
// Its oldest entry is the one that the next frame replaces.
#include "platform/gl/frame_interval_cost.h"

void FrameIntervalCost::noteFrame(double milliseconds) {
    if (_count > 0 && milliseconds - _times[(_count - 1) % _times.size()] > longestInterval) _count = 0;
    _times[_count % _times.size()] = milliseconds;
    ++_count;
}

std::optional<double> FrameIntervalCost::cost() const {
    if (_count < _times.size()) return std::nullopt;
    const double newest = _times[(_count - 1) % _times.size()];
    const double oldest = _times[_count % _times.size()];
    return (newest - oldest) / static_cast<double>(intervals);
}
