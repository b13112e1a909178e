// Numbers in texts: written by a format, read as the platform's strings read them (never an error, 0 for no
// number), compared. Links carry their coordinates as such texts, versions are ordered by them.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

/// The decimal number at the front, after white space: sign, digits with a point, exponent; what follows it
/// is ignored. 0 where there is none ("nan", "inf" and hexadecimal digits are none), infinity beyond the
/// largest float, 0 below the smallest. Rounded once, whatever the locale.
float NSString_floatValue(std::string_view text);

/// Less than, equal to or greater than 0 where `a` comes before, is equal to or comes behind `b`: runs of
/// digits by their numbers ("1.9" before "1.10", "1.02" equal to "1.2"), all else byte by byte.
int NSString_compareNumeric(std::string_view a, std::string_view b);

/// As std::printf would print it; empty for a format that is none.
[[gnu::format(printf, 1, 2)]] std::string NSString_stringWithFormat(const char* format, ...);
std::string NSString_stringWithFormatArguments(const char* format, std::va_list arguments);
