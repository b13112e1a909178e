// How sharp a GL view draws: at full scale while the GPU keeps up, else coarser by steps that each halve the
// pixels. It follows the iteration limit: coarser only once that is at its floor, finer only once it is back
// at its ceiling.
#pragma once

#include <cstdint>

class DrawableScale {
  public:
    /// Where the iteration limit stands within its range.
    enum class Limit { atFloor, between, atCeiling };

    /// A frame drawn at this scale. cost: its milliseconds, the GPU's work included.
    void noteFrame(double cost, Limit limit);
    /// Pixels drawn per pixel of the screen, along each side: 1, or a step below.
    double factor() const;

  private:
    void step(int32_t direction);

    int32_t _halvings = 0;
    /// How many frames in a row asked for the coarser or the finer step.
    int32_t _slowFrames = 0;
    int32_t _fastFrames = 0;
};
