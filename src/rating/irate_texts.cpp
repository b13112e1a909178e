// What the alert says, in the user's language.
// The app's own strings win over those that come with the rating request.
#include <optional>
#include <string_view>
#include <utility>

#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_locale.h"
#include "rating/irate.h"

namespace {

constexpr uint64_t genreOfGames = 6014;
constexpr const char* bundlePath = "iRate.bundle";

NSBundle makeBundle(const std::string& language) {
    NSBundle bundle = NSBundle::bundleWithPath(bundlePath).value_or(NSBundle::mainBundle());
    if (language.empty()) return bundle;
    const std::string shorter = language.substr(0, language.find('-'));
    const std::string& found = bundle.hasLocalization(language) ? language : shorter;
    if (!bundle.hasLocalization(found)) return bundle;
    return NSBundle::bundleWithPath(bundlePath + ("/" + found + ".lproj")).value_or(NSBundle::mainBundle());
}

/// The strings in a language of the user's, also one that the app itself does not speak; without a language,
/// in one that the app speaks. Made anew when the language changes.
const NSBundle& stringsIn(const std::string& language) {
    static std::optional<std::pair<std::string, NSBundle>> made;
    if (!made || made->first != language) made.emplace(language, makeBundle(language));
    return made->second;
}

std::string firstLanguage() {
    const auto& preferred = NSLocale::currentLocale().preferredLanguages;
    return preferred.empty() ? "en" : preferred.front();
}

}  // namespace

std::string iRate::localizedStringForKey(const std::string& key, const std::string& value) const {
    const NSBundle& bundle = stringsIn(useAllAvailableLanguages ? firstLanguage() : "");
    return NSBundle::mainBundle().localizedStringForKey(key, bundle.localizedStringForKey(key, value));
}

std::string iRate::text(const std::optional<std::string>& own, const char* key,
                        const std::string& value) const {
    return own ? *own : localizedStringForKey(key, value);
}

/// With the app's name in every "%@".
std::string iRate::named(std::string text) const {
    constexpr std::string_view placeholder = "%@";
    for (auto at = text.find(placeholder); at != std::string::npos;
         at = text.find(placeholder, at + applicationName.size()))
        text.replace(at, placeholder.size(), applicationName);
    return text;
}

std::string iRate::messageTitle() const {
    return named(text(_messageTitle, "iRateMessageTitle", "Rate %@"));
}

std::string iRate::message() const {
    const bool isGame = appStoreGenreID == genreOfGames;
    return named(text(_message, isGame ? "iRateGameMessage" : "iRateAppMessage",
                      std::string("If you enjoy ") + (isGame ? "playing" : "using") +
                          " %@, would you mind taking a moment to rate it? It won’t take more than a minute. "
                          "Thanks for your support!"));
}

std::string iRate::updateMessage() const {
    return named(text(_updateMessage, "iRateUpdateMessage", message()));
}

std::string iRate::cancelButtonLabel() const {
    return text(_cancelButtonLabel, "iRateCancelButton", "No, Thanks");
}

std::string iRate::rateButtonLabel() const {
    return text(_rateButtonLabel, "iRateRateButton", "Rate It Now");
}

std::string iRate::remindButtonLabel() const {
    return text(_remindButtonLabel, "iRateRemindButton", "Remind Me Later");
}
