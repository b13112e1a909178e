// Random numbers: the same for a seed on every machine, other ones without, and no bound favoured.
// The expected ones come from another implementation of the generator.
#include "platform/foundation/random_source.h"

#include <array>
#include <gtest/gtest.h>

TEST(RandomSource, ASeedGivesTheSameNumbersEverywhere) {
    constexpr std::array<uint32_t, 8> bounds = {1280,        720,         3,           0x80000001U,
                                                0x80000001U, 0x80000001U, 0xFFFFFFFFU, 2};
    constexpr std::pair<uint64_t, std::array<uint32_t, 8>> cases[] = {
        {0, {204, 714, 0, 909610786, 1696918802, 1243960086, 2424722189, 0}},
        {1, {171, 98, 1, 45149186, 1957126505, 1010932506, 319653112, 1}},
        {0xFFFFFFFFFFFFFFFF, {33, 516, 0, 1103872048, 1126148822, 601893167, 1671646535, 0}},
    };
    RandomSource again(99);
    for (const auto& [seed, numbers] : cases) {
        RandomSource random(seed);
        again.seed(seed);
        for (std::size_t i = 0; i < bounds.size(); ++i) {
            EXPECT_EQ(random.arc4random_uniform(bounds[i]), numbers[i]) << seed << ", " << i;
            EXPECT_EQ(again.arc4random_uniform(bounds[i]), numbers[i]);
        }
    }
}
