// Percent decoding and the check that its outcome is text.
// Classes of characters are ASCII's own, whatever the locale.
#include "platform/foundation/ns_percent_encoding.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::size_t escapeLength = 3;

constexpr int valueOfDigit(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

/// The first byte of a sequence of `length` bytes is `lead` in the bits of `mask`; smaller code points than
/// `least` have a shorter form.
struct Sequence {
    unsigned mask;
    unsigned lead;
    std::size_t length;
    uint32_t least;
};

constexpr Sequence sequences[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

/// 0 if `text` begins with no code point.
std::size_t lengthOfCodePoint(std::string_view text) {
    const auto byte = [text](std::size_t i) -> unsigned { return static_cast<unsigned char>(text[i]); };
    const auto* const sequence =
        std::find_if(std::begin(sequences), std::end(sequences),
                     [lead = byte(0)](const Sequence& each) { return (lead & each.mask) == each.lead; });
    if (sequence == std::end(sequences) || text.size() < sequence->length) return 0;
    uint32_t point = byte(0) & ~sequence->mask;
    for (std::size_t i = 1; i < sequence->length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        point = point << 6 | (byte(i) & 0x3F);
    }
    const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
    return point < sequence->least || isSurrogate || point > 0x10FFFF ? 0 : sequence->length;
}

}  // namespace

std::size_t percentEscapeLength(std::string_view text, std::size_t index) {
    const bool isEscape = text.size() >= escapeLength && index <= text.size() - escapeLength &&
                          text[index] == '%' && valueOfDigit(text[index + 1]) >= 0 &&
                          valueOfDigit(text[index + 2]) >= 0;
    return isEscape ? escapeLength : 0;
}

bool isUTF8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = lengthOfCodePoint(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> stringByRemovingPercentEncoding(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != '%') {
            decoded += text[i++];
            continue;
        }
        const std::size_t length = percentEscapeLength(text, i);
        if (length == 0) return std::nullopt;
        decoded += static_cast<char>(valueOfDigit(text[i + 1]) * 16 + valueOfDigit(text[i + 2]));
        i += length;
    }
    if (!isUTF8(decoded)) return std::nullopt;
    return decoded;
}
