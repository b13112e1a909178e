// Points, sizes and rectangles of 64-bit floats, with the string forms that carry them through settings,
// tweens and logs: a value written as a string and read back is the same value, bit for bit.
#pragma once

#include <limits>
#include <string>
#include <string_view>

using CGFloat = double;

struct CGPoint {
    CGFloat x = 0;
    CGFloat y = 0;
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    CGFloat width = 0;
    CGFloat height = 0;
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect&, const CGRect&) = default;
};

struct UIEdgeInsets {
    CGFloat top = 0;
    CGFloat left = 0;
    CGFloat bottom = 0;
    CGFloat right = 0;
    friend bool operator==(const UIEdgeInsets&, const UIEdgeInsets&) = default;
};

inline constexpr CGPoint CGPointZero{};
inline constexpr CGSize CGSizeZero{};
inline constexpr CGRect CGRectZero{};
/// The rectangle that is nowhere: what an empty intersection answers, and an unset launch rectangle holds.
inline constexpr CGRect CGRectNull{
    {std::numeric_limits<CGFloat>::infinity(), std::numeric_limits<CGFloat>::infinity()}, {}};

constexpr CGPoint CGPointMake(CGFloat x, CGFloat y) {
    return {x, y};
}
constexpr CGSize CGSizeMake(CGFloat width, CGFloat height) {
    return {width, height};
}
constexpr CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}

constexpr CGFloat CGRectGetMinX(CGRect r) {
    return r.origin.x;
}
constexpr CGFloat CGRectGetMinY(CGRect r) {
    return r.origin.y;
}
constexpr CGFloat CGRectGetMaxX(CGRect r) {
    return r.origin.x + r.size.width;
}
constexpr CGFloat CGRectGetMaxY(CGRect r) {
    return r.origin.y + r.size.height;
}
constexpr CGFloat CGRectGetMidX(CGRect r) {
    return r.origin.x + r.size.width * 0.5;
}
constexpr CGFloat CGRectGetMidY(CGRect r) {
    return r.origin.y + r.size.height * 0.5;
}

/// Moves the left edge by dx and the top by dy and takes twice as much off the size. Nothing is clamped: a
/// large inset turns the rectangle inside out (the pinch rule counts on it).
constexpr CGRect CGRectInset(CGRect r, CGFloat dx, CGFloat dy) {
    return {{r.origin.x + dx, r.origin.y + dy}, {r.size.width - 2 * dx, r.size.height - 2 * dy}};
}
constexpr CGRect CGRectOffset(CGRect r, CGFloat dx, CGFloat dy) {
    return {{r.origin.x + dx, r.origin.y + dy}, r.size};
}
bool CGRectIsNull(CGRect r);
/// Whether all four edges are numbers.
bool isFinite(CGRect r);
/// True for the null rectangle and for one without area.
bool CGRectIsEmpty(CGRect r);
/// Half open: the left and top edges belong to the rectangle, the right and bottom ones do not.
bool CGRectContainsPoint(CGRect r, CGPoint p);
/// CGRectNull where the two do not meet.
CGRect CGRectIntersection(CGRect a, CGRect b);
/// The smallest rectangle around both; a null side is left out.
CGRect CGRectUnion(CGRect a, CGRect b);
/// The smallest rectangle with whole coordinates around r.
CGRect CGRectIntegral(CGRect r);
CGRect UIEdgeInsetsInsetRect(CGRect r, UIEdgeInsets insets);

/// "{x, y}", "{width, height}" and "{{x, y}, {width, height}}", each number in the fewest digits that read
/// back to the same value. Independent of the locale.
std::string NSStringFromCGPoint(CGPoint p);
std::string NSStringFromCGSize(CGSize s);
std::string NSStringFromCGRect(CGRect r);

/// The reverse: white space between tokens is free; malformed text, text before the first brace or after the
/// last included, gives the zero value.
CGPoint CGPointFromString(std::string_view text);
CGSize CGSizeFromString(std::string_view text);
CGRect CGRectFromString(std::string_view text);
