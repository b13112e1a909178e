// Readers of parameter values.
// Numbers in texts are read and written in the same way whatever the locale.
#include "tween/gs_tween_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "platform/foundation/decimal_text.h"

namespace {

constexpr std::string_view whiteSpace = " \t\n\r\v\f";

std::string_view withoutLeading(std::string_view text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
    return text;
}

std::string_view withoutSpaceAndPlus(std::string_view text) {
    text = withoutLeading(text, whiteSpace);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    return text;
}

double doubleAtHead(std::string_view text) {
    text = withoutSpaceAndPlus(text);
    return takeDecimal(text).value_or(0);
}

int64_t integerAtHead(std::string_view text) {
    text = withoutSpaceAndPlus(text);
    int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

bool isTrue(std::string_view text) {
    text = withoutLeading(text, whiteSpace);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    text = withoutLeading(text, "0");
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

struct AsFloat {
    using Result = std::optional<float>;
    Result operator()(bool flag) const { return flag ? 1.0F : 0.0F; }
    Result operator()(int64_t number) const { return static_cast<float>(number); }
    Result operator()(double number) const { return static_cast<float>(number); }
    Result operator()(const std::string& text) const { return static_cast<float>(doubleAtHead(text)); }
    Result operator()(const auto& /*callback*/) const { return std::nullopt; }
};

struct AsInteger {
    using Result = std::optional<int64_t>;
    Result operator()(bool flag) const { return flag ? 1 : 0; }
    Result operator()(int64_t number) const { return number; }
    Result operator()(double number) const { return truncatedToInteger(number); }
    Result operator()(const std::string& text) const { return integerAtHead(text); }
    Result operator()(const auto& /*callback*/) const { return std::nullopt; }
};

struct AsBool {
    using Result = std::optional<bool>;
    Result operator()(bool flag) const { return flag; }
    Result operator()(int64_t number) const { return number != 0; }
    Result operator()(double number) const { return number != 0; }
    Result operator()(const std::string& text) const { return isTrue(text); }
    Result operator()(const auto& /*callback*/) const { return std::nullopt; }
};

struct AsString {
    using Result = std::optional<std::string>;
    Result operator()(bool flag) const { return flag ? "1" : "0"; }
    Result operator()(int64_t number) const { return std::to_string(number); }
    Result operator()(double number) const { return decimalText(number); }
    Result operator()(const std::string& text) const { return text; }
    Result operator()(const auto& /*callback*/) const { return std::nullopt; }
};

}  // namespace

std::optional<float> floatValue(const GSTweenValue& value) {
    return std::visit(AsFloat{}, value);
}

std::optional<int64_t> integerValue(const GSTweenValue& value) {
    return std::visit(AsInteger{}, value);
}

std::optional<bool> boolValue(const GSTweenValue& value) {
    return std::visit(AsBool{}, value);
}

std::optional<std::string> stringValue(const GSTweenValue& value) {
    return std::visit(AsString{}, value);
}

int64_t truncatedToInteger(double number) {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (std::isnan(number)) return 0;
    if (number >= limit) return std::numeric_limits<int64_t>::max();
    if (number < -limit) return std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(number);
}
