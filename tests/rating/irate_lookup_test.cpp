// What the store's answers mean: for the prompt, for the log, and for the next look-up.
// Each answer comes to a request of the app's; the network itself is tested with its hosts.
#include <gmock/gmock.h>

#include "tests/rating/rating_test.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

class Lookup : public RatingTest {};

std::string record(const std::string& more) {
    return R"({"results": [{"bundleId": "other"}, {)" + more + "}]}";
}

HTTPAnswer failure(const char* domain, int64_t code, int status = 0) {
    return {status, "", std::make_shared<NSError>(domain, code, "no network")};
}

}  // namespace

TEST_F(Lookup, AsksByIdentifierOrBundlePastTheCaches) {
    startOldEnough();
    ASSERT_THAT(store->requests, SizeIs(2)) << "for the launch, and for the prompt";
    EXPECT_EQ(store->requests[0].url, "https://store.test/DE/lookup?bundleId=example.zentaro");
    EXPECT_EQ(store->requests[0].timeout, 60);
    EXPECT_TRUE(
        said("iRate is checking https://store.test/DE/lookup?bundleId=example.zentaro to retrieve the App "
             "Store details..."));
    rating->promptIfAllCriteriaMet();
    EXPECT_THAT(store->requests, SizeIs(2)) << "one at a time";
    rating->setAppStoreID(12);
    rating->checkForConnectivityInBackground();
    EXPECT_EQ(store->requests[2].url, "https://store.test/DE/lookup?id=12");
}

TEST_F(Lookup, Answers) {
    const std::string found = R"("bundleId": "EXAMPLE.zentaro", "trackId": 99, "primaryGenreId": "6014")";
    const auto version = [&](const std::string& number) {
        return HTTPAnswer{200, record(found + R"(, "version": ")" + number + "\""), nullptr};
    };
    const auto data = [](const std::string& text) { return HTTPAnswer{200, text, nullptr}; };
    const std::string prompts = "prompted";
    const std::string noJSON = "failed NSCocoaErrorDomain 3840";
    const std::string notLatest = "failed iRateErrorDomain 3";
    struct Case {
        const char* what;
        HTTPAnswer answer;
        std::string call;          ///< what the delegate hears first; "" for nothing
        const char* failure = "";  ///< the log's last words
        const char* verbose = "";  ///< a part of a line
        uint64_t identifier = 0;   ///< set before
    };
    const std::vector<Case> cases = {
        {"the app", version("2.0"), prompts, "", "iRate found the app on iTunes. The App Store ID is 99"},
        {"an older one", version("1.10"), prompts},
        {"without a version", data(record(found)), prompts},
        {"a newer one", version("2.0.1"), notLatest, "Installed app is not the latest version available",
         "iRate found that the installed application version (2.0) is not the latest version on the App "
         "Store, which is 2.0.1"},
        {"numbers, not digits", version("10.0"), notLatest,
         "Installed app is not the latest version available"},
        {"another app", data(record(R"("bundleId": "other.app")")), "failed iRateErrorDomain 1",
         "Application bundle ID does not match expected value of other.app",
         "iRate found that the application bundle ID (example.zentaro) does not match the bundle ID of the "
         "app found on iTunes (other.app) with the specified App Store ID (7)",
         7},
        {"none", data(R"({"results": []})"), "", "", "iRate could not find your app on iTunes."},
        {"none of that identifier", data(R"({"results": []})"), "failed iRateErrorDomain 2",
         "The application could not be found on the App Store.",
         "iRate could not find this application on iTunes.", 7},
        {"no JSON", data("<html>"), noJSON, "The store's answer is no JSON"},
        {"nothing", data(""), noJSON, "The store's answer is no JSON"},
        {"JSON of another shape", data(R"([1, {"results": 3}])"), "", "", "your app on iTunes"},
        {"results of another shape", data(R"({"results": {"bundleId": 1}})"), ""},
        {"404",
         {404, record(found), nullptr},
         "failed HTTPResponseErrorDomain 404",
         "The server returned a 404 error"},
        {"500 with an error", failure("NSURLErrorDomain", -1, 500), "failed HTTPResponseErrorDomain 500",
         "The server returned a 500 error"},
        {"204, and an identifier", {204, "", nullptr}, prompts, "", "", 7},
        {"no network", failure("NSURLErrorDomain", -1001), "failed NSURLErrorDomain -1001", "no network", "",
         7},
        {"refused by the system, and an identifier", failure("NSPOSIXErrorDomain", 1), prompts, "", "", 7},
        {"refused by the system", failure("NSPOSIXErrorDomain", 1), "failed NSPOSIXErrorDomain 1",
         "no network"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        NSUserDefaults::standardUserDefaults().removeObjectForKey("iRateAppStoreID");
        NSUserDefaults::standardUserDefaults().removeObjectForKey("iRateLastReminded");
        startOldEnough();
        rating->setAppStoreID(c.identifier);
        told->calls.clear();
        log.lines.clear();
        store->answer(c.answer);
        pass();
        const bool asks = c.call == prompts;
        EXPECT_EQ(alert() != nullptr, asks);
        EXPECT_EQ(said(std::string("iRate rating process failed because: ") + c.failure), *c.failure != 0);
        EXPECT_EQ(told->calls.empty() ? "" : told->calls[0], c.call);
        if (*c.verbose) {
            EXPECT_THAT(log.lines, testing::Contains(HasSubstr(c.verbose)));
        }
        EXPECT_FALSE(rating->checkingForPrompt && (asks || *c.failure)) << "the next launch can try again";
        if (asks) choose(2);
    }
}

TEST_F(Lookup, WhatItLearnsStays) {
    startOldEnough();
    store->answer(record(R"("bundleId": "example.zentaro", "trackId": 99, "primaryGenreId": 6014)"));
    pass();
    EXPECT_EQ(rating->appStoreGenreID, 6014U);
    EXPECT_THAT(alert()->message(), HasSubstr("Spielen mit Zentaro"));
    choose(2);
    start();
    EXPECT_EQ(rating->appStoreID(), 99U);
    EXPECT_EQ(rating->appStoreGenreID, 0U);
    EXPECT_THAT(store->requests.back().url, testing::EndsWith("?bundleId=example.zentaro"))
        << "it is looked up again";
}

TEST_F(Lookup, PreviewsAskWhateverTheStoreSays) {
    start();
    rating->previewMode = true;
    for (const char* answer : {R"({"results": []})", R"({"results": [{"bundleId": "example.zentaro",
                                  "trackId": 1, "version": "99"}]})"}) {
        rating->promptIfAllCriteriaMet();
        store->answer(answer);
        pass();
        ASSERT_TRUE(alert()) << answer;
        choose(2);
    }
}

TEST_F(Lookup, AnAnswerForWhoHasGoneIsDropped) {
    startOldEnough();
    rating = nullptr;
    store->answer(recordOfApp);
    pass();
    EXPECT_FALSE(alert());
}

TEST_F(Lookup, SwitchesThatTheAppMayThrow) {
    const std::string newer = record(R"("bundleId": "example.zentaro", "trackId": 99, "version": "3")");
    startOldEnough();
    rating->onlyPromptIfLatestVersion = false;
    rating->useJSONParserIfAvailable = false;
    store->answer(R"({"bundleId": "example.zentaro", "trackId": 99, "version": "3"})");
    pass();
    ASSERT_TRUE(alert());
    EXPECT_EQ(rating->appStoreID(), 99U);
    choose(2);
    rating->promptAtLaunch = false;
    const std::size_t asked = store->requests.size();
    now += 2 * day;
    goAwayAndReturn();
    EXPECT_FALSE(rating->checkingForPrompt);
    EXPECT_EQ(store->requests.size(), asked + 1) << "it is looked up all the same";
    setSharedHTTPClient(nullptr);
    rating->promptIfAllCriteriaMet();
    pass();
    EXPECT_FALSE(rating->checkingForPrompt) << "without a network";
    EXPECT_TRUE(said("iRate rating process failed because: This machine has no network"));
}
