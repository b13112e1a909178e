// Random numbers: the same for a seed on every machine, other ones without, and no bound favoured.
// The expected ones come from another implementation of the generator.
#include "platform/foundation/random_source.h"

#include <array>
#include <gtest/gtest.h>

TEST(RandomSource, ASeedGivesTheSameNumbersEverywhere) {
    constexpr std::array<uint32_t, 8> bounds = {1280,        720,         3,           0x80000001U,
                                                0x80000001U, 0x80000001U, 0xFFFFFFFFU, 2};
    struct Case {
        uint64_t seed;
        std::array<uint32_t, 8> numbers;
    };
    constexpr Case cases[] = {
        {0, {204, 714, 0, 909610786, 1696918802, 1243960086, 2424722189, 0}},
        {1, {171, 98, 1, 45149186, 1957126505, 1010932506, 319653112, 1}},
        {0xFFFFFFFFFFFFFFFF, {33, 516, 0, 1103872048, 1126148822, 601893167, 1671646535, 0}},
    };
    RandomSource again(99);
    for (const Case& c : cases) {
        RandomSource random(c.seed);
        again.seed(c.seed);
        for (std::size_t i = 0; i < bounds.size(); ++i) {
            EXPECT_EQ(random.arc4random_uniform(bounds[i]), c.numbers[i]) << c.seed << ", " << i;
            EXPECT_EQ(again.arc4random_uniform(bounds[i]), c.numbers[i]);
        }
    }
}

TEST(RandomSource, WithoutASeedTwoSourcesDiffer) {
    RandomSource one;
    RandomSource other;
    int alike = 0;
    for (int i = 0; i < 8; ++i)
        alike += one.arc4random_uniform(1U << 31) == other.arc4random_uniform(1U << 31);
    EXPECT_LT(alike, 8);
    EXPECT_EQ(one.arc4random_uniform(1), 0U);
    EXPECT_EQ(one.arc4random_uniform(0), 0U);
}

/// With 2/3 of all 32-bit numbers for a bound, a mere remainder would draw the lower half twice as often.
TEST(RandomSource, NoNumberIsFavoured) {
    RandomSource random(5);
    constexpr uint32_t bound = 0xAAAAAAAA;
    constexpr int times = 30000;
    std::array<int, 3> thirds{};
    for (int i = 0; i < times; ++i)
        ++thirds.at(random.arc4random_uniform(bound) / (bound / 3 + 1));
    for (const int count : thirds)
        EXPECT_NEAR(count, times / 3.0, 450);
}
