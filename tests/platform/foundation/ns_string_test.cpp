// Numbers at the front of texts, as links carry them: what counts as one, and how it is rounded.
// A hostile link must read as some number, never as "not a number".
#include "platform/foundation/ns_string.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(NSString, FloatValueReadsWhatTheTextBeginsWith) {
    for (const char* none : {"", ".", "+-1", "e5", "nan", "-inf", "infinity", "0x10", ",5"})
        EXPECT_EQ(NSString_floatValue(none), 0.0F) << none;
    const std::pair<std::string, float> cases[] = {
        {"-2.000000", -2},
        {"+.5", 0.5F},
        {"5.", 5},
        {" \t\n7 8", 7},
        {"1e2x", 100},
        {"1e", 1},
        {"0.1", 0.1F},
        {"3,5", 3},
        {"1e39", kInfinity},
        {"-1e39", -kInfinity},
        // Halfway between two floats as a double, above it as written: rounded once.
        {"1.00000005960464477540", 1.0000001F},
        {std::string("1\0002", 3), 1},
        {"1e+99999999999999999999", kInfinity},
        {"1" + std::string(10000, '0') + "e-10000", 1},
        {"0." + std::string(10000, '0') + "1e10001", 1},
        {"0e99999999999999999999", 0},
        {"0." + std::string(10000, '7'), 7.0F / 9},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(NSString_floatValue(text), value) << text.substr(0, 60);
    EXPECT_TRUE(std::signbit(NSString_floatValue("-0")));
}

TEST(NSString, CompareNumericTakesRunsOfDigitsForNumbers) {
    const char* const rising[] = {
        "",  "1",  "1.2", "1.10", "1.10.1", "1.99999999999999999999", "1.100000000000000000000",
        "2", "10", "a2",  "a10"};
    for (std::size_t i = 0; i < std::size(rising); ++i)
        for (std::size_t j = 0; j < std::size(rising); ++j)
            EXPECT_EQ(NSString_compareNumeric(rising[i], rising[j]) < 0, i < j)
                << rising[i] << ", " << rising[j];
    EXPECT_EQ(NSString_compareNumeric("1.02", "1.2"), 0);
    EXPECT_EQ(NSString_compareNumeric("1.10", "01.010"), 0);
}

}  // namespace
