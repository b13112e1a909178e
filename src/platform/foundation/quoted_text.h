// Texts from outside as one-line messages name them.
// What a terminal would obey, and line ends, must not come out of a message again.
#pragma once

#include <string>
#include <string_view>

/// In single quotes, with "?" for control characters.
std::string quoted(std::string_view text);
