// The reading of numbers.
// The standard reader leaves it open whether a number was too large or too small, and takes "nan" and "inf".
#include "platform/foundation/ns_string.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace {

constexpr std::string_view digits = "0123456789";

/// Whether a number that no float holds is too large; it begins with a digit or a point and is not 0.
bool isTooLarge(std::string_view number) {
    const std::size_t mantissaEnd = std::min(number.find_first_not_of("0123456789."), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const auto point = static_cast<int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<int64_t>(std::min(mantissa.find_first_not_of("0."), mantissa.size()));
    std::string_view power = number.substr(mantissaEnd);
    int64_t exponent = 0;
    if (power.starts_with('e') || power.starts_with('E')) {
        power.remove_prefix(1);
        if (power.starts_with('+')) power.remove_prefix(1);
        const auto read = std::from_chars(power.data(), power.data() + power.size(), exponent);
        if (read.ec == std::errc::result_out_of_range) return !power.starts_with('-');
    }
    return point - first + exponent > 0;
}

}  // namespace

float NSString_floatValue(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const std::string_view behindPoint = text.starts_with('.') ? text.substr(1) : text;
    if (behindPoint.empty() || digits.find(behindPoint.front()) == std::string_view::npos) return 0;
    float value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        value = isTooLarge(text) ? std::numeric_limits<float>::infinity() : 0;
    return negative ? -value : value;
}
