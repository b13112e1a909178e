// The autopilot's search: which neighbourhoods are busy, what becomes of a pixel, how far is too far, and
// what chance does. Numbers were worked out apart, in single precision step by step.
#include "main_screen/target_search.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

/// A flat picture but for what a test puts into it.
struct Picture {
    Picture(int32_t pictureWidth, int32_t pictureHeight)
        : width(pictureWidth),
          height(pictureHeight),
          bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 7) {}

    uint8_t& at(int32_t x, int32_t y) {
        return bytes[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(x)];
    }
    void makeBusy(BitmapPixel middle) {
        for (int32_t i = 0; i < 9; ++i)
            at(middle.x - 1 + i % 3, middle.y - 1 + i / 3) = static_cast<uint8_t>(20 * i + 10);
    }
    SamplingBitmap bitmap() const { return {bytes.data(), width, height}; }

    int32_t width;
    int32_t height;
    std::vector<uint8_t> bytes;
};

/// Row by row: UL U UR, L C R, DL D DR.
enum Place { UL, U, UR, L, C, R, DL, D, DR };

}  // namespace

TEST(InterestTest, HoldsAllPairsButTheTwelveThatMayBeAlike) {
    const std::set<std::pair<int, int>> mayBeAlike = {{UL, C}, {UR, C}, {C, DL}, {C, DR}, {UL, R}, {UL, D},
                                                      {UR, L}, {UR, D}, {U, DL}, {U, DR}, {R, DL}, {L, DR}};
    int refused = 0;
    for (int a = 0; a < 9; ++a) {
        for (int b = a + 1; b < 9; ++b) {
            Picture picture(5, 5);
            picture.makeBusy({2, 2});
            ASSERT_TRUE(isInteresting(picture.bitmap(), {2, 2}));
            picture.at(1 + b % 3, 1 + b / 3) = picture.at(1 + a % 3, 1 + a / 3);
            const bool interesting = isInteresting(picture.bitmap(), {2, 2});
            EXPECT_EQ(interesting, mayBeAlike.contains({a, b})) << a << " and " << b;
            refused += !interesting;
        }
    }
    EXPECT_EQ(refused, 24);
}

TEST(InterestTest, TheBorderIsNeverInteresting) {
    Picture picture(7, 5);
    for (std::size_t i = 0; i < picture.bytes.size(); ++i)
        picture.bytes[i] = static_cast<uint8_t>(7 * i);
    for (int32_t y = 0; y < 5; ++y) {
        for (int32_t x = 0; x < 7; ++x) {
            const bool inside = x > 0 && x < 6 && y > 0 && y < 4;
            EXPECT_EQ(isInteresting(picture.bitmap(), {x, y}), inside) << x << ", " << y;
        }
    }
}

TEST(InterestTest, TheLastOfFiveThousandDrawsComesTooLate) {
    constexpr uint64_t seed = 3;
    RandomSource random(seed);
    std::vector<BitmapPixel> draws;
    for (int i = 0; i < 5000; ++i) {
        const auto x = static_cast<int32_t>(random.arc4random_uniform(1280));
        const auto y = static_cast<int32_t>(random.arc4random_uniform(720));
        draws.push_back({x, y});
    }
    const uint32_t afterAll = random.arc4random_uniform(1U << 31);
    for (const std::size_t draw : {std::size_t{0}, std::size_t{4998}, std::size_t{4999}}) {
        Picture picture(1280, 720);
        ASSERT_EQ(std::ranges::count(draws, draws[draw]), 1);
        picture.makeBusy(draws[draw]);
        random.seed(seed);
        const auto found = findInterestingPixel(picture.bitmap(), random);
        if (draw == 4999) {
            EXPECT_FALSE(found);
            EXPECT_EQ(random.arc4random_uniform(1U << 31), afterAll);
        } else {
            EXPECT_EQ(found, draws[draw]);
        }
    }
}

TEST(Targets, AreATenthOfTheViewAroundACentreInSinglePrecision) {
    struct Case {
        BitmapPixel pixel;
        int32_t width, height;
        CGRect view, target;
    };
    const Case cases[] = {
        {{640, 360},
         1280,
         720,
         {{-3.6666666, -1.5}, {5.3333333, 3}},
         {{-0x1.4444426666666p+0, -0x1.3333333333330p-3}, {0x1.1111119999998p-1, 0x1.3333333333330p-2}}},
        {{1, 719},
         1280,
         720,
         {{-0.75, 0.1}, {1e-3, 5.625e-4}},
         {{-0x1.800673b8c0000p-1, 0x1.9bc91c40ccccdp-4}, {0x1.a36e300000000p-14, 0x1.d7dbf33333330p-15}}},
        {{333, 101},
         844,
         390,
         {{-1.2345678901234, 0.0000123456789}, {3.3e-5, 1.7e-5}},
         {{-0x1.3c0be5aeb2333p+0, 0x1.0aba6f199999ap-16}, {0x1.baeb233333330p-19, 0x1.c8571ccccccd0p-20}}},
    };
    for (const Case& c : cases) {
        const SamplingBitmap bitmap{nullptr, c.width, c.height};
        EXPECT_EQ(targetAround(c.pixel, bitmap, c.view), c.target)
            << NSStringFromCGRect(targetAround(c.pixel, bitmap, c.view));
    }
}

TEST(Targets, EndWhereAPixelIsATenthOfTheFloatsStep) {
    const SamplingBitmap bitmap{nullptr, 1024, 512};
    const double limit = 0x1p-23 / 10;
    const auto isEnough = [&](double width, double height, int32_t bits) {
        return precisionOf(CGRectMake(0, 0, width, height), bitmap, bits).isEnough();
    };
    EXPECT_TRUE(isEnough(1024 * limit, 512 * limit, 23));
    EXPECT_FALSE(isEnough(1023 * limit, 512 * limit, 23));
    EXPECT_FALSE(isEnough(1024 * limit, 511 * limit, 23));
    EXPECT_TRUE(isEnough(512 * limit, 256 * limit, 24));
    EXPECT_FALSE(isEnough(1024 * limit, 512 * limit, 10));
}

TEST(Targets, LieBetweenAFifteenthAndFifteenOfTheSmallerWidth) {
    const CGRect view = CGRectMake(-0.5, -0.25, 1, 0.5);
    const auto around = [](double x, double y, double width) {
        return CGRectMake(x - 0.5 * width, y - 0.25 * width, width, 0.5 * width);
    };
    struct Case {
        double x, y, width;
        bool good;
    };
    const Case cases[] = {
        {0, 0, 0.1, false},    {0.006, 0, 0.1, false}, {0.007, 0, 0.1, true},     {-0.005, 0.005, 0.1, true},
        {0, -1.49, 0.1, true}, {1.51, 0, 0.1, false},  {1.07, -1.07, 0.1, false}, {0.06, 0, 1, false},
        {0.07, 0, 1, true},    {0, 14.9, 1, true},     {0, 15.1, 1, false},       {0, 14.9, 40, true},
        {0, 15.1, 40, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(isAtGoodDistance(view, around(c.x, c.y, c.width)), c.good)
            << c.x << ", " << c.y << ", " << c.width;
    // The first good one is taken; those that were refused before it stay, in their order.
    std::vector<CGRect> targets = {around(0, 0, 0.1), around(0, 9, 0.1), around(0.04, 0, 0.1),
                                   around(0.03, 0, 0.1)};
    EXPECT_EQ(takeGoodTarget(targets, view), around(0.04, 0, 0.1));
    EXPECT_EQ(targets, (std::vector<CGRect>{around(0, 0, 0.1), around(0, 9, 0.1), around(0.03, 0, 0.1)}));
    targets.pop_back();
    EXPECT_FALSE(takeGoodTarget(targets, view));
    EXPECT_EQ(targets.size(), 2U);
}

TEST(Shuffling, GivesEveryOrderItsShare) {
    RandomSource random(1);
    std::map<std::vector<double>, int> orders;
    constexpr int times = 24000;
    for (int i = 0; i < times; ++i) {
        std::vector<CGRect> targets;
        for (const double x : {1.0, 2.0, 3.0, 4.0})
            targets.push_back(CGRectMake(x, 0, 1, 1));
        shuffle(targets, random);
        std::vector<double> order;
        for (const CGRect& target : targets)
            order.push_back(target.origin.x);
        ++orders[order];
    }
    ASSERT_EQ(orders.size(), 24U);
    // Five standard deviations of a share of a 24th.
    for (const auto& [order, count] : orders)
        EXPECT_NEAR(count, times / 24.0, 160);
    std::vector<CGRect> one = {CGRectMake(5, 0, 1, 1)};
    RandomSource untouched = random;
    shuffle(one, random);
    EXPECT_EQ(one[0].origin.x, 5);
    EXPECT_EQ(random.arc4random_uniform(1U << 31), untouched.arc4random_uniform(1U << 31));
}
