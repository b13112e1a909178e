// Where the autopilot may go: the search for busy places in a grey picture of the screen, and the rules that
// make targets of them. Pure, so that it is held against pictures and numbers without a GPU.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "main_screen/fractal_bounds.h"
#include "platform/foundation/random_source.h"

/// One byte a pixel, rows from the top without padding. Not owned.
struct SamplingBitmap {
    const uint8_t* pixels = nullptr;
    int32_t width = 0;
    int32_t height = 0;
};

struct BitmapPixel {
    int32_t x = 0;
    int32_t y = 0;
    friend bool operator==(const BitmapPixel&, const BitmapPixel&) = default;
};

/// Whether the neighbourhood is busy: nine pixels of which nearly all differ, as on fine filaments. Never on
/// the border, nor outside.
bool isInteresting(const SamplingBitmap& bitmap, BitmapPixel pixel);

/// Draws at most this many pixels; the last draw no longer counts.
inline constexpr int32_t drawsPerTarget = 5000;
/// A random interesting pixel; nothing if the draws end first.
std::optional<BitmapPixel> findInterestingPixel(const SamplingBitmap& bitmap, RandomSource& random);

/// The rectangle of a tenth of the view's size around the pixel's point, whose centre is held to single
/// precision.
FractalBounds targetAround(BitmapPixel pixel, const SamplingBitmap& bitmap, FractalBounds view);

/// Whether the GPU's floats still tell the pixels of a target apart.
struct TargetPrecision {
    double step = 0;  ///< plane units from one sampling pixel to the next
    double eps = 0;   ///< of the GPU's floats, relative to 1
    bool isEnough() const { return !(step < eps / 10); }
};
/// precisionBits: of the floats' mantissa, as the driver reports them.
TargetPrecision precisionOf(FractalBounds target, const SamplingBitmap& bitmap, int32_t precisionBits);

/// Neither so near that the flight is a plain zoom into the middle, nor further than the view can show.
bool isAtGoodDistance(FractalBounds view, FractalBounds target);

/// Every order with equal chance.
void shuffle(std::vector<FractalBounds>& targets, RandomSource& random);

/// The first target at a good distance, taken off the list; those before it stay.
std::optional<FractalBounds> takeGoodTarget(std::vector<FractalBounds>& targets, FractalBounds view);
