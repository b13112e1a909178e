// Any bytes as the text of a rectangle, and as the numbers of one: what was written reads back bit for bit.
// A text whose tokens are not those of a rectangle gives zeros; ordinary numbers must be what std::from_chars
// reads.
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "platform/foundation/geometry.h"

namespace {

using Bits = std::array<uint64_t, 4>;

constexpr std::string_view spaces = " \t\n\r\v\f";
constexpr std::string_view delimiters = "{},";

Bits bitsOf(const CGRect& rect) {
    return {std::bit_cast<uint64_t>(rect.origin.x), std::bit_cast<uint64_t>(rect.origin.y),
            std::bit_cast<uint64_t>(rect.size.width), std::bit_cast<uint64_t>(rect.size.height)};
}

bool isZero(const CGRect& rect) {
    return bitsOf(rect) == bitsOf(CGRectZero);
}

void checkRoundTrip(const CGRect& rect) {
    FUZZ_CHECK(bitsOf(CGRectFromString(NSStringFromCGRect(rect))) == bitsOf(rect));
}

/// Delimiters, and the words between them without the space around.
struct Tokens {
    explicit Tokens(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find_first_of(delimiters), text.size());
            std::string_view word = text.substr(0, end);
            word.remove_prefix(std::min(word.find_first_not_of(spaces), word.size()));
            word = word.substr(0, word.find_last_not_of(spaces) + 1);
            shape += word.empty() ? "" : "n";
            if (!word.empty()) words.emplace_back(word);
            if (end < text.size()) shape += text[end];
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    std::string shape;
    std::vector<std::string> words;
};

bool isOrdinary(const std::string& number) {
    return number.find_first_not_of("0123456789.") == std::string::npos && number.size() < 100;
}

void checkText(const std::string& text) {
    const CGRect rect = CGRectFromString(text);
    checkRoundTrip(rect);
    const Tokens tokens(text);
    if (tokens.shape != "{{n,n},{n,n}}") {
        FUZZ_CHECK(isZero(rect));
        return;
    }
    FUZZ_CHECK(isZero(CGRectFromString(text + "0")));
    FUZZ_CHECK(isZero(CGRectFromString("0" + text)));
    Bits expected{};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const std::string& word = tokens.words[i];
        if (!isOrdinary(word)) return;
        double number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        expected[i] = std::bit_cast<uint64_t>(number);
        if (error != std::errc() || *end != '\0') {
            FUZZ_CHECK(isZero(rect));
            return;
        }
    }
    FUZZ_CHECK(bitsOf(rect) == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    checkText(std::string(data, data + size));
    std::array<CGFloat, 4> numbers{};
    if (size < sizeof numbers) return 0;
    std::memcpy(numbers.data(), data, sizeof numbers);
    checkRoundTrip(CGRectMake(numbers[0], numbers[1], numbers[2], numbers[3]));
    return 0;
}
