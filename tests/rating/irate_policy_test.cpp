// When the app asks: the rules one by one in their order, and a year of a user's life in a moment.
// The clock and the settings are the tests' own.
#include <cmath>
#include <gmock/gmock.h>

#include "tests/rating/rating_test.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

class Policy : public RatingTest {
  protected:
    /// The days, from the first on, on which the app asks when it is started once a day.
    std::vector<int> daysOfAsking(int days, const std::function<void(int day)>& before = {}) {
        std::vector<int> asked;
        for (int i = 0; i < days; ++i, now += day) {
            if (before) before(i);
            start(_version);
            store->answer(recordOfApp);
            pass();
            if (!alert()) continue;
            asked.push_back(i);
            if (answersWith >= 0) choose(static_cast<std::size_t>(answersWith));
        }
        return asked;
    }

    int answersWith = 2;
    std::string _version = "2.0";
};

}  // namespace

TEST_F(Policy, TheFirstRuleThatAppliesDecidesAndIsTheOneInTheLog) {
    struct Case {
        std::function<void()> given;
        const char* reason;
    };
    // Each case spoils one more thing than the one below it; the last one is ready.
    const std::vector<Case> cases = {
        {[&] { keep("iRateRatedVersionChecked", std::string("2.0")); },
         "the user has already rated this version"},
        {[&] { keep("iRateRatedVersionChecked", std::string("1.0")); },
         "the user has already rated this app, and promptForNewVersionIfUserRated is disabled"},
        {[&] {
             NSUserDefaults::standardUserDefaults().removeObjectForKey("iRateRatedVersionChecked");
             keep("iRateDeclinedVersion", std::string("0.1"));
         },
         "the user has declined to rate the app"},
        {[&] { NSUserDefaults::standardUserDefaults().removeObjectForKey("iRateDeclinedVersion"); },
         "the app was first used less than 2.5 days ago"},
        {[&] { now += 2.5 * day; }, "the app has only been used 4 times and only 3 events have been logged"},
        {[&] { keep("iRateUseCount", int64_t{5}); },
         "the app has only been used 14 times per week on average since it was installed"},
        {[&] { keep("iRateUseCount", int64_t{10}); },
         "the user last asked to be reminded less than 1.5 days ago"},
        {[&] { now += 1.5 * day; }, nullptr},
    };
    start();
    rating->daysUntilPrompt = 2.5F;
    rating->usesUntilPrompt = 5;
    rating->eventsUntilPrompt = 4;
    rating->usesPerWeekForPrompt = 14.5F;
    rating->remindPeriod = 1.5F;
    keep("iRateUseCount", int64_t{4});
    keep("iRateEventCount", int64_t{3});
    keep("iRateLastReminded", now + 2.5 * day);
    for (const Case& c : cases) {
        c.given();
        log.lines.clear();
        EXPECT_EQ(rating->shouldPromptForRating(), c.reason == nullptr);
        if (c.reason) {
            EXPECT_THAT(log.lines,
                        ElementsAre(std::string("iRate did not prompt for rating because ") + c.reason));
        } else {
            EXPECT_THAT(log.lines, IsEmpty());
        }
    }
    keep("iRateUseCount", int64_t{0});
    keep("iRateEventCount", int64_t{4});
    rating->usesPerWeekForPrompt = 0;
    EXPECT_TRUE(rating->shouldPromptForRating()) << "either count is enough";
    keep("iRateRatedVersionChecked", std::string("1.0"));
    rating->promptForNewVersionIfUserRated = true;
    EXPECT_TRUE(rating->shouldPromptForRating());
    keep("iRateRatedVersionChecked", std::string("2.0"));
    rating->previewMode = true;
    rating->verboseLogging = false;
    log.lines.clear();
    EXPECT_TRUE(rating->shouldPromptForRating());
    EXPECT_THAT(log.lines,
                ElementsAre("iRate preview mode is enabled - make sure you disable this for release"));
    rating->previewMode = false;
    EXPECT_FALSE(rating->shouldPromptForRating());
    EXPECT_THAT(log.lines, testing::SizeIs(1));
}

TEST_F(Policy, WhoPutsItOffIsAskedAgainADayLaterForAYear) {
    const std::vector<int> asked = daysOfAsking(365);
    ASSERT_EQ(asked.size(), 355U);
    EXPECT_EQ(asked.front(), 10);
    EXPECT_EQ(asked.back(), 364);
}

TEST_F(Policy, AnAnswerHoldsForTheYear) {
    answersWith = 1;
    EXPECT_THAT(daysOfAsking(180), ElementsAre(10)) << "declined";
    EXPECT_TRUE(rating->declinedThisVersion());
    keep("iRateDeclinedVersion", std::string());
    answersWith = 0;
    EXPECT_THAT(daysOfAsking(180), ElementsAre(0)) << "rated";
    EXPECT_TRUE(rating->ratedThisVersion());
    EXPECT_THAT(system.openedURLs(), ElementsAre("itms-apps://store.test/app/id4711?action=write-review"));
}

TEST_F(Policy, TenReturnsOnOneDayAreEnoughUsesButNotEnoughDays) {
    start();
    EXPECT_EQ(rating->usesCount(), 1U);
    loseAndGainFocus();
    EXPECT_EQ(rating->usesCount(), 1U) << "a window without the focus was never away";
    for (int i = 0; i < 10; ++i)
        goAwayAndReturn();
    EXPECT_EQ(rating->usesCount(), 11U);
    EXPECT_THAT(log.lines, testing::Contains(testing::HasSubstr("first used less than 10 days ago")));
    now += 10 * day;
    goAwayAndReturn();
    store->answer(recordOfApp);
    pass();
    EXPECT_TRUE(alert());
}

TEST_F(Policy, EventsCountAndAskUnlessDeferred) {
    start();
    rating->usesUntilPrompt = 1000;
    now += 30 * day;
    for (int i = 0; i < 9; ++i)
        rating->logEvent(false);
    EXPECT_FALSE(rating->checkingForPrompt);
    rating->logEvent(true);
    EXPECT_FALSE(rating->checkingForPrompt) << "deferred";
    rating->logEvent(false);
    EXPECT_TRUE(rating->checkingForPrompt);
    EXPECT_EQ(rating->eventCount(), 11U);
}

TEST_F(Policy, AfterAnUpdate) {
    struct Case {
        const char* what;
        double age;
        const char* rated;
        double expectedAge;
        uint64_t expectedUses;
    };
    const Case cases[] = {
        {"not yet asked: the count goes on", 5 * day, "", 5 * day, 8},
        {"about to be asked: a day from now", 30 * day, "", 9 * day, 8},
        {"just before that day", 9 * day, "", 9 * day, 8},
        {"had rated: all anew", 30 * day, "1.0", 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        keep("iRateFirstUsed", now - c.age);
        keep("iRateUseCount", int64_t{7});
        keep("iRateEventCount", int64_t{3});
        keep("iRateLastReminded", now - 20 * day);
        keep("iRateLastVersionUsed", std::string("1.0"));
        keep("iRateRatedVersionChecked", std::string(c.rated));
        told->calls.clear();
        start();
        EXPECT_EQ(rating->firstUsed(), NSDate(now - c.expectedAge));
        EXPECT_EQ(rating->usesCount(), c.expectedUses);
        EXPECT_EQ(rating->eventCount(), c.expectedUses == 1 ? 0U : 3U);
        EXPECT_EQ(rating->lastReminded().has_value(), c.expectedUses != 1);
        EXPECT_THAT(told->calls, ElementsAre("update"));
        EXPECT_EQ(NSUserDefaults::standardUserDefaults().stringForKey("iRateLastVersionUsed"), "2.0");
    }
}

TEST_F(Policy, DamagedSettingsAndWrongClocksAskNobody) {
    const NSUserDefaults::Value values[] = {std::string("soon"), int64_t{-5}, 1e300, -1e300, now + 365 * day};
    for (const auto& value : values) {
        for (const char* key : {"iRateFirstUsed", "iRateUseCount", "iRateEventCount", "iRateLastReminded",
                                "iRateAppStoreID", "iRateLastVersionUsed"})
            keep(key, value);
        start();
        rating->logEvent(false);
        store->answer(recordOfApp);
        pass();
        EXPECT_GE(rating->usesCount(), 1U);
        EXPECT_FALSE(alert());
        EXPECT_FALSE(std::isnan(rating->usesPerWeek()));
    }
    keep("iRateFirstUsed", now);
    now -= 365 * day;
    start();
    EXPECT_FALSE(rating->shouldPromptForRating());
}

TEST_F(Policy, CountriesOfTheStore) {
    const std::pair<const char*, const char*> cases[] = {
        {"DE", "DE"}, {"150", "eu"}, {"", "us"},   {"USA", "us"},    {"419", "us"},
        {"GI", "GB"}, {"D1", "us"},  {"US", "US"}, {"ABCD", "ABCD"}, {"A", "us"}};
    for (const auto& [country, expected] : cases) {
        NSLocale::setCurrentLocale({country, {"en"}});
        start();
        EXPECT_EQ(rating->appStoreCountry, expected) << country;
    }
}

TEST_F(Policy, StartsByItselfAndWithoutAStoreAsksNobody) {
    keep("iRateFirstUsed", now - 30 * day);
    keep("iRateUseCount", int64_t{30});
    keep("iRateLastVersionUsed", std::string("2.0"));
    iRate::load();
    EXPECT_EQ(NSUserDefaults::standardUserDefaults().integerForKey("iRateUseCount"), 30);
    pass();
    EXPECT_EQ(NSUserDefaults::standardUserDefaults().integerForKey("iRateUseCount"), 31);
    EXPECT_EQ(iRate::sharedInstance()->applicationName, "Zentaro");
    EXPECT_THAT(store->requests, IsEmpty()) << "the build's own store is an example";
    EXPECT_FALSE(alert());
}
