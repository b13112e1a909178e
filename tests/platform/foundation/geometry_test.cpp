// Rectangles: their strings, and what empty and null ones answer.
// Views travel through settings, tweens and links as these strings; a lost bit moves the picture.
#include "platform/foundation/geometry.h"

#include <bit>
#include <gtest/gtest.h>
#include <random>

namespace {

uint64_t bits(double value) {
    return std::bit_cast<uint64_t>(value);
}

void expectSameBits(CGRect a, CGRect b, const std::string& text) {
    EXPECT_EQ(bits(a.origin.x), bits(b.origin.x)) << text;
    EXPECT_EQ(bits(a.origin.y), bits(b.origin.y)) << text;
    EXPECT_EQ(bits(a.size.width), bits(b.size.width)) << text;
    EXPECT_EQ(bits(a.size.height), bits(b.size.height)) << text;
}

TEST(GeometryStrings, EveryBitPatternComesBack) {
    std::mt19937_64 random(7);
    const auto any = [&random] { return std::bit_cast<double>(random()); };
    // Few random patterns are NaNs or tiny; these all are.
    const auto special = [&random] {
        constexpr uint64_t exponents[] = {uint64_t{0x7ff} << 52, uint64_t{0xfff} << 52, 0, uint64_t{1} << 63};
        return std::bit_cast<double>(exponents[random() % 4] | (random() >> (12 + random() % 52)));
    };
    for (int i = 0; i < 20000; ++i) {
        const CGRect rect = CGRectMake(any(), special(), any(), special());
        const std::string text = NSStringFromCGRect(rect);
        expectSameBits(CGRectFromString(text), rect, text);
    }
    const CGPoint point = CGPointFromString(NSStringFromCGPoint({-0.0, 5e-324}));
    EXPECT_EQ(bits(point.x), bits(-0.0));
    EXPECT_EQ(point.y, 5e-324);
    EXPECT_EQ(CGSizeFromString(NSStringFromCGSize({0.1, 1e300})), CGSizeMake(0.1, 1e300));
}

TEST(GeometryStrings, ReadsFreelySpacedText) {
    const CGRect expected = CGRectMake(-3, -1.5, 4, 3);
    for (const char* text :
         {"{{-3,-1.5},{4,3}}", " {\t{ -3 , -1.5 } ,\n{ 4.0 , 3e0 } } ", "{{-3, -1.5}, {+4, 03}}"}) {
        EXPECT_EQ(CGRectFromString(text), expected) << text;
    }
}

TEST(GeometryStrings, MalformedTextIsZero) {
    using namespace std::string_literals;
    std::vector<std::string> cases = {"{{1, 2}, {3, 4}}\0"s, std::string(1 << 20, '{'),
                                      "{{" + std::string(1 << 20, '9') + ", 2}, {3, 4}}"};
    for (const char* text : {"", "{{1, 2}, {3, 4}", "{1, 2}, {3, 4}}", "{{1, 2} {3, 4}}",
                             "{{1, 2}, {3, 4}} x", "x {{1, 2}, {3, 4}}", "{{1, 2}, {3, }}",
                             "{{1, 2}, {3, 0x4}}", "{{1, 2}, {3, 1e999}}", "{{1, 2}, {3, nan(8}}"})
        cases.emplace_back(text);
    for (const std::string& text : cases)
        EXPECT_EQ(CGRectFromString(text), CGRectZero) << text.substr(0, 60);
    EXPECT_EQ(CGPointFromString("{{1, 2}, {3, 4}}"), CGPointZero);
    EXPECT_EQ(CGSizeFromString("{1, 2"), CGSizeZero);
}

TEST(Geometry, NullAndEmptyRectangles) {
    const CGRect a = CGRectMake(0, 0, 10, 10);
    EXPECT_EQ(CGRectUnion(CGRectNull, a), a);
    EXPECT_EQ(CGRectUnion(a, CGRectNull), a);
    EXPECT_EQ(CGRectUnion(a, CGRectMake(20, -5, 1, 1)), CGRectMake(0, -5, 21, 15));
    EXPECT_EQ(CGRectIntersection(a, CGRectMake(4, 5, 20, 20)), CGRectMake(4, 5, 6, 5));
    EXPECT_TRUE(CGRectIsNull(CGRectIntersection(a, CGRectMake(10, 0, 5, 5))));
    EXPECT_EQ(CGRectIntegral(CGRectMake(-0.5, 1.25, 1, 1)), CGRectMake(-1, 1, 2, 2));
}

}  // namespace
