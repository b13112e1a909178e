// Asks the user, and does what the user answers.
// The system's own request comes first where there is one; it tells nobody what the answer was.
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_url.h"
#include "platform/ui/sk_store_review_controller.h"
#include "platform/ui/ui_alert_controller.h"
#include "platform/ui/ui_alert_view.h"
#include "platform/ui/ui_application.h"
#include "rating/irate.h"

template <typename Alert>
void iRate::setVisibleAlert(const std::shared_ptr<Alert>& alert) {
    _visibleAlert = alert;
    _isAlertVisible = [shown = std::weak_ptr<Alert>(alert)] {
        const auto held = shown.lock();
        return held && held->isVisible();
    };
}

void iRate::promptForRating(bool alertOnly) {
    if (visibleAlert()) return;
    if (!alertOnly && SKStoreReviewController::isAvailable()) {
        remindLater();
        SKStoreReviewController::requestReview();
    } else {
        showAlert(ratedAnyVersion() ? updateMessage() : message());
    }
    tell(&iRateDelegate::iRateDidPromptForRating, "iRateDidPromptForRating");
}

void iRate::showAlert(const std::string& message) {
    const UIApplication* application = UIApplication::sharedApplication();
    const auto presenter = application ? application->topViewController() : nullptr;
    if (presenter && useUIAlertControllerIfAvailable) return showAlertController(*presenter, message);
    showAlertView(message);
}

void iRate::showAlertController(UIViewController& presenter, const std::string& message) {
    const auto alert = std::make_shared<UIAlertController>(messageTitle(), message);
    const auto add = [&](const std::string& label, UIAlertActionStyle style, int64_t index) {
        alert->addAction({label, style, [life = weak_from_this(), index] {
                              if (const auto self = life.lock())
                                  self->didDismissAlertWithButtonAtIndex(index);
                          }});
    };
    add(rateButtonLabel(), UIAlertActionStyle::plain, 0);
    if (showCancelButton()) add(cancelButtonLabel(), UIAlertActionStyle::cancel, 1);
    if (showRemindButton()) add(remindButtonLabel(), UIAlertActionStyle::plain, showCancelButton() ? 2 : 1);
    setVisibleAlert(alert);
    presenter.presentViewController(alert, true);
}

void iRate::showAlertView(const std::string& message) {
    const auto alert =
        std::make_shared<UIAlertView>(messageTitle(), message, [life = weak_from_this()](int64_t index) {
            if (const auto self = life.lock()) self->didDismissAlertWithButtonAtIndex(index);
        });
    alert->addButtonWithTitle(rateButtonLabel());
    if (showCancelButton()) alert->setCancelButtonIndex(alert->addButtonWithTitle(cancelButtonLabel()));
    if (showRemindButton()) alert->addButtonWithTitle(remindButtonLabel());
    setVisibleAlert(alert);
    alert->show();
}

void iRate::didDismissAlertWithButtonAtIndex(int64_t index) {
    _isAnswerDue = true;
    DispatchQueue::mainQueue().async([life = weak_from_this(), index] {
        if (const auto self = life.lock()) self->answerAlert(index);
    });
}

void iRate::answerAlert(int64_t index) {
    const int64_t remindIndex = !showRemindButton() ? 0 : showCancelButton() ? 2 : 1;
    if (index == 0) {
        rate();
    } else if (index == 1 && showCancelButton()) {
        declineThisVersion();
    } else if (index == remindIndex) {
        remindLater();
    }
    _visibleAlert = nullptr;
    _isAnswerDue = false;
}

void iRate::rate() {
    setRatedThisVersion(true);
    tell(&iRateDelegate::iRateUserDidAttemptToRateApp, "iRateUserDidAttemptToRateApp");
    if (ask(&iRateDelegate::iRateShouldOpenAppStore)) openRatingsPageInAppStore();
}

void iRate::declineThisVersion() {
    setDeclinedThisVersion(true);
    tell(&iRateDelegate::iRateUserDidDeclineToRateApp, "iRateUserDidDeclineToRateApp");
}

void iRate::remindLater() {
    setLastReminded(NSDate::date());
    tell(&iRateDelegate::iRateUserDidRequestReminderToRateApp, "iRateUserDidRequestReminderToRateApp");
}

std::string iRate::ratingsURL() const {
    if (!_ratingsURL.empty()) return _ratingsURL;
    if (appStoreID() == 0 && verboseLogging)
        NSLog(
            "iRate could not find the App Store ID for this application. If the application is not intended "
            "for App Store release then you must specify a custom ratingsURL.");
    return store.ratingsScheme + "://" + store.host + "/app/id" + std::to_string(appStoreID()) +
           "?action=write-review";
}

void iRate::openRatingsPageInAppStore() {
    if (_ratingsURL.empty() && !store.isConfigured()) {
        if (verboseLogging) NSLog("iRate has no store whose ratings page it could open");
        return;
    }
    if (_ratingsURL.empty() && appStoreID() == 0) {
        checkingForAppStoreID = true;
        if (!checkingForPrompt) checkForConnectivityInBackground();
        return;
    }
    const std::string url = ratingsURL();
    if (verboseLogging)
        NSLog("iRate will open the App Store ratings page using the following URL: %s", url.c_str());
    const auto opened = [life = weak_from_this(), url](bool success) {
        const auto self = life.lock();
        if (!self) return;
        if (success) return self->tell(&iRateDelegate::iRateDidOpenAppStore, "iRateDidOpenAppStore");
        const auto error =
            std::make_shared<NSError>(iRateErrorDomain, iRateErrorCouldNotOpenRatingPageURL,
                                      "iRate was unable to open the specified ratings URL: " + url);
        NSLog("%s", error->description().c_str());
        self->tellOfFailure(error);
    };
    UIApplication* application = UIApplication::sharedApplication();
    const auto address = NSURL::URLWithString(url);
    if (application && address) {
        application->openURL(*address, opened);
    } else {
        opened(false);
    }
}
