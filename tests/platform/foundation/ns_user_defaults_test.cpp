// The settings in memory and as text: conversions, damage, what is kept and when something is written.
// The file below them has tests of its own.
#include "platform/foundation/ns_user_defaults.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <nlohmann/json.hpp>

#include "hosts/native/memory_preferences_store.h"
#include "tests/support/log_capture.h"

namespace {

using ::testing::ElementsAre;

/// Refuses while told to, and counts what it is asked.
class CountingStore : public MemoryPreferencesStore {
  public:
    bool save(const std::string& text) override {
        ++saves;
        return !refuses && MemoryPreferencesStore::save(text);
    }
    std::string lastError() const override { return refuses ? "settings.json: the disk is full" : ""; }
    int saves = 0;
    bool refuses = false;
};

NSUserDefaults defaultsOf(const std::string& json) {
    return NSUserDefaults(std::make_shared<MemoryPreferencesStore>(json));
}

TEST(NSUserDefaults, WhatIsSetSurvivesTheNextStart) {
    auto store = std::make_shared<MemoryPreferencesStore>();
    {
        NSUserDefaults defaults(store);
        defaults.setInteger(std::numeric_limits<int64_t>::min(), "smallest");
        defaults.setBool(true, "MPCoachMarksShown");
        defaults.setDouble(0.1, "tenth");
        defaults.setDouble(std::nan(""), "nan");
        defaults.setString("Grüße \"\\\n\x01", "text");
        defaults.setString("\xff\xfe", "bytes");
        defaults.setInteger(1, "gone");
        defaults.removeObjectForKey("gone");
        EXPECT_TRUE(defaults.synchronize());
    }
    const NSUserDefaults defaults(store);
    EXPECT_EQ(defaults.integerForKey("smallest"), std::numeric_limits<int64_t>::min());
    EXPECT_TRUE(defaults.boolForKey("MPCoachMarksShown"));
    EXPECT_EQ(defaults.doubleForKey("tenth"), 0.1);
    EXPECT_TRUE(std::isnan(defaults.doubleForKey("nan")));
    EXPECT_EQ(defaults.stringForKey("text"), "Grüße \"\\\n\x01");
    EXPECT_TRUE(defaults.hasKey("bytes"));
    EXPECT_FALSE(defaults.hasKey("gone"));
}

TEST(NSUserDefaults, ReadsEveryTypeAsEveryOther) {
    struct Case {
        const char* json;
        int64_t integer;
        bool boolean;
        double number;
        const char* string;
    };
    const Case cases[] = {
        {"3", 3, true, 3, "3"},
        {"-7.9", -7, true, -7.9, "-7.9"},
        {"1e300", std::numeric_limits<int64_t>::max(), true, 1e300, "1e+300"},
        {"true", 1, true, 1, "1"},
        {"\" 12 apples\"", 12, true, 12, " 12 apples"},
        {"\"-99999999999999999999\"", std::numeric_limits<int64_t>::min(), true, -1e20,
         "-99999999999999999999"},
        {"\"YES\"", 0, true, 0, "YES"},
        {"\"no\"", 0, false, 0, "no"},
        {"\"-000\"", 0, false, 0, "-000"},
        {"null", 0, false, 0, ""},
        {"[1]", 0, false, 0, ""},
        {"18446744073709551615", 0, false, 0, ""},
    };
    for (const Case& c : cases) {
        const auto defaults = defaultsOf(std::string("{\"key\": ") + c.json + "}");
        EXPECT_EQ(defaults.integerForKey("key"), c.integer) << c.json;
        EXPECT_EQ(defaults.boolForKey("key"), c.boolean) << c.json;
        EXPECT_EQ(defaults.doubleForKey("key"), c.number) << c.json;
        EXPECT_EQ(defaults.stringForKey("key"), c.string) << c.json;
    }
    EXPECT_EQ(defaultsOf("{}").integerForKey("key"), 0);
}

TEST(NSUserDefaults, DamagedTextIsSetAsideWithOneLine) {
    const std::string deep(100000, '[');
    for (const std::string& text :
         {std::string(), std::string("{\"a\": 1"), std::string("[1, 2]"), std::string("7"),
          std::string("\0\0\0\0", 4), std::string("{\"a\": \"\xff\"}"),
          "{\"a\": " + deep + std::string(100000, ']') + "}"}) {
        LogCapture log;
        auto store = std::make_shared<MemoryPreferencesStore>(text);
        NSUserDefaults defaults(store);
        EXPECT_THAT(log.lines, ElementsAre(testing::HasSubstr("damaged"))) << text.substr(0, 20);
        EXPECT_EQ(store->damagedText(), text);
        EXPECT_FALSE(defaults.hasKey("a"));
        defaults.setInteger(2, "a");
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(NSUserDefaults(store).integerForKey("a"), 2);
    }
}

TEST(NSUserDefaults, KeepsValuesOfTypesItDoesNotKnow) {
    auto store = std::make_shared<MemoryPreferencesStore>(
        R"({"list": [1, {"x": null}], "big": 18446744073709551615, "nothing": null, "number": 1})");
    NSUserDefaults defaults(store);
    EXPECT_TRUE(defaults.hasKey("list"));
    defaults.setInteger(2, "number");
    defaults.setBool(true, "nothing");
    ASSERT_TRUE(defaults.synchronize());
    const auto written = nlohmann::json::parse(*store->text());
    EXPECT_EQ(
        written,
        nlohmann::json::parse(
            R"({"list": [1, {"x": null}], "big": 18446744073709551615, "nothing": true, "number": 2})"));
}

TEST(NSUserDefaults, WritesOnlyWhatChangedAndTriesAgain) {
    LogCapture log;
    auto store = std::make_shared<CountingStore>();
    NSUserDefaults defaults(store);
    EXPECT_TRUE(defaults.synchronize());
    defaults.removeObjectForKey("absent");
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(store->saves, 0);

    defaults.setInteger(1, "key");
    store->refuses = true;
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_THAT(log.lines, ElementsAre("Settings cannot be saved: settings.json: the disk is full"));
    EXPECT_EQ(defaults.integerForKey("key"), 1);

    store->refuses = false;
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(store->saves, 3);
    defaults.setInteger(1, "key");
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(store->saves, 3) << "the same value again is no change";
    EXPECT_EQ(NSUserDefaults(store).integerForKey("key"), 1);
}

}  // namespace
