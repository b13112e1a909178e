// Doubles as decimal texts and back, whatever the locale.
// One place for both ways, because not every standard library that a host is built with has them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The fewest digits that read back as the same value, with an exponent of two digits at least where the text
/// gets shorter by it; "inf" and "nan", with their signs, for what is no number.
std::string decimalText(double value);

/// With six digits behind the point, rounded once.
std::string decimalTextWithSixDecimals(double value);

/// Cuts the number off the front of `text`: "-" or nothing, digits with a point, exponent; also "inf" and
/// "nan" in any case. Rounded once, 0 below the smallest double. Nothing, and `text` as it was, if it begins
/// with no number or with one beyond the largest double.
std::optional<double> takeDecimal(std::string_view& text);

/// The same, rounded once to 32 bits.
std::optional<float> takeDecimalFloat(std::string_view& text);
