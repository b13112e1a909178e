// What the store knows of the app: that it is this one, its identifier, its genre, its newest version.
// Everything is decided on the main thread; only the waiting for the store happens elsewhere.
#include <algorithm>
#include <charconv>

#include "platform/foundation/ascii_text.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_string.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/host/http_client.h"
#include "rating/irate.h"
#include "rating/irate_keys.h"
#include "rating/store_answer.h"

namespace {

constexpr double timeout = 60;
constexpr std::size_t largestAnswer = std::size_t{1} << 20U;
constexpr int succeeded = 200;
constexpr int firstFailure = 400;

NSErrorRef errorOf(iRateErrorCode code, std::string description) {
    return std::make_shared<NSError>(iRateErrorDomain, code, std::move(description));
}

/// The number that the text begins with; 0 without one, and beyond what settings keep.
uint64_t integerValue(const std::optional<std::string>& text) {
    int64_t value = 0;
    if (text) std::from_chars(text->data(), text->data() + text->size(), value);
    return static_cast<uint64_t>(std::max<int64_t>(value, 0));
}

/// For logs and messages: whoever answers in the store's place writes what they like.
std::string printable(std::string text) {
    constexpr std::size_t longest = 200;
    if (text.size() > longest) {
        // Not in the middle of a character.
        std::size_t end = longest;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
            --end;
        text.resize(end);
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; }, '?');
    return text;
}

}  // namespace

uint64_t iRate::appStoreID() const {
    if (_appStoreID != 0) return _appStoreID;
    const int64_t kept = NSUserDefaults::standardUserDefaults().integerForKey(iRateAppStoreIDKey);
    return kept > 0 ? static_cast<uint64_t>(kept) : 0;
}

void iRate::setAppStoreIDOnMainThread(uint64_t appStoreID) {
    _appStoreID = appStoreID;
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setInteger(static_cast<int64_t>(appStoreID), iRateAppStoreIDKey);
    defaults.synchronize();
}

std::string iRate::lookupURL() const {
    const std::string address = store.lookupScheme + "://" + store.host + "/" + appStoreCountry + "/lookup";
    return _appStoreID != 0 ? address + "?id=" + std::to_string(_appStoreID)
                            : address + "?bundleId=" + applicationBundleID;
}

void iRate::checkForConnectivityInBackground() {
    if (!store.isConfigured()) return;
    if (sharedHTTPClient()) return checkForConnectivity();
    DispatchQueue::mainQueue().async([life = weak_from_this()] {
        const auto error = std::make_shared<NSError>(NSURLErrorDomain, NSURLErrorNotConnectedToInternet,
                                                     "This machine has no network");
        if (const auto self = life.lock()) self->finishLookup(error);
    });
}

void iRate::checkForConnectivity() {
    const std::string url = lookupURL();
    if (verboseLogging) NSLog("iRate is checking %s to retrieve the App Store details...", url.c_str());
    sharedHTTPClient()->get({url, timeout, largestAnswer},
                            [life = weak_from_this()](const HTTPAnswer& answer) {
                                const auto self = life.lock();
                                if (self) self->finishLookup(self->errorOfAnswer(answer));
                            });
}

NSErrorRef iRate::errorOfAnswer(const HTTPAnswer& answer) {
    if (!answer.error && answer.statusCode == succeeded) return errorOfRecord(answer.data);
    if (answer.statusCode < firstFailure) return answer.error;
    return std::make_shared<NSError>("HTTPResponseErrorDomain", answer.statusCode,
                                     "The server returned a " + std::to_string(answer.statusCode) + " error");
}

NSErrorRef iRate::errorOfRecord(const std::string& data) {
    const StoreAnswer answer = storeAnswerFromData(data, useJSONParserIfAvailable);
    if (answer.error) return answer.error;
    const auto bundleID = valueForKey("bundleId", answer.json);
    if (!bundleID) return errorOfUnknownApp();
    if (equalIgnoringASCIICase(*bundleID, applicationBundleID)) return errorOfKnownApp(answer.json);
    const std::string found = printable(*bundleID);
    if (verboseLogging)
        NSLog(
            "iRate found that the application bundle ID (%s) does not match the bundle ID of the app found "
            "on iTunes (%s) with the specified App Store ID (%llu)",
            applicationBundleID.c_str(), found.c_str(), static_cast<unsigned long long>(appStoreID()));
    return errorOf(iRateErrorBundleIdDoesNotMatchAppStore,
                   "Application bundle ID does not match expected value of " + found);
}

NSErrorRef iRate::errorOfKnownApp(const StoreJSON& json) {
    if (appStoreGenreID == 0) appStoreGenreID = integerValue(valueForKey("primaryGenreId", json));
    if (_appStoreID == 0) {
        setAppStoreIDOnMainThread(integerValue(valueForKey("trackId", json)));
        if (verboseLogging)
            NSLog("iRate found the app on iTunes. The App Store ID is %llu",
                  static_cast<unsigned long long>(appStoreID()));
    }
    if (!onlyPromptIfLatestVersion || previewMode) return nullptr;
    const std::string latest = valueForKey("version", json).value_or("");
    if (NSString_compareNumeric(latest, applicationVersion) <= 0) return nullptr;
    if (verboseLogging)
        NSLog(
            "iRate found that the installed application version (%s) is not the latest version on the App "
            "Store, which is %s",
            applicationVersion.c_str(), printable(latest).c_str());
    return errorOf(iRateErrorApplicationIsNotLatestVersion,
                   "Installed app is not the latest version available");
}

NSErrorRef iRate::errorOfUnknownApp() const {
    if (_appStoreID == 0) {
        if (verboseLogging)
            NSLog(
                "iRate could not find your app on iTunes. If your app is not yet on the store or is not "
                "intended for App Store release then don't worry about this");
        return nullptr;
    }
    if (verboseLogging)
        NSLog(
            "iRate could not find this application on iTunes. If your app is not intended for App Store "
            "release then you must specify a custom ratingsURL. If this is the first release of your "
            "application then it's not a problem that it cannot be found on the store yet");
    if (previewMode) return nullptr;
    return errorOf(iRateErrorApplicationNotFoundOnAppStore,
                   "The application could not be found on the App Store.");
}

/// A store that does not know the app answers nobody: whoever waits does so until a later lookup ends
/// otherwise.
void iRate::finishLookup(const NSErrorRef& error) {
    const bool isRefusal = error && error->code() == 1 && error->domain() == "NSPOSIXErrorDomain";
    if (error && !(isRefusal && appStoreID() != 0)) return connectionError(error);
    if (appStoreID() != 0 || previewMode) connectionSucceeded();
}

void iRate::connectionSucceeded() {
    if (checkingForAppStoreID) {
        checkingForPrompt = false;
        checkingForAppStoreID = false;
        return openRatingsPageInAppStore();
    }
    if (!checkingForPrompt) return;
    checkingForPrompt = false;
    if (ask(&iRateDelegate::iRateShouldPromptForRating)) return promptForRating(false);
    if (verboseLogging)
        NSLog(
            "iRate did not display the rating prompt because the iRateShouldPromptForRating delegate method "
            "returned NO");
}

void iRate::connectionError(const NSErrorRef& error) {
    if (!checkingForPrompt && !checkingForAppStoreID) return;
    checkingForPrompt = false;
    checkingForAppStoreID = false;
    if (error) {
        NSLog("iRate rating process failed because: %s", error->localizedDescription().c_str());
    } else {
        NSLog("iRate rating process failed because an unknown error occurred");
    }
    tellOfFailure(error);
}
