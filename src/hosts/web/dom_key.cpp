// Named keys by table; whatever is one character long is text.
// Names of keys have two characters or more, so that the two never mix.
#include "hosts/web/dom_key.h"

#include <utility>

#include "platform/foundation/ascii_text.h"

namespace {

constexpr std::pair<std::string_view, HostKey> namedKeys[] = {
    {"Escape", HostKey::escape},    {"Enter", HostKey::returnKey},   {" ", HostKey::space},
    {"Home", HostKey::home},        {"ArrowLeft", HostKey::left},    {"ArrowRight", HostKey::right},
    {"ArrowUp", HostKey::up},       {"ArrowDown", HostKey::down},    {"F1", HostKey::f1},
    {"F11", HostKey::f11},          {"Tab", HostKey::tab},           {"Backspace", HostKey::backspace},
    {"PageUp", HostKey::pageUp},    {"PageDown", HostKey::pageDown}, {"End", HostKey::end},
    {"BrowserBack", HostKey::back},
};

}  // namespace

std::optional<HostKeyPress> keyPressFromDOM(std::string_view name, bool repeated, bool control,
                                            HostTime time) {
    for (const auto& [domName, key] : namedKeys) {
        if (name == domName) return HostKeyPress{key, "", repeated, control, time};
    }
    if (name.empty() || name.size() != utf8CharacterLength(name.front())) return std::nullopt;
    return HostKeyPress{HostKey::character, asciiLowercase(name), repeated, control, time};
}
