// A ring of samples, thinned out so that it always covers the window.
// Mice report up to a thousand places a second; the thinning keeps the newest.
#include "platform/ui/velocity_tracker.h"

#include <algorithm>

namespace {

/// Samples closer than this are one, at the later place.
constexpr HostTime shortestInterval = 0.004;
/// Two events that were late arrive at once; what they tell of speed is nothing.
constexpr HostTime shortestSpan = 1.0 / 120;

}  // namespace

void VelocityTracker::add(HostTime time, CGPoint place) {
    // Fingers that move together have one time: only what they came to counts.
    const bool joins = _count > 1 && (time == last(0).time || time - last(1).time < shortestInterval);
    if (!joins) ++_count;
    _samples[(_count - 1) % _samples.size()] = {time, place};
}

CGPoint VelocityTracker::velocity() const {
    if (_count < 2) return CGPointZero;
    const Sample& newest = last(0);
    const std::size_t kept = std::min(_count, _samples.size());
    std::size_t back = 0;
    while (back + 1 < kept && newest.time - last(back + 1).time <= window)
        ++back;
    const Sample& oldest = last(back);
    const HostTime span = std::max(newest.time - oldest.time, shortestSpan);
    return {(newest.place.x - oldest.place.x) / span, (newest.place.y - oldest.place.y) / span};
}
