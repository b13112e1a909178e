// Layout of the shortest digits, and what the readers of decimal texts leave open.
// Texts are saved and compared, so that their layout is fixed here, not a library's habit.
#include "platform/foundation/decimal_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fast_float/fast_float.h>
#include <fmt/compile.h>

namespace {

/// A positive number: its digits without zeros at either end, times ten to the power of the exponent.
struct Decimal {
    std::string digits;
    int32_t exponent = 0;
};

/// Of a text such as "120", "0.012" or "1.2e-05".
Decimal decimalOf(std::string_view text) {
    Decimal decimal;
    const std::size_t power = text.find('e');
    if (power != std::string_view::npos) {
        const std::size_t start = power + (text[power + 1] == '+' ? 2 : 1);
        std::from_chars(text.data() + start, text.data() + text.size(), decimal.exponent);
        text = text.substr(0, power);
    }
    decimal.digits = text;
    if (const std::size_t point = text.find('.'); point != std::string_view::npos) {
        decimal.digits.erase(point, 1);
        decimal.exponent -= static_cast<int32_t>(decimal.digits.size() - point);
    }
    decimal.digits.erase(0, decimal.digits.find_first_not_of('0'));
    const std::size_t end = decimal.digits.find_last_not_of('0') + 1;
    decimal.exponent += static_cast<int32_t>(decimal.digits.size() - end);
    decimal.digits.resize(end);
    return decimal;
}

/// Whether "1200" or "0.012" is no longer than the text with an exponent.
bool isShortWithoutExponent(const Decimal& decimal) {
    const auto length = static_cast<int32_t>(decimal.digits.size());
    const int32_t point = length > 1 ? 1 : 0;
    return decimal.exponent >= -length - 2 - point && decimal.exponent <= 4 + point;
}

std::string withoutExponent(Decimal decimal, double magnitude) {
    std::string& digits = decimal.digits;
    // Above 2^53 zeros would stand for digits that the value has.
    if (decimal.exponent > 0) return fmt::format(FMT_COMPILE("{:.0f}"), magnitude);
    if (decimal.exponent == 0) return digits;
    const auto decimals = static_cast<std::size_t>(-decimal.exponent);
    if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
    return digits.insert(digits.size() - decimals, 1, '.');
}

std::string withExponent(Decimal decimal) {
    std::string& text = decimal.digits;
    const int32_t power = decimal.exponent + static_cast<int32_t>(text.size()) - 1;
    if (text.size() > 1) text.insert(1, 1, '.');
    text += power < 0 ? "e-" : "e+";
    const std::string digits = std::to_string(std::abs(power));
    return text.append(digits.size() < 2 ? "0" : "").append(digits);
}

}  // namespace

std::string decimalText(double value) {
    const std::string sign = std::signbit(value) ? "-" : "";
    const double magnitude = std::fabs(value);
    if (std::isnan(value)) return sign + "nan";
    if (std::isinf(value)) return sign + "inf";
    if (magnitude == 0) return sign + "0";
    std::array<char, 32> text;
    const auto end = fmt::format_to(text.begin(), FMT_COMPILE("{}"), magnitude);
    Decimal decimal = decimalOf({text.data(), static_cast<std::size_t>(end - text.begin())});
    return sign + (isShortWithoutExponent(decimal) ? withoutExponent(std::move(decimal), magnitude)
                                                   : withExponent(std::move(decimal)));
}

std::string decimalTextWithSixDecimals(double value) {
    return fmt::format(FMT_COMPILE("{:.6f}"), value);
}

std::optional<double> takeDecimal(std::string_view& text) {
    double value = 0;
    const auto [end, error] = fast_float::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    // Infinity is an answer to digits too.
    const char first = text[text.front() == '-' ? 1 : 0];
    if (std::isinf(value) && first != 'i' && first != 'I') return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}
