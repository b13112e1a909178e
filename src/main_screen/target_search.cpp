// The search's arithmetic. Every cast to float is a rounding that takes part in the result.
// The probes run tens of thousands of times after each flight: nine bytes read, nothing allocated.
#include "main_screen/target_search.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// What a target leaves out of the view on each side, as a share of its size.
constexpr double targetInset = 0.45;
constexpr double distanceFactor = 15;

bool allDiffer(uint8_t a, uint8_t b, uint8_t c, uint8_t d) {
    return a != b && a != c && a != d && b != c && b != d && c != d;
}

}  // namespace

bool isInteresting(const SamplingBitmap& bitmap, BitmapPixel pixel) {
    const auto [x, y] = pixel;
    if (x <= 0 || y <= 0 || x >= bitmap.width - 1 || y >= bitmap.height - 1) return false;
    const std::ptrdiff_t stride = bitmap.width;
    const uint8_t* at = bitmap.pixels + y * stride + x;
    const uint8_t c = at[0];
    const uint8_t l = at[-1];
    const uint8_t r = at[1];
    // Left to right of the middle: most pixels lie on flat ground and are out here.
    if (c == l || c == r || l == r) return false;
    const uint8_t u = at[-stride];
    const uint8_t d = at[stride];
    if (c == u || c == d || u == d || u == l || u == r || d == l || d == r) return false;
    const uint8_t ul = at[-stride - 1];
    const uint8_t ur = at[-stride + 1];
    const uint8_t dl = at[stride - 1];
    const uint8_t dr = at[stride + 1];
    if (!allDiffer(ul, ur, dl, dr)) return false;
    return d != dr && dr != r && r != ur && ur != u && u != ul && ul != l && l != dl && dl != d;
}

std::optional<BitmapPixel> findInterestingPixel(const SamplingBitmap& bitmap, RandomSource& random) {
    for (int32_t draw = 1; draw <= drawsPerTarget; ++draw) {
        const auto x = static_cast<int32_t>(random.arc4random_uniform(static_cast<uint32_t>(bitmap.width)));
        const auto y = static_cast<int32_t>(random.arc4random_uniform(static_cast<uint32_t>(bitmap.height)));
        if (draw < drawsPerTarget && isInteresting(bitmap, {x, y})) return BitmapPixel{x, y};
    }
    return std::nullopt;
}

FractalBounds targetAround(BitmapPixel pixel, const SamplingBitmap& bitmap, FractalBounds view) {
    const auto w = static_cast<float>(view.size.width);
    const auto h = static_cast<float>(view.size.height);
    const float across = static_cast<float>(pixel.x) / static_cast<float>(bitmap.width) * w;
    const float down = static_cast<float>(pixel.y) / static_cast<float>(bitmap.height) * h;
    const auto cx = static_cast<float>(view.origin.x + static_cast<double>(across));
    const auto cy = static_cast<float>(view.origin.y + static_cast<double>(down));
    const auto width = static_cast<double>(w);
    const auto height = static_cast<double>(h);
    const CGRect around = CGRectMake(static_cast<double>(cx) - 0.5 * width,
                                     static_cast<double>(cy) - 0.5 * height, width, height);
    return CGRectInset(around, targetInset * width, targetInset * height);
}

TargetPrecision precisionOf(FractalBounds target, const SamplingBitmap& bitmap, int32_t precisionBits) {
    return {std::min(target.size.width / bitmap.width, target.size.height / bitmap.height),
            std::ldexp(1.0, -precisionBits)};
}

bool isAtGoodDistance(FractalBounds view, FractalBounds target) {
    const double m = std::min(view.size.width, target.size.width);
    const double dx = CGRectGetMidX(view) - CGRectGetMidX(target);
    const double dy = CGRectGetMidY(view) - CGRectGetMidY(target);
    const double d = std::sqrt(dx * dx + dy * dy);
    return m / distanceFactor <= d && d <= distanceFactor * m;
}

void shuffle(std::vector<FractalBounds>& targets, RandomSource& random) {
    std::size_t left = targets.size();
    for (std::size_t i = 0; left > 1; ++i, --left) {
        std::swap(targets[i], targets[i + random.arc4random_uniform(static_cast<uint32_t>(left))]);
    }
}

std::optional<FractalBounds> takeGoodTarget(std::vector<FractalBounds>& targets, FractalBounds view) {
    const auto good = std::find_if(targets.begin(), targets.end(),
                                   [view](FractalBounds target) { return isAtGoodDistance(view, target); });
    if (good == targets.end()) return std::nullopt;
    const FractalBounds taken = *good;
    targets.erase(good);
    return taken;
}
