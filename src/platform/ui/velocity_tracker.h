// How fast something moved over the last moments.
// A throw is what the finger did last: a drag's beginning has no part in it, and a finger that rests has
// none.
#pragma once

#include <array>
#include <cstddef>

#include "platform/foundation/geometry.h"
#include "platform/host/host_event.h"

class VelocityTracker {
  public:
    /// Seconds that count.
    static constexpr HostTime window = 0.1;

    /// Where it is at a time; times never go back.
    void add(HostTime time, CGPoint place);
    /// Per second, over the window that ends with the last place added; zero for one that stood still.
    CGPoint velocity() const;
    void clear() { _count = 0; }

  private:
    struct Sample {
        HostTime time = 0;
        CGPoint place;
    };

    const Sample& last(std::size_t back) const { return _samples[(_count - 1 - back) % _samples.size()]; }

    /// The window's samples at their closest, and room to spare.
    std::array<Sample, 32> _samples{};
    /// Samples taken so far; the newest ones are kept.
    std::size_t _count = 0;
};
