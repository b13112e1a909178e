// The parser's way and the scanner's.
// The scanner knows no nesting: commas and braces end a value, also within quotes.
#include "rating/store_answer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "platform/foundation/decimal_text.h"
#include "platform/foundation/json_text.h"

namespace {

using nlohmann::json;

constexpr int deepestNesting = 64;
constexpr std::string_view space = " \t\n\r\v\f";

std::optional<std::string> textOf(const json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_number_unsigned()) return std::to_string(value.get<uint64_t>());
    if (value.is_number_integer()) return std::to_string(value.get<int64_t>());
    if (value.is_number_float()) return decimalText(value.get<double>());
    return std::nullopt;
}

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(space), text.size()));
    return text.substr(0, text.find_last_not_of(space) + 1);
}

void appendUTF8(std::string& text, uint32_t character) {
    const auto append = [&text](uint32_t byte) { text += static_cast<char>(byte); };
    const auto appendTail = [&append, character](unsigned shift) {
        append(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
        append(0xC0U | (character >> 6U));
    } else if (character < 0x10000) {
        append(0xE0U | (character >> 12U));
        appendTail(6);
    } else {
        append(0xF0U | (character >> 18U));
        appendTail(12);
        appendTail(6);
    }
    appendTail(0);
}

constexpr uint32_t replacement = 0xFFFD;
constexpr bool isHighSurrogate(uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isLowSurrogate(uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// The unit of an escape of four hexadecimal digits at the front, which it cuts off; nothing if there is
/// none.
std::optional<uint32_t> takeUnit(std::string_view& text) {
    constexpr std::size_t length = 6;
    if (!text.starts_with("\\u") || text.size() < length) return std::nullopt;
    uint32_t unit = 0;
    const char* end = text.data() + length;
    if (std::from_chars(text.data() + 2, end, unit, 16).ptr != end) return std::nullopt;
    text.remove_prefix(length);
    return unit;
}

void appendUnits(std::string& text, std::string_view& rest) {
    const uint32_t first = *takeUnit(rest);
    if (!isHighSurrogate(first)) return appendUTF8(text, isLowSurrogate(first) ? replacement : first);
    std::string_view behind = rest;
    const auto second = takeUnit(behind);
    if (!second || !isLowSurrogate(*second)) return appendUTF8(text, replacement);
    rest = behind;
    appendUTF8(text, 0x10000 + ((first - 0xD800) << 10U) + (*second - 0xDC00));
}

std::string unescaped(std::string_view text) {
    constexpr std::string_view names = "\\/\"nrtfb";
    constexpr std::string_view meanings = "\\/\"\n\r\t\f\b";
    std::string plain;
    while (!text.empty()) {
        std::string_view behind = text;
        if (takeUnit(behind)) {
            appendUnits(plain, text);
            continue;
        }
        const auto name = text.size() > 1 && text.front() == '\\' ? names.find(text[1]) : std::string::npos;
        const bool isEscape = name != std::string::npos;
        plain += isEscape ? meanings[name] : text.front();
        text.remove_prefix(isEscape ? 2 : 1);
    }
    return plain;
}

std::optional<std::string> scannedValue(std::string_view key, std::string_view text) {
    const std::string quoted = '"' + std::string(key) + '"';
    const auto found = text.find(quoted);
    if (found == std::string_view::npos) return std::nullopt;
    const auto colon = text.find(':', found + quoted.size());
    if (colon == std::string_view::npos) return std::nullopt;
    text.remove_prefix(colon + 1);
    std::string_view value = trimmed(text.substr(0, text.find_first_of(",}")));
    if (!value.starts_with('"')) return std::string(value);
    value.remove_prefix(1);
    if (value.ends_with('"')) value.remove_suffix(1);
    return unescaped(value);
}

}  // namespace

StoreAnswer storeAnswerFromData(const std::string& data, bool hasParser) {
    if (!hasParser) return {data, nullptr};
    const json answer = parsedJSON(data, deepestNesting);
    if (answer.is_discarded()) {
        return {{}, std::make_shared<NSError>("NSCocoaErrorDomain", 3840, "The store's answer is no JSON")};
    }
    StoreRecord record;
    if (!answer.is_object() || !answer.contains("results")) return {record, nullptr};
    const json& results = answer["results"];
    if (!results.is_array() || results.empty() || !results.back().is_object()) return {record, nullptr};
    for (const auto& [key, value] : results.back().items())
        if (auto text = textOf(value)) record.emplace(key, std::move(*text));
    return {std::move(record), nullptr};
}

std::optional<std::string> valueForKey(std::string_view key, const StoreJSON& json) {
    if (const auto* text = std::get_if<std::string>(&json)) return scannedValue(key, *text);
    const auto& values = std::get<StoreRecord>(json);
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}
