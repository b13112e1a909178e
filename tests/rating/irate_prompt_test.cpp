// The question, its buttons, and what each answer does; the page where the app is rated.
// Buttons are pressed as a user does.
#include <gmock/gmock.h>

#include "tests/rating/rating_test.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Prompt : public RatingTest {
  protected:
    void startAsking() {
        startOldEnough();
        store->answer(recordOfApp);
        pass();
        told->calls.clear();
    }
    /// The notifications of these names go into `posted` from now on, with the code of what could not be
    /// done.
    void listen(const std::vector<std::string>& names) {
        const auto note = [this](const NSNotification& notification) {
            posted.push_back(notification.name);
            if (notification.name != "iRateCouldNotConnectToAppStore") return;
            ASSERT_TRUE(notification.object);
            posted.back() += " " + std::to_string(static_cast<const NSError*>(notification.object)->code());
        };
        for (const std::string& name : names)
            NSNotificationCenter::defaultCenter().addObserver(observer, name, nullptr, note);
    }

    std::shared_ptr<int> observer = std::make_shared<int>();
    std::vector<std::string> posted;
};

}  // namespace

TEST_F(Prompt, EveryLabelAndBothKindsOfAlert) {
    struct Case {
        const char* cancel;
        const char* remind;
        std::vector<std::string> labels;
        std::vector<std::string> answers;
    };
    const Case cases[] = {
        {"No", "Later", {"Rate", "No", "Later"}, {"rates", "declined", "later"}},
        {"", "Later", {"Rate", "Later"}, {"rates", "later"}},
        {"No", "", {"Rate", "No"}, {"rates", "declined"}},
        {"", "", {"Rate"}, {"rates"}},
    };
    for (const bool isNew : {true, false}) {
        for (const Case& c : cases) {
            for (std::size_t button = 0; button < c.labels.size(); ++button) {
                SCOPED_TRACE(std::string(c.cancel) + "/" + c.remind + "/" + std::to_string(button));
                start();
                rating->useUIAlertControllerIfAvailable = isNew;
                rating->setAppStoreID(5);
                rating->setRateButtonLabel("Rate");
                rating->setCancelButtonLabel(c.cancel);
                rating->setRemindButtonLabel(c.remind);
                told->calls.clear();
                rating->promptForRating();
                rating->promptForRating();
                pass();
                ASSERT_TRUE(alert());
                EXPECT_EQ(labels(), c.labels);
                EXPECT_THAT(told->calls, ElementsAre("prompted")) << "once";
                const bool canEscape = *c.cancel != 0;
                if (canEscape && button == 1) {
                    press(HostKey::escape);
                    pass();
                } else {
                    choose(button);
                }
                EXPECT_EQ(told->calls.at(1), c.answers[button]);
                EXPECT_FALSE(rating->visibleAlert());
                EXPECT_FALSE(alert());
            }
        }
    }
}

TEST_F(Prompt, KeysGoOnFromWhereAScreenReaderIs) {
    startAsking();
    const auto buttons = alert()->view()->subviews();
    buttons.back()->accessibilityElementDidBecomeFocused();
    press(HostKey::left);
    EXPECT_FALSE(buttons.back()->isFocused());
    EXPECT_TRUE(buttons[buttons.size() - 2]->isFocused());
    press(HostKey::returnKey);
    pass();
    EXPECT_THAT(told->calls, ElementsAre("declined"));
}

TEST_F(Prompt, AsksNotAgainWhileAnAnswerIsUnderWay) {
    startAsking();
    NSNotificationCenter::defaultCenter().addObserver(
        observer, "iRateUserDidRequestReminderToRateApp", nullptr,
        [this](const NSNotification&) { rating->promptForRating(); });
    choose(2);
    EXPECT_FALSE(alert());
    EXPECT_FALSE(rating->visibleAlert());
    rating->promptForRating();
    pass();
    EXPECT_TRUE(alert()) << "but afterwards";
}

TEST_F(Prompt, AnswersAreKept) {
    startAsking();
    choose(2);
    EXPECT_EQ(rating->lastReminded(), NSDate(now));
    now += day;
    start();
    store->answer(recordOfApp);
    pass();
    choose(1);
    now += 100 * day;
    start();
    EXPECT_TRUE(rating->declinedThisVersion());
    EXPECT_TRUE(said("iRate did not prompt for rating because the user has declined to rate the app"));
    rating->setDeclinedThisVersion(false);
    EXPECT_FALSE(rating->declinedAnyVersion());
    told->agrees = false;
    rating->rate();
    EXPECT_TRUE(rating->ratedThisVersion());
    EXPECT_THAT(system.openedURLs(), IsEmpty()) << "the delegate's veto";
}

TEST_F(Prompt, TheDelegateMaySayNo) {
    told->agrees = false;
    startAsking();
    EXPECT_FALSE(alert());
    EXPECT_TRUE(
        said("iRate did not display the rating prompt because the iRateShouldPromptForRating delegate "
             "method returned NO"));
}

TEST_F(Prompt, LiesOverWhateverIsPresented) {
    const auto sheet = std::make_shared<UIViewController>();
    root->presentViewController(sheet, false);
    startAsking();
    ASSERT_TRUE(alert());
    EXPECT_EQ(sheet->presentedViewController(), alert());
}

TEST_F(Prompt, TheSystemsOwnRequestComesFirst) {
    int requests = 0;
    SKStoreReviewController::setRequest([&requests] { ++requests; });
    startOldEnough();
    rating->useSKStoreReviewControllerIfAvailable = false;
    told->calls.clear();
    store->answer(recordOfApp);
    pass();
    EXPECT_EQ(requests, 1);
    EXPECT_FALSE(alert());
    EXPECT_THAT(told->calls, ElementsAre("later", "prompted"));
    rating->promptForRating();
    pass();
    EXPECT_TRUE(alert()) << "asked for outright";
}

TEST_F(Prompt, ThePageWaitsForTheIdentifier) {
    start();
    store->answer(R"({"results": []})");
    rating->openRatingsPageInAppStore();
    EXPECT_TRUE(rating->checkingForAppStoreID);
    store->answer(recordOfApp);
    pass();
    EXPECT_THAT(system.openedURLs(), ElementsAre("itms-apps://store.test/app/id4711?action=write-review"));
    EXPECT_TRUE(
        said("iRate will open the App Store ratings page using the following URL: "
             "itms-apps://store.test/app/id4711?action=write-review"));
    EXPECT_THAT(told->calls, testing::Contains("opened"));
    EXPECT_FALSE(rating->checkingForAppStoreID);
    EXPECT_FALSE(alert());
}

TEST_F(Prompt, APageThatDoesNotOpenIsAnError) {
    system.setOpensURLs(false);
    start();
    rating->setRatingsURL("https://zentaro.test/rate");
    listen({"iRateCouldNotConnectToAppStore", "iRateDidOpenAppStore"});
    told->calls.clear();
    rating->openRatingsPageInAppStore();
    pass();
    EXPECT_THAT(told->calls, ElementsAre("failed iRateErrorDomain 4"));
    EXPECT_THAT(posted, ElementsAre("iRateCouldNotConnectToAppStore 4"));
    EXPECT_THAT(log.lines.back(),
                HasSubstr("iRate was unable to open the specified ratings URL: https://zentaro.test/rate"));
}

TEST_F(Prompt, SpeaksTheUsersLanguage) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "Remind Me Later"},
        {{"en-GB"}, "Remind Me Later"},
        {{"de"}, "Später erinnern"},
        {{"pt-BR"}, "Lembrar mais tarde"},
        {{"zh-Hant-HK"}, "稍後提醒我"},
        {{"zh-CN"}, "稍后提醒我"},
        {{"tlh", "fr-CA"}, "Me le rappeler plus tard"},
        {{"tlh"}, "Remind Me Later"},
        {{"ja-JP"}, "あとで知らせる"},
        {{"ar-EG"}, "ذكّرني لاحقًا"},
    };
    for (const auto& [languages, later] : cases) {
        NSLocale::setCurrentLocale({"", languages});
        start();
        EXPECT_EQ(rating->remindButtonLabel(), later);
        EXPECT_THAT(rating->messageTitle(), HasSubstr("Zentaro"));
        EXPECT_THAT(rating->message(), HasSubstr("Zentaro"));
        EXPECT_EQ(rating->updateMessage(), rating->message());
    }
    rating->setMessage("%@ and %@");
    EXPECT_EQ(rating->message(), "Zentaro and Zentaro");
    EXPECT_EQ(rating->updateMessage(), "Zentaro and Zentaro");
}

TEST_F(Prompt, WhoRatedAnEarlierVersionReadsAboutTheUpdate) {
    startOldEnough();
    keep("iRateRatedVersionChecked", std::string("1.0"));
    rating->setUpdateMessage("%@ is new");
    rating->promptForRating();
    pass();
    EXPECT_EQ(alert()->message(), "Zentaro is new");
}

TEST_F(Prompt, AnAlertThatOutlivesTheRequestDoesNothing) {
    startAsking();
    rating = nullptr;
    choose(0);
    EXPECT_THAT(told->calls, IsEmpty());
}

TEST_F(Prompt, AnAlertThatOthersTakeAwayMayComeAgain) {
    startAsking();
    root->dismissViewControllerAnimated(false);
    pass();
    EXPECT_FALSE(rating->visibleAlert());
    rating->promptForRating();
    pass();
    EXPECT_TRUE(alert());
}

TEST_F(Prompt, NotificationsOfAllThatTheDelegateHears) {
    listen({"iRateDidDetectAppUpdate", "iRateDidPromptForRating", "iRateUserDidAttemptToRateApp",
            "iRateDidOpenAppStore", "iRateUserDidDeclineToRateApp", "iRateUserDidRequestReminderToRateApp"});
    start();
    rating->setAppStoreID(1);
    for (std::size_t button = 0; button < 3; ++button) {
        rating->promptForRating();
        pass();
        choose(button);
    }
    EXPECT_THAT(posted, ElementsAre("iRateDidDetectAppUpdate", "iRateDidPromptForRating",
                                    "iRateUserDidAttemptToRateApp", "iRateDidOpenAppStore",
                                    "iRateDidPromptForRating", "iRateUserDidDeclineToRateApp",
                                    "iRateDidPromptForRating", "iRateUserDidRequestReminderToRateApp"));
}
