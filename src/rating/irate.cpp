// The life of the rating request: what it starts with, launches, returns from the background, events.
// After an update the count goes on for who has not rated yet, and starts anew for who has.
#include "rating/irate.h"

#include "platform/foundation/ascii_text.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_locale.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_notification_center.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/ui/ui_application.h"
#include "rating/irate_keys.h"

namespace {

std::shared_ptr<iRate>& sharedSlot() {
    static std::shared_ptr<iRate> shared;
    return shared;
}

/// Grows with each end of the app: what one run queued is not for the next.
int& presentRun() {
    static int run = 0;
    return run;
}

/// The store's name for a country of the machine.
std::string storeCountry(const std::string& country) {
    if (country == "150") return "eu";
    // Pairs of letters are taken out; what is no sequence of them leaves something.
    std::string left;
    for (std::size_t at = 0; at < country.size();) {
        if (at + 1 < country.size() && isASCIILetter(country[at]) && isASCIILetter(country[at + 1])) {
            at += 2;
        } else {
            left += country[at++];
        }
    }
    if (country.empty() || !left.empty()) return "us";
    return country == "GI" ? "GB" : country;
}

std::string infoOr(const char* key, const char* otherwise) {
    const NSBundle& bundle = NSBundle::mainBundle();
    const std::string value = bundle.objectForInfoDictionaryKey(key);
    return value.empty() ? bundle.objectForInfoDictionaryKey(otherwise) : value;
}

}  // namespace

void iRate::load() {
    DispatchQueue::mainQueue().async([run = presentRun()] {
        if (run == presentRun()) sharedInstance();
    });
}

std::shared_ptr<iRate> iRate::sharedInstance() {
    auto& shared = sharedSlot();
    if (!shared) shared = init();
    return shared;
}

void iRate::releaseSharedInstance() {
    ++presentRun();
    sharedSlot() = nullptr;
}

std::shared_ptr<iRate> iRate::init() {
    std::shared_ptr<iRate> made(new iRate);
    made->begin();
    return made;
}

iRate::iRate()
    : appStoreCountry(storeCountry(NSLocale::currentLocale().countryCode)),
      applicationVersion(infoOr("CFBundleShortVersionString", "CFBundleVersion")),
      applicationName(infoOr("CFBundleDisplayName", "CFBundleName")),
      applicationBundleID(NSBundle::mainBundle().objectForInfoDictionaryKey("CFBundleIdentifier")) {}

void iRate::begin() {
    NSNotificationCenter::defaultCenter().addObserver(
        weak_from_this(), UIApplicationWillEnterForegroundNotification, nullptr,
        [this](const NSNotification&) { applicationWillEnterForeground(); });
    DispatchQueue::mainQueue().async([life = weak_from_this()] {
        if (const auto self = life.lock()) self->applicationLaunched();
    });
}

bool iRate::isFirstLaunchOfVersion() const {
    return !firstUsed() ||
           NSUserDefaults::standardUserDefaults().stringForKey(iRateLastVersionUsedKey) != applicationVersion;
}

void iRate::startCounting() {
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    if (verboseLogging && defaults.hasKey(iRateFirstUsedKey) && !firstUsed())
        NSLog("iRate cannot read the date of the first use, and begins to count anew");
    defaults.setDate(NSDate::date(), iRateFirstUsedKey);
    defaults.setInteger(0, iRateUseCountKey);
    defaults.setInteger(0, iRateEventCountKey);
    defaults.removeObjectForKey(iRateLastRemindedKey);
    defaults.synchronize();
}

void iRate::applicationLaunched() {
    if (isFirstLaunchOfVersion()) {
        NSUserDefaults::standardUserDefaults().setString(applicationVersion, iRateLastVersionUsedKey);
        if (firstUsed() && !ratedAnyVersion()) {
            // Who was about to be asked is asked a day after the update.
            const double counted = static_cast<double>(daysUntilPrompt - 1) * secondsInADay;
            if (secondsSinceFirstUse() > counted)
                setFirstUsed(NSDate::date().dateByAddingTimeInterval(-counted));
        } else {
            startCounting();
        }
        tell(&iRateDelegate::iRateDidDetectAppUpdate, "iRateDidDetectAppUpdate");
    }
    incrementUseCount();
    checkForConnectivityInBackground();
    if (promptAtLaunch) promptIfAllCriteriaMet();
}

void iRate::applicationWillEnterForeground() {
    const UIApplication* application = UIApplication::sharedApplication();
    if (!application || application->applicationState() != UIApplicationState::background) return;
    incrementUseCount();
    checkForConnectivityInBackground();
    if (promptAtLaunch) promptIfAllCriteriaMet();
}

void iRate::incrementUseCount() {
    setUsesCount(usesCount() + 1);
}

void iRate::incrementEventCount() {
    setEventCount(eventCount() + 1);
}

void iRate::logEvent(bool deferPrompt) {
    incrementEventCount();
    if (!deferPrompt) promptIfAllCriteriaMet();
}

/// The callback and the notification of the same name.
void iRate::tell(void (iRateDelegate::*callback)(), const char* notification) {
    if (const auto told = delegate.lock()) (told.get()->*callback)();
    NSNotificationCenter::defaultCenter().postNotificationName(notification);
}

bool iRate::ask(bool (iRateDelegate::*question)()) const {
    const auto asked = delegate.lock();
    return !asked || (asked.get()->*question)();
}

void iRate::tellOfFailure(const NSErrorRef& error) {
    if (const auto told = delegate.lock()) told->iRateCouldNotConnectToAppStore(error);
    NSNotificationCenter::defaultCenter().postNotificationName("iRateCouldNotConnectToAppStore", error.get());
}
