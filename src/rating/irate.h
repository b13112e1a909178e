// Counts how often the app is used, remembers what the user answered for which version, and decides when to
// ask for a rating. One class, a file for each concern: life, policy, lookup, prompt, texts.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/foundation/ns_date.h"
#include "platform/foundation/ns_error.h"
#include "rating/irate_delegate.h"
#include "rating/store_answer.h"
#include "rating/store_configuration.h"

class UIResponder;
class UIViewController;
struct HTTPAnswer;

inline constexpr const char* iRateErrorDomain = "iRateErrorDomain";
enum iRateErrorCode : int64_t {
    iRateErrorBundleIdDoesNotMatchAppStore = 1,
    iRateErrorApplicationNotFoundOnAppStore = 2,
    iRateErrorApplicationIsNotLatestVersion = 3,
    iRateErrorCouldNotOpenRatingPageURL = 4,
};

/// Main thread only. Notifications of the names of the delegate's callbacks are posted on the default centre;
/// that of a failure has the error as its object.
class iRate : public std::enable_shared_from_this<iRate> {
  public:
    /// Makes the shared instance with the next frame, which then counts this launch.
    static void load();
    static std::shared_ptr<iRate> sharedInstance();
    /// The app ended.
    static void releaseSharedInstance();

    /// One beside the shared instance; the launch is counted with the next frame.
    static std::shared_ptr<iRate> init();
    iRate(const iRate&) = delete;
    iRate& operator=(const iRate&) = delete;

    // Configuration
    std::string appStoreCountry;
    std::string applicationVersion;
    std::string applicationName;
    std::string applicationBundleID;
    bool useAllAvailableLanguages = true;
    bool promptForNewVersionIfUserRated = false;
    bool onlyPromptIfLatestVersion = true;
    bool onlyPromptIfMainWindowIsAvailable = true;  ///< kept for callers; decides nothing
    bool promptAtLaunch = true;
    uint64_t usesUntilPrompt = 10;
    uint64_t eventsUntilPrompt = 10;
    float daysUntilPrompt = 10.0F;
    float usesPerWeekForPrompt = 0.0F;
    float remindPeriod = 1.0F;  ///< days
    bool verboseLogging = false;
    /// To look at the alert while developing: asks at every start, and of a store that does not know the app
    /// again and again for its identifier.
    bool previewMode = false;
    bool useSKStoreReviewControllerIfAvailable = true;  ///< kept for callers; decides nothing
    bool useUIAlertControllerIfAvailable = true;
    /// NO to read the store's answers with the scanner.
    bool useJSONParserIfAvailable = true;
    StoreConfiguration store = StoreConfiguration::ofBuild();
    std::weak_ptr<iRateDelegate> delegate;
    /// 6014 is a game; 0 until it is known.
    uint64_t appStoreGenreID = 0;

    // What runs now
    bool checkingForPrompt = false;
    bool checkingForAppStoreID = false;
    /// On the screen, or its answer under way; null when none is.
    std::shared_ptr<UIResponder> visibleAlert() const {
        return _isAnswerDue || _isAlertVisible() ? _visibleAlert : nullptr;
    }

    // What is kept
    std::optional<NSDate> firstUsed() const;
    void setFirstUsed(std::optional<NSDate> date);
    std::optional<NSDate> lastReminded() const;
    void setLastReminded(std::optional<NSDate> date);
    uint64_t usesCount() const;
    void setUsesCount(uint64_t count);
    uint64_t eventCount() const;
    void setEventCount(uint64_t count);
    bool ratedVersion(const std::string& version) const;
    bool ratedThisVersion() const { return ratedVersion(applicationVersion); }
    bool ratedAnyVersion() const;
    void setRatedThisVersion(bool rated);
    bool declinedThisVersion() const;
    bool declinedAnyVersion() const;
    void setDeclinedThisVersion(bool declined);

    // Life
    void applicationLaunched();
    void applicationWillEnterForeground();
    void incrementUseCount();
    void incrementEventCount();
    void logEvent(bool deferPrompt);

    // Policy
    /// Since the first use; no finite number at that very moment.
    float usesPerWeek() const;
    bool shouldPromptForRating() const;
    void promptIfAllCriteriaMet();
    void promptIfNetworkAvailable();

    // Lookup
    /// The one set, else the one that the store told in an earlier run, else 0.
    uint64_t appStoreID() const;
    void setAppStoreID(uint64_t appStoreID) { _appStoreID = appStoreID; }
    void setAppStoreIDOnMainThread(uint64_t appStoreID);
    /// Asks the store without waiting. Nothing where there is no store.
    void checkForConnectivityInBackground();
    void connectionSucceeded();
    void connectionError(const NSErrorRef& error);

    // Prompt
    /// Asks, unless the question is on the screen already.
    void promptForRating() { promptForRating(true); }
    void promptForRating(bool alertOnly);
    void didDismissAlertWithButtonAtIndex(int64_t index);
    void rate();
    void declineThisVersion();
    void remindLater();
    /// Opens the page; asks the store for the app's identifier first where it is not known.
    void openRatingsPageInAppStore();
    /// The one set, else that of the store.
    std::string ratingsURL() const;
    void setRatingsURL(std::string url) { _ratingsURL = std::move(url); }

    // Texts: the one set, else the user's language's; "%@" is the app's name
    std::string messageTitle() const;
    std::string message() const;
    std::string updateMessage() const;
    std::string cancelButtonLabel() const;
    std::string rateButtonLabel() const;
    std::string remindButtonLabel() const;
    void setMessageTitle(std::string text) { _messageTitle = std::move(text); }
    void setMessage(std::string text) { _message = std::move(text); }
    void setUpdateMessage(std::string text) { _updateMessage = std::move(text); }
    /// Without a label there is no such button.
    void setCancelButtonLabel(std::string text) { _cancelButtonLabel = std::move(text); }
    void setRateButtonLabel(std::string text) { _rateButtonLabel = std::move(text); }
    void setRemindButtonLabel(std::string text) { _remindButtonLabel = std::move(text); }
    bool showCancelButton() const { return !cancelButtonLabel().empty(); }
    bool showRemindButton() const { return !remindButtonLabel().empty(); }
    std::string localizedStringForKey(const std::string& key, const std::string& value) const;

  private:
    iRate();
    void begin();
    void startCounting();
    bool isFirstLaunchOfVersion() const;
    double secondsSinceFirstUse() const;
    std::string reasonNotToPrompt() const;

    void checkForConnectivity();
    std::string lookupURL() const;
    NSErrorRef errorOfAnswer(const HTTPAnswer& answer);
    NSErrorRef errorOfRecord(const std::string& data);
    NSErrorRef errorOfKnownApp(const StoreJSON& json);
    NSErrorRef errorOfUnknownApp() const;
    void finishLookup(const NSErrorRef& error);

    void showAlert(const std::string& message);
    void showAlertView(const std::string& message);
    void showAlertController(UIViewController& presenter, const std::string& message);
    template <typename Alert>
    void setVisibleAlert(const std::shared_ptr<Alert>& alert);
    void answerAlert(int64_t index);
    void tell(void (iRateDelegate::*callback)(), const char* notification);
    void tellOfFailure(const NSErrorRef& error);
    bool ask(bool (iRateDelegate::*question)()) const;
    std::string text(const std::optional<std::string>& own, const char* key, const std::string& value) const;
    std::string named(std::string text) const;

    /// 0 until it is set or the store told it in this run.
    uint64_t _appStoreID = 0;
    std::string _ratingsURL;
    /// Until it was answered: others may take an alert away without an answer.
    std::shared_ptr<UIResponder> _visibleAlert;
    std::function<bool()> _isAlertVisible = [] { return false; };
    /// Between the tap on a button and the end of what it does.
    bool _isAnswerDue = false;
    std::optional<std::string> _messageTitle;
    std::optional<std::string> _message;
    std::optional<std::string> _updateMessage;
    std::optional<std::string> _cancelButtonLabel;
    std::optional<std::string> _rateButtonLabel;
    std::optional<std::string> _remindButtonLabel;
};
