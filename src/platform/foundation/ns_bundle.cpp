// Names in front of the host's reader, and strings in the user's language.
// Callers say what is missing themselves; they know what it was for.
#include "platform/foundation/ns_bundle.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "platform/foundation/ns_locale.h"

namespace {

constexpr const char* tableName = "Localizable.strings.json";
constexpr const char* developmentLanguage = "en";

std::string folderOf(const std::string& language) {
    return language + ".lproj/";
}

/// Chinese is written in two ways, which tags with a region alone do not name; empty for other languages.
std::string writtenChinese(const std::string& language) {
    if (language == "zh-TW" || language == "zh-HK" || language == "zh-MO") return "zh-Hant";
    return language == "zh" || language.starts_with("zh-") ? "zh-Hans" : "";
}

}  // namespace

NSBundle& NSBundle::mainBundle() {
    static NSBundle bundle;
    return bundle;
}

std::optional<NSBundle> NSBundle::bundleWithPath(const std::string& path) {
    NSBundle bundle;
    bundle._folder = path + "/";
    bundle._reader = mainBundle()._reader;
    if (!bundle.readTable("") && !bundle.hasLocalization(developmentLanguage)) return std::nullopt;
    return bundle;
}

void NSBundle::setReader(Reader reader) {
    _reader = std::move(reader);
    _table = nullptr;
}

std::optional<std::string> NSBundle::stringForResource(const std::string& name,
                                                       const std::string& type) const {
    if (!_reader) return std::nullopt;
    return _reader(_folder + (type.empty() ? name : name + "." + type));
}

std::string NSBundle::objectForInfoDictionaryKey(std::string_view key) const {
    const auto found = _info.find(key);
    return found == _info.end() ? "" : found->second;
}

bool NSBundle::hasLocalization(const std::string& language) const {
    return !language.empty() && stringForResource(folderOf(language) + tableName, "").has_value();
}

std::optional<NSBundle::StringsTable> NSBundle::readTable(const std::string& folder) const {
    const auto text = stringForResource(folder + tableName, "");
    if (!text) return std::nullopt;
    StringsTable table;
    const auto json = nlohmann::json::parse(*text, nullptr, /*allow_exceptions=*/false);
    if (!json.is_object()) return table;
    for (const auto& [key, item] : json.items())
        if (item.is_string()) table.emplace(key, item.get<std::string>());
    return table;
}

/// Tags are cut from the right until there are strings for them.
std::string NSBundle::bestLocalization() const {
    for (const std::string& tag : NSLocale::currentLocale().preferredLanguages) {
        for (std::string language = tag; !language.empty();) {
            if (hasLocalization(language)) return language;
            const auto dash = language.rfind('-');
            language.resize(dash == std::string::npos ? 0 : dash);
        }
        if (auto chinese = writtenChinese(tag); hasLocalization(chinese)) return chinese;
    }
    return developmentLanguage;
}

const NSBundle::StringsTable& NSBundle::table() const {
    const auto& languages = NSLocale::currentLocale().preferredLanguages;
    if (!_table || _languages != languages) {
        _languages = languages;
        auto own = readTable("");
        if (!own) own = readTable(folderOf(bestLocalization()));
        _table = std::make_shared<const StringsTable>(std::move(own).value_or(StringsTable()));
    }
    return *_table;
}

std::string NSBundle::localizedStringForKey(const std::string& key, const std::string& value) const {
    const auto found = table().find(key);
    return found == table().end() ? value : found->second;
}
