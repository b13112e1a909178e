// What frames cost where the GPU cannot be waited for: the mean time from frame to frame.
// Frames come in bursts while the GPU lags behind, so single intervals say nothing; the mean is the GPU's
// pace.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

class FrameIntervalCost {
  public:
    /// A frame was given to the GPU. milliseconds: a clock that never goes back.
    void noteFrame(double milliseconds);
    /// Milliseconds a frame, over the last eight intervals; nothing before there are that many, nor after a
    /// rest.
    std::optional<double> cost() const;

  private:
    static constexpr std::size_t intervals = 8;
    /// A longer interval is one in which nobody wanted frames.
    static constexpr double longestInterval = 2000;

    /// A ring of the last frames' times.
    std::array<double, intervals + 1> _times{};
    std::size_t _count = 0;
};
