// Whole lives of tweens, told frame by frame: passes, callbacks, and tweens that act on one another.
// A frame of a quarter second keeps every clock exact.
#include "tween/gs_tween.h"

#include <gmock/gmock.h>

#include "tests/tween/tween_target.h"
#include "tween/easing.h"

namespace {

struct GSTweenTest : TweenTest {
    GSTweenTest() {
        NSRunLoop::currentRunLoop().setRefreshInterval(0.25);
        target->onNumber = [this](double value) { tell("=", value); };
    }

    void tell(const std::string& what) { story += (story.empty() || story.back() == '|' ? "" : " ") + what; }
    void tell(const char* before, double value) {
        char text[32];
        std::snprintf(text, sizeof text, "%s%g", before, value);
        tell(std::string(text));
    }

    /// The given parameters and all callbacks, each of which tells its name.
    GSTweenParams told(GSTweenParams params) {
        params.insert({{"onStart", [this] { tell("start"); }},
                       {"onUpdate", [this](double p, double eased) { tell("", p), tell("~", eased); }},
                       {"onComplete", [this] { tell("complete"); }}});
        return params;
    }

    std::shared_ptr<GSTween> tween(double time, const GSTweenParams& params) {
        return GSTween::tweenWithTarget(target, time, Quadratic::easeIn(), params);
    }

    /// What happens in so many frames.
    std::string storyOf(int count) {
        story.clear();
        for (int i = 0; i < count; ++i) {
            frames(1);
            story += '|';
        }
        return story;
    }

    std::string story;
};

TEST_F(GSTweenTest, PassesGoByTheirParameters) {
    const std::string up = "=0 start 0 ~0|=2.5 0.5 ~0.25|=10 1 ~1";
    const struct {
        const char* name;
        double time;
        GSTweenParams params;
        std::string story;
    } cases[] = {
        {"one pass", 0.5, {}, up + " complete|||"},
        {"delay", 0.5, {{"delay", 0.5}}, "||" + up + " complete||"},
        {"repeat waits for the delay again",
         0.5,
         {{"delay", 0.5}, {"repeat", 2}},
         "||" + up + "||=0 0 ~0|=2.5 0.5 ~0.25|=10 1 ~1||=0 0 ~0|=2.5 0.5 ~0.25|=10 1 ~1 complete||"},
        {"repeat skips the clock's 0", 0.5, {{"repeat", 1}}, up + "|=2.5 0.5 ~0.25|=10 1 ~1 complete||"},
        {"yoyo", 0.5, {{"yoyo", true}}, up + "|=2.5 0.5 ~0.25|=0 0 ~0 complete||"},
        {"yoyo, repeated, waits for the delay again",
         0.5,
         {{"yoyo", 1}, {"repeat", "1"}, {"delay", 0.5}},
         "||" + up +
             "|=2.5 0.5 ~0.25|=0 0 ~0||=0 0 ~0|=2.5 0.5 ~0.25|=10 1 ~1|=2.5 0.5 ~0.25|=0 0 ~0 complete||"},
        {"endless", 0.25, {{"repeat", -1}}, "=0 start 0 ~0|=10 1 ~1|=10 1 ~1|=10 1 ~1|"},
        {"double speed", 1, {{"speed", 2}}, up + " complete|||"},
        {"speed in single precision", 1e-9, {{"speed", 1e-60}}, "||"},
        {"backwards from the start", 0.5, {{"speed", -1.0}}, "=0 start 0 ~0 complete||"},
        {"backwards, repeated forwards",
         0.5,
         {{"speed", -1.0}, {"repeat", 1}},
         "=0 start 0 ~0|=2.5 0.5 ~0.25|=10 1 ~1 complete||"},
        {"no time", 0, {}, "=0 start 0 ~0|=10 1 ~1 complete||"},
        {"not started", 0.5, {{"autoStart", false}}, "|||"},
        {"values of the wrong kind",
         0.5,
         {{"delay", GSTweenBlock([] {})}, {"other", GSTweenBlock([] {})}},
         up + " complete||"},
    };
    for (auto each : cases) {
        SCOPED_TRACE(each.name);
        target->number = 0;
        each.params.emplace("number", 10);
        const auto count = static_cast<int>(std::ranges::count(each.story, '|'));
        const auto made = tween(each.time, told(each.params));
        EXPECT_EQ(storyOf(count), each.story);
        NSRunLoop::currentRunLoop().invalidateDisplayLinks();
    }
    EXPECT_EQ(log.lines.size(), 2U);
}

TEST_F(GSTweenTest, SpeedZeroStandsStillAndGoesOnLater) {
    const auto moving = tween(1, told({{"number", 10}}));
    EXPECT_EQ(storyOf(2), "=0 start 0 ~0|=0.625 0.25 ~0.0625|");
    moving->setSpeed(0);
    EXPECT_EQ(storyOf(2), "||");
    moving->setSpeed(-1);
    EXPECT_EQ(storyOf(3), "=2.5 0.5 ~0.25|=0.625 0.25 ~0.0625|=0 0 ~0 complete|");
}

TEST_F(GSTweenTest, PausesKeepTheClock) {
    const auto moving = tween(0.5, told({{"number", 10}}));
    frames(1);
    moving->resume();
    moving->pause();
    moving->pause();
    EXPECT_FALSE(moving->isRunning());
    EXPECT_EQ(NSRunLoop::currentRunLoop().displayLinkCount(), 0U);
    EXPECT_EQ(storyOf(2), "||");
    moving->resume();
    moving->resume();
    EXPECT_EQ(NSRunLoop::currentRunLoop().displayLinkCount(), 1U);
    EXPECT_EQ(storyOf(3), "=2.5 0.5 ~0.25|=10 1 ~1 complete||");
}

TEST_F(GSTweenTest, StopsAsOftenAsToldAndMayGoOn) {
    const auto moving = tween(1, told({{"number", 10}}));
    frames(2);
    story.clear();
    moving->stop();
    moving->stop();
    EXPECT_EQ(story, "complete complete");
    EXPECT_EQ(storyOf(2), "||");
    moving->start();
    moving->start();
    EXPECT_EQ(storyOf(1), "=2.5 0.5 ~0.25|");
}

TEST_F(GSTweenTest, StartValuesAreReadAtOnceAndWrittenInOrder) {
    const auto delayed =
        tween(0.5, {{"delay", 0.25}, {"number", 10}, {"narrow", 8}, {"absent", 3}, {"text", 1}});
    EXPECT_THAT(log.lines, testing::ElementsAre("GSTween Warning: Property was not found on target!"));
    target->number = 500;
    int32_t narrowBefore = 0;
    target->narrow = 77;
    target->onNumber = [&](double) { narrowBefore = target->narrow; };
    frames(2);
    EXPECT_EQ(target->number, 0);
    EXPECT_EQ(narrowBefore, 0);
    EXPECT_EQ(target->narrow, 0);
}

TEST_F(GSTweenTest, LivesOnWithoutItsHandleAndKeepsItsTarget) {
    const std::weak_ptr<GSTween> seen = tween(0.5, {{"number", 10}});
    const std::weak_ptr<TweenTarget> seenTarget = target;
    target->onNumber = nullptr;
    target.reset();
    frames(2);
    ASSERT_NE(seenTarget.lock(), nullptr);
    EXPECT_EQ(seenTarget.lock()->number, 2.5);
    EXPECT_EQ(GSTween::runningTweens(), std::vector<std::string>{"number 0.50 of 0.50 s, speed 1"});
    frames(1);
    EXPECT_TRUE(seen.expired());
    EXPECT_TRUE(seenTarget.expired());
    EXPECT_EQ(NSRunLoop::currentRunLoop().displayLinkCount(), 0U);
}

/// The slots of the screen: the callback clears the only handle in the middle of stop.
TEST_F(GSTweenTest, CompletionMayDropTheLastHandle) {
    std::shared_ptr<GSTween> slot;
    const GSTweenParams clearing = {{"number", 10}, {"onComplete", [&slot] { slot.reset(); }}};
    slot = tween(0.25, clearing);
    frames(2);
    EXPECT_EQ(slot, nullptr);
    for (const bool paused : {false, true}) {
        slot = tween(0.25, clearing);
        if (paused) slot->pause();
        slot->stop();
        EXPECT_EQ(slot, nullptr);
        EXPECT_EQ(GSTween::livingTweens(), 0U);
    }
}

TEST_F(GSTweenTest, CallbacksStartAndStopTweens) {
    std::shared_ptr<GSTween> later;
    std::shared_ptr<GSTween> begun;
    const auto first = tween(0.25, {{"onStart", [&] {
                                         later->stop();
                                         begun = tween(0.25, told({{"number", 10}}));
                                     }}});
    later = tween(0.25, {{"onComplete", [this] { tell("later ends"); }},
                         {"onUpdate", [this](double, double) { tell("later moves"); }}});
    EXPECT_EQ(storyOf(3), "later ends|=0 start 0 ~0|=10 1 ~1 complete|");

    // One that stops itself in its last update ends twice, and is safe.
    std::shared_ptr<GSTween> self;
    self = tween(0, {{"onUpdate",
                      [&](double p, double) {
                          if (p == 1) std::exchange(self, nullptr)->stop();
                      }},
                     {"onComplete", [this] { tell("ends"); }}});
    EXPECT_EQ(storyOf(3), "|ends ends||");
}

TEST_F(GSTweenTest, ProgressHasSinglePrecision) {
    NSRunLoop::currentRunLoop().setRefreshInterval(0.1);
    double progress = 0;
    double eased = 0;
    tween(1, {{"onUpdate", [&](double p, double e) { progress = p, eased = e; }}});
    frames(2);
    EXPECT_EQ(progress, 0.10000000149011612);
    EXPECT_EQ(eased, progress * progress);
}

}  // namespace
