// Layout of the shortest digits, and what the readers of decimal texts leave open.
// Texts are saved and compared, so that their layout is fixed here, not a library's habit.
#include "platform/foundation/decimal_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <locale.h>
#include <stdlib.h>
#include <utility>

namespace {

/// A positive number: its digits without zeros at either end, times ten to the power of the exponent.
struct Decimal {
    std::string digits;
    int32_t exponent = 0;
};

/// 400 characters hold the largest double.
std::string printed(const char* format, double value) {
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return text;
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
    if (decimal.exponent > 0) return printed("%.0f", magnitude);
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

/// What of the front may be a number. The C library takes more for one: space and a plus before it, "0x1p3",
/// "nan(1)".
std::string frontOf(std::string_view text) {
    constexpr std::string_view ordinary = "0123456789.eEiInNfFaAtTyY";
    std::size_t length = 0;
    for (; length < text.size(); ++length) {
        const char character = text[length];
        const bool startsExponent = length > 0 && (text[length - 1] == 'e' || text[length - 1] == 'E');
        const bool isSign =
            character == '-' ? length == 0 || startsExponent : character == '+' && startsExponent;
        if (!isSign && ordinary.find(character) == std::string_view::npos) break;
    }
    return std::string(text.substr(0, length));
}

template <typename Number>
std::optional<Number> takeNumber(std::string_view& text, Number (*read)(const char*, char**, locale_t)) {
    static const locale_t withPoint = newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string front = frontOf(text);
    char* end = nullptr;
    const Number value = read(front.c_str(), &end, withPoint);
    const auto length = static_cast<std::size_t>(end - front.c_str());
    if (length == 0) return std::nullopt;
    // Infinity is an answer to digits too.
    const char first = front[front.front() == '-' ? 1 : 0];
    if (std::isinf(value) && first != 'i' && first != 'I') return std::nullopt;
    text.remove_prefix(length);
    return value;
}

}  // namespace

std::string decimalText(double value) {
    const std::string sign = std::signbit(value) ? "-" : "";
    const double magnitude = std::fabs(value);
    if (std::isnan(value)) return sign + "nan";
    if (std::isinf(value)) return sign + "inf";
    if (magnitude == 0) return sign + "0";
    const auto fp = fmt::detail::dragonbox::to_decimal(magnitude);
    Decimal decimal{std::to_string(fp.significand), fp.exponent};
    return sign + (isShortWithoutExponent(decimal) ? withoutExponent(std::move(decimal), magnitude)
                                                   : withExponent(std::move(decimal)));
}

std::string decimalTextWithSixDecimals(double value) {
    std::string text = printed("%.6f", value);
    if (!std::isfinite(value)) return text;
    // A locale has its own point, of one byte or more.
    const std::size_t point = text.find_first_not_of("-0123456789");
    return text.replace(point, text.size() - 6 - point, ".");
}

std::optional<double> takeDecimal(std::string_view& text) {
    return takeNumber<double>(text, &strtod_l);
}

std::optional<float> takeDecimalFloat(std::string_view& text) {
    return takeNumber<float>(text, &strtof_l);
}
