// Pans, pinches and steps of magnification: when they begin, what they measure, who wins, how they end.
// Whole stories of fingers on a window, with times of their own.
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

#include "platform/ui/ui_magnification_gesture_recognizer.h"
#include "platform/ui/ui_pan_gesture_recognizer.h"
#include "platform/ui/ui_pinch_gesture_recognizer.h"
#include "platform/ui/ui_window.h"
#include "screens/swallow_touches_view.h"
#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kTick = 1.0 / 64;

class UIGestureTest : public testing::Test {
  protected:
    UIGestureTest() {
        window->addSubview(view);
        view->addGestureRecognizer(pinch);
        view->addGestureRecognizer(pan);
        view->addGestureRecognizer(tap);
        view->addGestureRecognizer(magnification);
    }

    void tell(const char* who, const UIGestureRecognizer& recognizer) {
        static const char* states[] = {"possible", "began", "changed", "ended", "cancelled", "failed"};
        const std::string line =
            std::string(who) + " " + states[static_cast<std::size_t>(recognizer.state())];
        if (story.empty() || story.back() != line) story.push_back(line);
    }
    void send(UITouchPhase phase, int64_t finger, CGPoint at) {
        places[finger] = at;
        window->sendTouch({phase, finger, at, time});
    }
    void land(int64_t finger, CGPoint at) { send(UITouchPhase::began, finger, at); }
    void lift(int64_t finger) { send(UITouchPhase::ended, finger, places[finger]); }
    /// Fingers go together, by so much a tick each.
    void slide(const std::vector<std::pair<int64_t, CGPoint>>& steps, int ticks) {
        for (int i = 0; i < ticks; ++i) {
            time += kTick;
            for (const auto& [finger, by] : steps)
                send(UITouchPhase::moved, finger, {places[finger].x + by.x, places[finger].y + by.y});
        }
    }

    LogCapture log;
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 800, 400));
    std::shared_ptr<UIView> view = std::make_shared<UIView>(CGRectMake(0, 0, 800, 400));
    std::vector<std::string> story;
    CGPoint translation;
    CGPoint panVelocity;
    CGFloat scale = 0;
    std::shared_ptr<UIPanGestureRecognizer> pan =
        std::make_shared<UIPanGestureRecognizer>([this](UIPanGestureRecognizer& r) {
            tell("pan", r);
            translation = r.translationInView(*view);
            panVelocity = r.velocityInView(*view);
        });
    std::shared_ptr<UIPinchGestureRecognizer> pinch =
        std::make_shared<UIPinchGestureRecognizer>([this](UIPinchGestureRecognizer& r) {
            tell("pinch", r);
            scale = r.scale();
        });
    std::shared_ptr<UITapGestureRecognizer> tap =
        std::make_shared<UITapGestureRecognizer>([this](UIGestureRecognizer& r) { tell("tap", r); });
    std::shared_ptr<UIMagnificationGestureRecognizer> magnification =
        std::make_shared<UIMagnificationGestureRecognizer>([this](UIMagnificationGestureRecognizer& r) {
            tell("magnification", r);
            scale = r.factor();
        });
    std::map<int64_t, CGPoint> places;
    double time = 10;
};

TEST_F(UIGestureTest, PanBeginsAfterTenPointsAtZeroAndGoesOnFromThere) {
    land(1, {100, 100});
    slide({{1, {3, 0}}}, 3);
    EXPECT_THAT(story, IsEmpty());
    slide({{1, {1, 0}}}, 1);
    EXPECT_THAT(story, ElementsAre("pan began"));
    EXPECT_EQ(translation, CGPointZero);
    slide({{1, {3, -2}}}, 4);
    EXPECT_EQ(translation, CGPointMake(12, -8));
    pan->setTranslation({1, 1}, *view);
    send(UITouchPhase::ended, 1, {places[1].x + 20, places[1].y});
    EXPECT_EQ(translation, CGPointMake(21, 1)) << "a lift elsewhere is a move there first";
    EXPECT_THAT(story, ElementsAre("pan began", "pan changed", "pan ended"));
}

TEST_F(UIGestureTest, PanVelocityIsThatOfTheLastTenthOfASecond) {
    const struct {
        const char* name;
        double firstSpeed;
        double lastSpeed;
        double rest;  // seconds before the lift
        double expected;
    } cases[] = {
        {"slowed down", 1920, 64, 0, 64},
        {"rested", 640, 640, 0.2, 0},
        {"lifted soon", 640, 640, 0.01, 640},
        {"turned round", 640, -320, 0, -320},
    };
    for (const auto& c : cases) {
        land(1, {300, 100});
        slide({{1, {c.firstSpeed * kTick, 0}}}, 16);
        slide({{1, {c.lastSpeed * kTick, 0}}}, 7);
        time += c.rest;
        lift(1);
        EXPECT_NEAR(panVelocity.x, c.expected, std::abs(c.expected) * 0.12) << c.name;
        EXPECT_EQ(panVelocity.y, 0) << c.name;
        time += 1;
    }
}

TEST_F(UIGestureTest, BurstsOfEventsHaveSensibleSpeeds) {
    land(1, {100, 100});
    for (int i = 0; i < 3; ++i)
        send(UITouchPhase::moved, 1, {places[1].x + 10, 100});
    lift(1);
    EXPECT_LE(panVelocity.x, 3600) << "all at one time";
}

TEST_F(UIGestureTest, FingersThatComeAndGoMakeNoPanJump) {
    land(1, {100, 100});
    slide({{1, {10, 0}}}, 2);
    EXPECT_EQ(translation.x, 10);
    land(2, {600, 300});
    slide({{1, {4, 0}}, {2, {4, 0}}}, 5);
    EXPECT_NEAR(translation.x, 30, 1e-9) << "two fingers go as far as each of them";
    lift(1);
    slide({{2, {4, 0}}}, 5);
    EXPECT_NEAR(translation.x, 50, 1e-9);
    EXPECT_NEAR(translation.y, 0, 1e-9);
    lift(2);
    EXPECT_NEAR(panVelocity.x, 4 / kTick, 60);
    EXPECT_THAT(story, ElementsAre("pan began", "pan changed", "pan ended"));
}

TEST_F(UIGestureTest, ThirdFingerAndFingersInOnePlaceMakeNoPinchJump) {
    land(1, {350, 200});
    land(2, {450, 200});
    slide({{1, {-10, 0}}, {2, {10, 0}}}, 3);
    const CGFloat before = scale;
    land(3, {400, 390});
    slide({{3, {0, 0}}}, 1);
    EXPECT_NEAR(scale, before, 1e-12);
    lift(1);
    slide({{2, {0, 0}}}, 1);
    EXPECT_NEAR(scale, before, 1e-12);
    slide({{2, {places[3].x - places[2].x, places[3].y - places[2].y}}}, 1);
    slide({{2, {50, 0}}}, 1);
    EXPECT_TRUE(std::isfinite(scale) && scale > 0) << scale;
    lift(3);
    EXPECT_EQ(story.back(), "pinch ended");
    story.clear();
    slide({{2, {30, 0}}}, 3);
    EXPECT_THAT(story, IsEmpty()) << "the finger left over drags nothing";
    land(1, {100, 100});
    slide({{1, {10, 10}}}, 3);
    EXPECT_THAT(story, ElementsAre("pinch began", "pinch changed")) << "but may pinch again";
}

TEST_F(UIGestureTest, TheFirstToBeginWinsAndTheOthersWaitForTheNextGesture) {
    const struct {
        const char* name;
        CGPoint first;
        CGPoint second;
        const char* winner;
    } cases[] = {
        {"together, fast", {12, 2}, {12, 2}, "pan"},
        {"one stays", {0, 0}, {6, 0}, "pinch"},
    };
    for (const auto& c : cases) {
        story.clear();
        land(1, {350, 100});
        land(2, {450, 100});
        slide({{1, c.first}, {2, c.second}}, 10);
        lift(2);
        lift(1);
        const std::string winner = c.winner;
        EXPECT_THAT(story, ElementsAre(winner + " began", winner + " changed", winner + " ended")) << c.name;
        time += 1;
    }
}

TEST_F(UIGestureTest, StepsOfMagnificationGoToTheViewUnderThePointerAndNonsenseNowhere) {
    const auto bar = std::make_shared<SwallowTouchesView>(CGRectMake(0, 350, 800, 50));
    view->addSubview(bar);
    window->sendWheel({{100, 100}, 1e300, 0});
    EXPECT_TRUE(std::isfinite(scale));
    story.clear();
    window->sendWheel({{100, 360}, 1, 0});
    EXPECT_THAT(log.lines, IsEmpty());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    window->sendWheel({{100, 100}, nan, 0});
    window->sendWheel({{nan, 100}, 1, 0});
    for (const double factor : {0.0, -2.0, nan, HUGE_VAL})
        window->sendMagnification({{100, 100}, factor, 0});
    EXPECT_THAT(story, IsEmpty());
    EXPECT_EQ(log.lines.size(), 6U);
}

}  // namespace
