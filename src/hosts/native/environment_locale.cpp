// Names of locales become language tags.
// LANGUAGE is a list, which counts only where a locale is set at all.
#include "hosts/native/environment_locale.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "platform/foundation/ascii_text.h"

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string localeName() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (std::string value = variable(name); !value.empty()) return value;
    return "";
}

}  // namespace

std::string languageTag(const std::string& localeName) {
    std::string tag = localeName.substr(0, localeName.find_first_of(".@"));
    std::replace(tag.begin(), tag.end(), '_', '-');
    const std::string language = tag.substr(0, tag.find('-'));
    const bool isLanguage = (language.size() == 2 || language.size() == 3) &&
                            std::all_of(language.begin(), language.end(), isASCIILetter);
    return isLanguage ? tag : "";
}

NSLocale localeOfEnvironment() {
    const std::string own = languageTag(localeName());
    if (own.empty()) return {};
    std::string lines;
    std::istringstream list(variable("LANGUAGE"));
    for (std::string name; std::getline(list, name, ':');)
        lines += languageTag(name) + "\n";
    NSLocale locale = localeOfLanguages(lines + own);
    // Languages may be those of other countries.
    locale.countryCode = localeOfLanguages(own).countryCode;
    return locale;
}
