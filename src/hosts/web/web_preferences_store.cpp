// Reading and writing localStorage, every call of which may throw.
// Setting an item replaces it wholly or not at all.
#include "hosts/web/web_preferences_store.h"

#include <emscripten/emscripten.h>

// clang-format off
EM_JS(int, zentaroStoredSize, (const char* key), {
    try {
        const text = localStorage.getItem(UTF8ToString(key));
        return text === null ? -1 : lengthBytesUTF8(text);
    } catch (refused) {
        return -1;
    }
});
EM_JS(void, zentaroReadStored, (const char* key, char* to, int capacity), {
    try {
        stringToUTF8(localStorage.getItem(UTF8ToString(key)) || "", to, capacity);
    } catch (refused) {
        HEAPU8[to] = 0;
    }
});
EM_JS(int, zentaroStore, (const char* key, const char* text), {
    try {
        localStorage.setItem(UTF8ToString(key), UTF8ToString(text));
        return 1;
    } catch (refused) {
        return 0;
    }
});
EM_JS(int, zentaroRenameStored, (const char* from, const char* to), {
    try {
        localStorage.setItem(UTF8ToString(to), localStorage.getItem(UTF8ToString(from)));
        localStorage.removeItem(UTF8ToString(from));
        return 1;
    } catch (refused) {
        return 0;
    }
});
// clang-format on

namespace {

constexpr const char* kSettings = "zentaro.settings";
constexpr const char* kDamaged = "zentaro.settings.damaged";

}  // namespace

std::optional<std::string> WebPreferencesStore::load() {
    const int size = zentaroStoredSize(kSettings);
    if (size < 0) return std::nullopt;
    // One more for the end that JavaScript writes.
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    zentaroReadStored(kSettings, text.data(), size + 1);
    text.pop_back();
    return text;
}

bool WebPreferencesStore::save(const std::string& text) {
    const bool saved = zentaroStore(kSettings, text.c_str()) != 0;
    _error = saved ? "" : "this browser keeps nothing for this page";
    return saved;
}

std::string WebPreferencesStore::setAside() {
    if (zentaroRenameStored(kSettings, kDamaged) == 0) return "left as they are";
    return std::string("now in localStorage as ") + kDamaged;
}
