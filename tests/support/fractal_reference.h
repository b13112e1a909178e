// The fractal in double precision, pixel by pixel: the independent truth that the shaders' pictures are held
// against. It shares no code with them; the rectangle is the one the shader gets, already rounded to floats.
#pragma once

#include <vector>

#include "tests/support/fractal_drawing.h"

struct FractalCounts {
    int width = 0;
    int height = 0;
    // Continuous iterations of each pixel, top row first; below -100 where the point does not escape in the
    // limit.
    std::vector<double> counts;

    bool escaped(int x, int y) const { return at(x, y) > -100.0; }
    double at(int x, int y) const {
        return counts[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
};

FractalCounts referenceCounts(const FractalView& view, int width, int height);
