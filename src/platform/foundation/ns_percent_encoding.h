// Percent coding of URL texts: which escapes are well-formed, and what they stand for.
// Decoded text is UTF-8 like every text of the app; bytes that are none have no decoded form.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Length of the escape ("%", two hexadecimal digits) at `index`; 0 if none stands there.
std::size_t percentEscapeLength(std::string_view text, std::size_t index);

/// Each escape as the byte that it stands for ("%00" included); "+" stays. Nothing if a "%" begins no escape,
/// or if the outcome is no UTF-8.
std::optional<std::string> stringByRemovingPercentEncoding(std::string_view text);

/// Shortest forms only, no surrogates, nothing above U+10FFFF.
bool isUTF8(std::string_view text);
