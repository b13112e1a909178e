// Letters without regard to case, and the bytes of a character: what links, keys and file names need of
// texts. Only ASCII's letters have a case here, whatever the locale.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

constexpr char asciiLowercase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isASCIILetter(char c) {
    return asciiLowercase(c) >= 'a' && asciiLowercase(c) <= 'z';
}

inline std::string asciiLowercase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = asciiLowercase(c);
    return lower;
}

inline bool equalIgnoringASCIICase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char one, char other) { return asciiLowercase(one) == asciiLowercase(other); });
}

/// Bytes of the UTF-8 character that begins with this one, 1 to 4.
constexpr std::size_t utf8CharacterLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0xF0) return 4;
    if (byte >= 0xE0) return 3;
    return byte >= 0xC0 ? 2 : 1;
}
