// Named keys by table; whatever is one character long is text.
// Names of keys have two characters or more, so that the two never mix.
#include "hosts/web/dom_key.h"

#include <utility>

namespace {

constexpr std::pair<std::string_view, HostKey> namedKeys[] = {
    {"Escape", HostKey::escape}, {"Enter", HostKey::returnKey}, {" ", HostKey::space},
    {"Home", HostKey::home},     {"ArrowLeft", HostKey::left},  {"ArrowRight", HostKey::right},
    {"ArrowUp", HostKey::up},    {"ArrowDown", HostKey::down},  {"F1", HostKey::f1},
    {"F11", HostKey::f11},       {"Tab", HostKey::tab},         {"Backspace", HostKey::backspace},
};

std::size_t characterLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0xF0) return 4;
    if (byte >= 0xE0) return 3;
    return byte >= 0xC0 ? 2 : 1;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

}  // namespace

std::optional<HostKeyPress> keyPressFromDOM(std::string_view name, bool repeated, bool control,
                                            HostTime time) {
    for (const auto& [domName, key] : namedKeys) {
        if (name == domName) return HostKeyPress{key, "", repeated, control, time};
    }
    if (name.empty() || name.size() != characterLength(name.front())) return std::nullopt;
    return HostKeyPress{HostKey::character, lowerCase(name), repeated, control, time};
}
