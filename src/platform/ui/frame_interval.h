// How many refreshes of the display a frame takes on this machine: one where it keeps up, more where it
// cannot. Display links advance by it, so that a flight of five seconds takes about five seconds on a slow
// machine too.
#pragma once

#include <array>
#include <cstddef>

class FrameInterval {
  public:
    static constexpr int longest = 6;

    /// A frame began so many seconds after the one before; refreshInterval: seconds from refresh to refresh.
    void noteFrame(double seconds, double refreshInterval);
    /// Refreshes per frame, 1 to `longest`, judged by the middle one of the last frames. Single hitches and
    /// pauses do not count.
    int refreshesPerFrame() const { return _refreshes; }

  private:
    static constexpr std::size_t framesJudged = 31;

    std::array<double, framesJudged> _seconds{};
    std::size_t _noted = 0;
    int _refreshes = 1;
};
