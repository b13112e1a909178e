// Decimal texts against the standard library's, where it has them, and what lies beyond the limits.
// Saved settings and copied links are such texts: a digit that differs from host to host would move a view.
#include "platform/foundation/decimal_text.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

template <typename... Format>
std::string standardText(double value, Format... format) {
    char text[400];
    return {text, std::to_chars(text, text + sizeof text, value, format...).ptr};
}

void expectStandardText(double value) {
    const std::string text = decimalText(value);
    EXPECT_EQ(text, standardText(value));
    EXPECT_EQ(decimalTextWithSixDecimals(value), standardText(value, std::chars_format::fixed, 6));
    std::string_view rest = text;
    EXPECT_EQ(std::bit_cast<uint64_t>(takeDecimal(rest).value_or(0.5)), std::bit_cast<uint64_t>(value))
        << text;
    EXPECT_EQ(rest, "");
}

TEST(DecimalText, IsTheStandardLibrarys) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = random();
        if (const auto any = std::bit_cast<double>(bits); std::isfinite(any)) expectStandardText(any);
        // Whole numbers of every length, and few digits at every place: where one layout turns into another.
        expectStandardText(static_cast<double>(bits >> (bits % 64)));
        expectStandardText(static_cast<double>(bits % 1000) * std::pow(10, static_cast<double>(i % 60) - 30));
    }
    for (int power = -1074; power < 1024; ++power)
        expectStandardText(std::ldexp(-1.0, power));
    expectStandardText(0.0);
    expectStandardText(-0.0);
    expectStandardText(-INFINITY);
    EXPECT_EQ(decimalText(std::copysign(NAN, -1.0)), "-nan");
}

TEST(DecimalText, IsCutOffTheFront) {
    struct Case {
        std::string_view text;
        std::optional<double> value;
        std::string_view rest;
    };
    const Case cases[] = {
        {"1.5,2", 1.5, ",2"},         {"-.5e1x", -5, "x"},      {"1e-999}", 0, "}"},
        {"Infinity ", INFINITY, " "}, {"-inf", -INFINITY, ""},  {"1e999", std::nullopt, "1e999"},
        {"+1", std::nullopt, "+1"},   {"-", std::nullopt, "-"}, {"", std::nullopt, ""},
    };
    for (const Case& c : cases) {
        std::string_view text = c.text;
        EXPECT_EQ(takeDecimal(text), c.value) << c.text;
        EXPECT_EQ(text, c.rest);
    }
}

}  // namespace
