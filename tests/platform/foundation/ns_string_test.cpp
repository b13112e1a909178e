// Numbers at the front of texts, as links carry them: what counts as one, and how it is rounded.
// A hostile link must read as some number, never as "not a number".
#include "platform/foundation/ns_string.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(NSString, FloatValueReadsWhatTheTextBeginsWith) {
    const std::pair<const char*, float> cases[] = {{"-2.000000", -2},
                                                   {"+.5", 0.5F},
                                                   {"5.", 5},
                                                   {" \t\n7 8", 7},
                                                   {"1e2x", 100},
                                                   {"1e", 1},
                                                   {"0.1", 0.1F},
                                                   {"", 0},
                                                   {" ", 0},
                                                   {".", 0},
                                                   {"-", 0},
                                                   {"+-1", 0},
                                                   {"e5", 0},
                                                   {"nan", 0},
                                                   {"-inf", 0},
                                                   {"infinity", 0},
                                                   {"0x10", 0},
                                                   {",5", 0},
                                                   {"3,5", 3},
                                                   {"1e39", kInfinity},
                                                   {"-1e39", -kInfinity}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(NSString_floatValue(text), value) << text;
    const std::pair<std::string, float> longCases[] = {
        // Halfway between two floats as a double, above it as written: rounded once.
        {"1.00000005960464477540", 1.0000001F},
        {std::string("1\0002", 3), 1},
        {"1e+99999999999999999999", kInfinity},
        {"1" + std::string(10000, '0') + "e-10000", 1},
        {"0." + std::string(10000, '0') + "1e10001", 1},
        {"1" + std::string(10000, '0'), kInfinity},
        {"0." + std::string(10000, '0') + "1", 0},
        {"1e-99999999999999999999", 0},
        {"0e99999999999999999999", 0},
        {"0." + std::string(10000, '7'), 7.0F / 9},
    };
    for (const auto& [text, value] : longCases)
        EXPECT_EQ(NSString_floatValue(text), value) << text.substr(0, 60);
    EXPECT_TRUE(std::signbit(NSString_floatValue("-0")));
}

TEST(NSString, CompareNumericTakesRunsOfDigitsForNumbers) {
    // In rising order; the same line is equal.
    const std::vector<std::vector<std::string>> order = {{""},
                                                         {"1", "01"},
                                                         {"1."},
                                                         {"1.2", "1.02"},
                                                         {"1.9"},
                                                         {"1.10", "1.010"},
                                                         {"1.10.1"},
                                                         {"1.99999999999999999999"},
                                                         {"1.100000000000000000000"},
                                                         {"2"},
                                                         {"10"},
                                                         {"a1"},
                                                         {"a2"},
                                                         {"a10"}};
    for (std::size_t i = 0; i < order.size(); ++i)
        for (std::size_t j = 0; j < order.size(); ++j)
            for (const std::string& a : order[i])
                for (const std::string& b : order[j])
                    EXPECT_EQ(NSString_compareNumeric(a, b) < 0, i < j) << a << " and " << b;
}

}  // namespace
