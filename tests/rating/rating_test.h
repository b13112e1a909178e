// The rating request in an app that draws nothing, with a clock, a store and settings in the tests' hands.
// Days pass at once; the store answers when it is told to.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/headless/scripted_window.h"
#include "hosts/native/memory_preferences_store.h"
#include "hosts/native/native_services.h"
#include "platform/foundation/cf_time.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_locale.h"
#include "platform/foundation/ns_notification_center.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/host/http_client.h"
#include "platform/ui/sk_store_review_controller.h"
#include "platform/ui/ui_alert_controller.h"
#include "platform/ui/ui_application.h"
#include "rating/irate.h"
#include "tests/support/log_capture.h"

inline constexpr double day = 86400;
/// What the store says of the app, as it is.
inline constexpr const char* recordOfApp =
    R"({"resultCount": 1, "results": [{"bundleId": "example.Zentaro", "trackId": 4711, "version": "2.0",
        "primaryGenreId": 6002}]})";

class ScriptedStore : public HTTPClient {
  public:
    void get(const HTTPRequest& request, Handler handler) override {
        requests.push_back(request);
        _waiting.push_back(std::move(handler));
    }
    /// All requests that wait.
    void answer(const HTTPAnswer& answer) {
        for (const Handler& handler : std::exchange(_waiting, {}))
            handler(answer);
    }
    void answer(const std::string& data) { answer({200, data, nullptr}); }

    std::vector<HTTPRequest> requests;

  private:
    std::vector<Handler> _waiting;
};

/// Writes down what it is told; answers the two questions with `agrees`.
class NotingDelegate : public iRateDelegate {
  public:
    void iRateCouldNotConnectToAppStore(const NSErrorRef& error) override {
        calls.push_back(error ? "failed " + error->domain() + " " + std::to_string(error->code()) : "failed");
    }
    void iRateDidDetectAppUpdate() override { calls.emplace_back("update"); }
    bool iRateShouldPromptForRating() override { return agrees; }
    void iRateDidPromptForRating() override { calls.emplace_back("prompted"); }
    void iRateUserDidAttemptToRateApp() override { calls.emplace_back("rates"); }
    void iRateUserDidDeclineToRateApp() override { calls.emplace_back("declined"); }
    void iRateUserDidRequestReminderToRateApp() override { calls.emplace_back("later"); }
    bool iRateShouldOpenAppStore() override { return agrees; }
    void iRateDidOpenAppStore() override { calls.emplace_back("opened"); }

    std::vector<std::string> calls;
    bool agrees = true;
};

class RatingTest : public testing::Test, public UIApplicationDelegate {
  protected:
    RatingTest() {
        CFAbsoluteTimeSetClock([this] { return now; });
        setVersion("2.0");
        NSLocale::setCurrentLocale({"DE", {"de-DE", "en"}});
        setSharedHTTPClient(store);
        _window->setRootViewController(root);
        _app->launch();
    }
    ~RatingTest() override {
        iRate::releaseSharedInstance();
        rating = nullptr;
        pass();
        SKStoreReviewController::setRequest({});
        setSharedHTTPClient(nullptr);
        NSLocale::setCurrentLocale({});
        NSBundle::mainBundle().setInfoDictionary({});
        CFAbsoluteTimeSetClock({});
    }

    bool applicationDidFinishLaunching() override { return true; }
    std::shared_ptr<UIWindow> window() const override { return _window; }

    static void setVersion(const std::string& version) {
        NSBundle::mainBundle().setInfoDictionary({{"CFBundleDisplayName", "Zentaro"},
                                                  {"CFBundleIdentifier", "example.zentaro"},
                                                  {"CFBundleShortVersionString", version}});
    }
    /// A start of the app: the one before ended. Nothing is asked of the store unless it says so.
    void start(const std::string& version = "2.0") {
        setVersion(version);
        rating = nullptr;
        NSUserDefaults::setStandardStore(settings);
        rating = iRate::init();
        rating->store = {"store.test", "https", "itms-apps"};
        rating->delegate = told;
        rating->verboseLogging = true;
        pass();
    }
    /// Eleven days and ten uses old, the eleventh beginning.
    void startOldEnough() {
        keep("iRateFirstUsed", now - 11 * day);
        keep("iRateUseCount", int64_t{10});
        keep("iRateLastVersionUsed", std::string("2.0"));
        start();
    }
    static void keep(const char* key, const NSUserDefaults::Value& value) {
        NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
        if (const auto* number = std::get_if<int64_t>(&value)) defaults.setInteger(*number, key);
        if (const auto* number = std::get_if<double>(&value)) defaults.setDouble(*number, key);
        if (const auto* text = std::get_if<std::string>(&value)) defaults.setString(*text, key);
        defaults.synchronize();
    }
    /// What was queued runs, and what that queued.
    void pass() {
        for (int i = 0; i < 4; ++i)
            _app->frame(_time += 0.5);
    }
    void goAwayAndReturn() {
        _app->handle(HostVisibility{false});
        _app->handle(HostVisibility{true});
    }
    void loseAndGainFocus() {
        _app->handle(HostLifecycle::willResignActive);
        _app->handle(HostLifecycle::didBecomeActive);
    }
    std::shared_ptr<UIAlertController> alert() const {
        return std::dynamic_pointer_cast<UIAlertController>(_app->topViewController());
    }
    std::vector<std::string> labels() const {
        std::vector<std::string> titles;
        for (const UIAlertAction& action : alert()->actions())
            titles.push_back(action.title);
        return titles;
    }
    /// Presses a button of the alert.
    void choose(std::size_t index) {
        for (std::size_t i = 0; i <= index; ++i)
            press(HostKey::down);
        press(HostKey::returnKey);
        pass();
    }
    void press(HostKey key) { _app->handle(HostKeyPress{key, {}, false, false, 0}); }
    bool said(const std::string& line) const { return std::ranges::find(log.lines, line) != log.lines.end(); }

    LogCapture log;
    double now = 700000000;
    std::shared_ptr<MemoryPreferencesStore> settings = std::make_shared<MemoryPreferencesStore>();
    NativeServices services{settings, ZENTARO_RESOURCES_DIR};
    std::shared_ptr<ScriptedStore> store = std::make_shared<ScriptedStore>();
    std::shared_ptr<NotingDelegate> told = std::make_shared<NotingDelegate>();
    ScriptedWindow system;
    std::shared_ptr<UIViewController> root = std::make_shared<UIViewController>();
    std::shared_ptr<iRate> rating;

  private:
    class Unseen : public FramePresenter {
      public:
        void presentFrame(UIWindow&, double, bool) override {}
        void contextLost(UIWindow&) override {}
    };

    double _time = 0;
    std::shared_ptr<UIWindow> _window = std::make_shared<UIWindow>();
    /// This object itself, which the test runner owns.
    std::unique_ptr<UIApplication> _app =
        std::make_unique<UIApplication>(std::shared_ptr<UIApplicationDelegate>(std::shared_ptr<void>(), this),
                                        &system, std::make_unique<Unseen>());
};
