// Holds the locale of this run.
// Nothing below the hosts asks the machine.
#include "platform/foundation/ns_locale.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/foundation/ascii_text.h"

namespace {

NSLocale& slot() {
    static NSLocale locale;
    return locale;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The part in front of the separator, which goes with it.
std::string_view takePart(std::string_view& text, char separator) {
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

/// "PT" of "pt-PT", "419" of "es-419", none of "zh-Hant".
std::string regionOf(std::string_view tag) {
    takePart(tag, '-');
    while (!tag.empty()) {
        const std::string_view part = takePart(tag, '-');
        // Extensions follow, which name no region.
        if (part.size() == 1) break;
        const bool isCode = part.size() == 2 && std::all_of(part.begin(), part.end(), isASCIILetter);
        const bool isNumber = part.size() == 3 && std::all_of(part.begin(), part.end(), isDigit);
        if (isCode || isNumber) return std::string(part);
    }
    return "";
}

}  // namespace

const NSLocale& NSLocale::currentLocale() {
    return slot();
}

void NSLocale::setCurrentLocale(NSLocale locale) {
    slot() = std::move(locale);
}

NSLocale localeOfLanguages(const std::string& lines) {
    NSLocale locale;
    for (std::string_view rest = lines; !rest.empty();) {
        const std::string_view tag = takePart(rest, '\n');
        if (tag.empty()) continue;
        if (locale.countryCode.empty()) locale.countryCode = regionOf(tag);
        locale.preferredLanguages.emplace_back(tag);
    }
    return locale;
}
