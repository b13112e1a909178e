// The application's resource files: shaders, storyboard, icons, strings; and what the application is called.
// The host says how to read them; nothing writes them.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class NSBundle {
  public:
    /// Reads a file by its path within the bundle ("Shader.fsh", "de.lproj/Localizable.strings.json");
    /// nothing if there is none.
    using Reader = std::function<std::optional<std::string>(const std::string& file)>;
    /// Texts by their keys.
    using StringsTable = std::map<std::string, std::string, std::less<>>;

    static NSBundle& mainBundle();
    /// A folder of the main bundle that holds strings, its own or its languages'; nothing for another one.
    static std::optional<NSBundle> bundleWithPath(const std::string& path);

    /// Forgets what was read until now.
    void setReader(Reader reader);
    /// The whole resource `name.type` as UTF-8 text.
    std::optional<std::string> stringForResource(const std::string& name, const std::string& type) const;

    /// "CFBundleIdentifier" and the like; empty for one that is not known.
    std::string objectForInfoDictionaryKey(std::string_view key) const;
    void setInfoDictionary(StringsTable info) { _info = std::move(info); }

    /// Whether there are strings in a language: "pt-BR" is not "pt".
    bool hasLocalization(const std::string& language) const;
    /// The text under the key, in the first of the user's languages that there is, else in English; value
    /// where it is missing.
    std::string localizedStringForKey(const std::string& key, const std::string& value) const;

  private:
    std::optional<StringsTable> readTable(const std::string& folder) const;
    const StringsTable& table() const;
    std::string bestLocalization() const;

    std::string _folder;  ///< within the main bundle, with a slash behind it; empty for that one
    Reader _reader;
    StringsTable _info;
    /// Read when first asked for.
    mutable std::shared_ptr<const StringsTable> _table;
    /// The languages for which.
    mutable std::vector<std::string> _languages;
};
