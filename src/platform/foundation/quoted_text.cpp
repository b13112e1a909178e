// Bytes above 0x7F stay: names of files are in the user's own language.
// Nothing is cut, so that what is quoted can be found.
#include "platform/foundation/quoted_text.h"

#include <algorithm>

std::string quoted(std::string_view text) {
    std::string result(1, '\'');
    result.append(text).push_back('\'');
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; };
    std::replace_if(result.begin(), result.end(), isControl, '?');
    return result;
}
