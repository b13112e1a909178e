// The machine's own limit: the same picture by a hand-written AVX2 and FMA loop on all cores.
// The benchmark shows how far Shader.fsh on a software rasteriser is from it.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/support/fractal_drawing.h"

// Whether this processor runs the loop at all.
bool fractalLimitAvailable();

// Draws the view as RGB565, top row first, with the arithmetic of Shader.fsh's plain views and its palette 0.
void drawFractalLimit(const FractalView& view, int width, int height, unsigned threads,
                      std::vector<uint16_t>* pixels);
