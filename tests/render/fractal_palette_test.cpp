// The palettes: defined, different, never black where a point escapes, and cycling without end.
// Black is how people and the pilot tell the set from its surroundings, so it must survive 16-bit colour.
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "main_screen/target_search.h"
#include "platform/graphics/cg_bitmap_context.h"
#include "tests/support/fractal_test.h"

namespace {

constexpr int kPalettes = 11;
constexpr int kOffered = 6;

class FractalPaletteTest : public FractalTest {
  protected:
    static double averageDifference(const FractalPicture& a, const FractalPicture& b) {
        double sum = 0.0;
        for (size_t i = 0; i < a.bytes.size(); ++i) {
            sum += std::abs(a.bytes[i] - b.bytes[i]);
        }
        return sum / static_cast<double>(a.bytes.size());
    }
};

const FractalView kFilament = {-0.7463F, 0.1102F, -0.7413F, 0.1130F};
// Every point escapes, within counts that pass through all of a palette.
const FractalView kNoInterior = {-0.7463F, 0.1120F, -0.7455F, 0.11245F};

size_t blackPixels(const FractalPicture& picture) {
    size_t count = 0;
    for (size_t i = 0; i < picture.bytes.size(); i += 4) {
        count += picture.bytes[i] == 0 && picture.bytes[i + 1] == 0 && picture.bytes[i + 2] == 0 ? 1U : 0U;
    }
    return count;
}

TEST_F(FractalPaletteTest, SamePixelsAreBlackInEveryPaletteAndPhase) {
    const size_t interior = blackPixels(draw(kFilament, 320, 180, false));
    ASSERT_GT(interior, 100U);
    for (int palette = 0; palette < kPalettes; ++palette) {
        for (int phase = 0; phase < 8; ++phase) {
            FractalView view = kFilament;
            view.palette = palette;
            view.cycling = true;
            view.clock = 2.0F * static_cast<float>(phase);
            EXPECT_EQ(blackPixels(draw(view, 320, 180, true)), interior) << palette << " at " << view.clock;
        }
    }
}

TEST_F(FractalPaletteTest, PalettesDifferAndOthersFallBack) {
    std::vector<FractalPicture> pictures;
    for (int palette = 0; palette < kPalettes; ++palette) {
        FractalView view = kNoInterior;
        view.palette = palette;
        pictures.push_back(draw(view, 160, 90, false));
        for (int other = 0; other < palette; ++other) {
            EXPECT_GT(averageDifference(pictures.back(), pictures[static_cast<size_t>(other)]), 4.0)
                << palette << " and " << other;
        }
    }
    for (const int unknown : {-1, 11, 100, -2147483647 - 1, 2147483647}) {
        FractalView view = kNoInterior;
        view.palette = unknown;
        const FractalPicture picture = draw(view, 160, 90, false);
        const bool known = std::any_of(pictures.begin(), pictures.end(),
                                       [&](const FractalPicture& p) { return p.bytes == picture.bytes; });
        EXPECT_TRUE(known) << unknown;
    }
}

// A frame at speed 4 moves the clock by 4/60. The steps must stay even when the clock has run for hours.
TEST_F(FractalPaletteTest, CyclingMovesSmoothlyHoweverLargeTheClockButOnlyIfItIsOn) {
    FractalView view = kNoInterior;
    const FractalPicture still = draw(view, 160, 90, false);
    view.clock = 7.0F;
    EXPECT_EQ(draw(view, 160, 90, false).bytes, still.bytes);
    view.cycling = true;
    for (const float start : {0.0F, 15.9F, 1000.0F, 86400.0F, 250000.0F}) {
        view.clock = start;
        FractalPicture previous = draw(view, 160, 90, false);
        const FractalPicture first = previous;
        for (int frame = 1; frame <= 12; ++frame) {
            view.clock = start + static_cast<float>(frame) * (4.0F / 60.0F);
            FractalPicture next = draw(view, 160, 90, false);
            EXPECT_LT(averageDifference(previous, next), 4.0) << start << ", frame " << frame;
            previous = std::move(next);
        }
        EXPECT_GT(averageDifference(first, previous), 4.0) << "the palette stands still at " << start;
    }
}

// The pilot's own test on its own greys. A share of 1 in 1,000 makes it find one in 4,999 draws in more than
// 99 of 100 frames.
double busyShare(const FractalPicture& picture) {
    std::vector<uint8_t> greys(picture.bytes.size() / 4);
    const CGImage image(picture.width, picture.height, CGImageFormat::rgba8888, picture.bytes);
    CGBitmapContext(greys.data(), picture.width, picture.height, picture.width, CGColorSpace::deviceGray)
        .drawImage(CGRectMake(0, 0, picture.width, picture.height), image);
    int busy = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x)
            busy += isInteresting({greys.data(), picture.width, picture.height}, {x, y}) ? 1 : 0;
    }
    return static_cast<double>(busy) / (picture.width * picture.height);
}

TEST_F(FractalPaletteTest, FilamentsAreBusyEnoughForThePilot) {
    for (int palette = 0; palette < kOffered; ++palette) {
        for (FractalView view : {FractalView{-3.6666667F, -1.5F, 1.6666667F, 1.5F}, kFilament}) {
            view.palette = palette;
            EXPECT_GT(busyShare(draw(view, 640, 360, true)), 0.001) << palette << " from " << view.x1;
        }
    }
}

}  // namespace
