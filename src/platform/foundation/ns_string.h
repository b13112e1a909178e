// Numbers that a text begins with, read as the platform's strings read them: never an error, 0 for no number.
// Links carry their coordinates as such texts.
#pragma once

#include <string_view>

/// The decimal number at the front, after white space: sign, digits with a point, exponent; what follows it
/// is ignored. 0 where there is none ("nan", "inf" and hexadecimal digits are none), infinity beyond the
/// largest float, 0 below the smallest. Rounded once, whatever the locale.
float NSString_floatValue(std::string_view text);
