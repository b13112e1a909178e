// The writing, reading and comparing of numbers.
// Numbers are read by the digits alone: "nan" and "inf" are none here.
#include "platform/foundation/ns_string.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "platform/foundation/decimal_text.h"

namespace {

constexpr std::string_view digits = "0123456789";

/// The digits at the front without leading zeros, which it cuts off.
std::string_view takeDigits(std::string_view& text) {
    std::string_view run = text.substr(0, text.find_first_not_of(digits));
    text.remove_prefix(run.size());
    run.remove_prefix(std::min(run.find_first_not_of('0'), run.size()));
    return run;
}

bool beginsWithDigit(std::string_view text) {
    return !text.empty() && digits.find(text.front()) != std::string_view::npos;
}

/// The front of both, which it cuts off: two numbers or two bytes.
int compareFronts(std::string_view& a, std::string_view& b) {
    if (beginsWithDigit(a) && beginsWithDigit(b)) {
        const auto one = takeDigits(a);
        const auto other = takeDigits(b);
        if (one.size() != other.size()) return one.size() < other.size() ? -1 : 1;
        return one.compare(other);
    }
    const int difference = a.substr(0, 1).compare(b.substr(0, 1));
    a.remove_prefix(1);
    b.remove_prefix(1);
    return difference;
}

}  // namespace

float NSString_floatValue(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const std::string_view behindPoint = text.starts_with('.') ? text.substr(1) : text;
    if (behindPoint.empty() || digits.find(behindPoint.front()) == std::string_view::npos) return 0;
    // What begins with a digit is a number, or one beyond all others.
    const float value = takeDecimalFloat(text).value_or(std::numeric_limits<float>::infinity());
    return negative ? -value : value;
}

int NSString_compareNumeric(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (const int difference = compareFronts(a, b); difference != 0) return difference;
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

std::string NSString_stringWithFormatArguments(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::string NSString_stringWithFormat(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = NSString_stringWithFormatArguments(format, arguments);
    va_end(arguments);
    return text;
}
