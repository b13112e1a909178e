// The reading of numbers.
// The reader of digits takes "nan" and "inf" too, and answers infinity and 0 beyond the limits.
#include "platform/foundation/ns_string.h"

#include <algorithm>
#include <fast_float/fast_float.h>

namespace {

constexpr std::string_view digits = "0123456789";

}  // namespace

float NSString_floatValue(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const std::string_view behindPoint = text.starts_with('.') ? text.substr(1) : text;
    if (behindPoint.empty() || digits.find(behindPoint.front()) == std::string_view::npos) return 0;
    float value = 0;
    fast_float::from_chars(text.data(), text.data() + text.size(), value);
    return negative ? -value : value;
}
