// What is remembered between runs, and whether it is time to ask.
// The rules' order decides which reason is logged.
#include <algorithm>
#include <cinttypes>
#include <limits>

#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_string.h"
#include "platform/foundation/ns_user_defaults.h"
#include "rating/irate.h"
#include "rating/irate_keys.h"

namespace {

constexpr double secondsInAWeek = 604800;

NSUserDefaults& defaults() {
    return NSUserDefaults::standardUserDefaults();
}

uint64_t countForKey(const char* key) {
    return static_cast<uint64_t>(std::max<int64_t>(defaults().integerForKey(key), 0));
}

void setCount(uint64_t count, const char* key) {
    constexpr uint64_t most = std::numeric_limits<int64_t>::max();
    defaults().setInteger(static_cast<int64_t>(std::min(count, most)), key);
    defaults().synchronize();
}

void setDate(const std::optional<NSDate>& date, const char* key) {
    date ? defaults().setDate(*date, key) : defaults().removeObjectForKey(key);
    defaults().synchronize();
}

/// For YES the version, for NO nothing.
void setVersion(bool answered, const std::string& version, const char* key) {
    answered ? defaults().setString(version, key) : defaults().removeObjectForKey(key);
    defaults().synchronize();
}

}  // namespace

std::optional<NSDate> iRate::firstUsed() const {
    return defaults().dateForKey(iRateFirstUsedKey);
}

void iRate::setFirstUsed(std::optional<NSDate> date) {
    setDate(date, iRateFirstUsedKey);
}

std::optional<NSDate> iRate::lastReminded() const {
    return defaults().dateForKey(iRateLastRemindedKey);
}

void iRate::setLastReminded(std::optional<NSDate> date) {
    setDate(date, iRateLastRemindedKey);
}

uint64_t iRate::usesCount() const {
    return countForKey(iRateUseCountKey);
}

void iRate::setUsesCount(uint64_t count) {
    setCount(count, iRateUseCountKey);
}

uint64_t iRate::eventCount() const {
    return countForKey(iRateEventCountKey);
}

void iRate::setEventCount(uint64_t count) {
    setCount(count, iRateEventCountKey);
}

bool iRate::ratedVersion(const std::string& version) const {
    return defaults().hasKey(iRateRatedVersionKey) &&
           defaults().stringForKey(iRateRatedVersionKey) == version;
}

bool iRate::ratedAnyVersion() const {
    return !defaults().stringForKey(iRateRatedVersionKey).empty();
}

void iRate::setRatedThisVersion(bool rated) {
    setVersion(rated, applicationVersion, iRateRatedVersionKey);
}

bool iRate::declinedThisVersion() const {
    return defaults().hasKey(iRateDeclinedVersionKey) &&
           defaults().stringForKey(iRateDeclinedVersionKey) == applicationVersion;
}

bool iRate::declinedAnyVersion() const {
    return !defaults().stringForKey(iRateDeclinedVersionKey).empty();
}

void iRate::setDeclinedThisVersion(bool declined) {
    setVersion(declined, applicationVersion, iRateDeclinedVersionKey);
}

double iRate::secondsSinceFirstUse() const {
    const auto first = firstUsed();
    return first ? NSDate::date().timeIntervalSinceDate(*first) : 0;
}

float iRate::usesPerWeek() const {
    return static_cast<float>(static_cast<double>(usesCount()) / (secondsSinceFirstUse() / secondsInAWeek));
}

bool iRate::shouldPromptForRating() const {
    if (previewMode) {
        NSLog("iRate preview mode is enabled - make sure you disable this for release");
        return true;
    }
    const std::string reason = reasonNotToPrompt();
    if (!reason.empty() && verboseLogging)
        NSLog("iRate did not prompt for rating because %s", reason.c_str());
    return reason.empty();
}

/// Empty if it is time to ask.
std::string iRate::reasonNotToPrompt() const {
    if (ratedThisVersion()) return "the user has already rated this version";
    if (ratedAnyVersion() && !promptForNewVersionIfUserRated)
        return "the user has already rated this app, and promptForNewVersionIfUserRated is disabled";
    if (declinedAnyVersion()) return "the user has declined to rate the app";
    if (secondsSinceFirstUse() < static_cast<double>(daysUntilPrompt) * secondsInADay)
        return NSString_stringWithFormat("the app was first used less than %g days ago",
                                         static_cast<double>(daysUntilPrompt));
    if (usesCount() < usesUntilPrompt && eventCount() < eventsUntilPrompt)
        return NSString_stringWithFormat("the app has only been used %" PRIu64 " times and only %" PRIu64
                                         " events have been logged",
                                         usesCount(), eventCount());
    if (usesPerWeek() < usesPerWeekForPrompt)
        return NSString_stringWithFormat(
            "the app has only been used %g times per week on average since it was installed",
            static_cast<double>(usesPerWeek()));
    const auto reminded = lastReminded();
    const double period = static_cast<double>(remindPeriod) * secondsInADay;
    if (reminded && NSDate::date().timeIntervalSinceDate(*reminded) < period)
        return NSString_stringWithFormat("the user last asked to be reminded less than %g days ago",
                                         static_cast<double>(remindPeriod));
    return "";
}

void iRate::promptIfAllCriteriaMet() {
    if (shouldPromptForRating()) promptIfNetworkAvailable();
}

void iRate::promptIfNetworkAvailable() {
    if (checkingForPrompt || checkingForAppStoreID || !store.isConfigured()) return;
    checkingForPrompt = true;
    checkForConnectivityInBackground();
}
