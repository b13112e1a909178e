// Fingers, wheel, trackpad and keys on the main screen: what they do to the view, the glides that follow, and
// that nothing turns it into something the user cannot leave.
// Played on the headless host; figures worked out by hand for a screen of 320 x 180 points.
#include <cmath>
#include <gmock/gmock.h>

#include "tests/support/headless_screen.h"

namespace {

class MainScreenTouch : public HeadlessScreenTest {
  protected:
    MainScreenTouch() {
        launch({{320, 180}, 1});
        host->step();
        screen->shader()->setFractalBounds(start);
    }

    /// Ends with the gesture begun and nothing moved.
    void beginPan() {
        host->land(1, {100, 60});
        host->slide({{1, {120, 60}}}, HeadlessHost::kFrame);
    }
    void beginPinch() {
        host->land(1, {100, 60});
        host->land(2, {200, 60});
        host->slide({{2, {210, 60}}}, HeadlessHost::kFrame);
        // One finger alone moved: its next move tells that the round is over.
        host->handle(HostTouch{UITouchPhase::moved, 2, {210, 60}, host->time()});
    }
    void expectNear(CGRect a, CGRect b, double tolerance) const {
        EXPECT_NEAR(a.origin.x, b.origin.x, tolerance) << host->script();
        EXPECT_NEAR(a.origin.y, b.origin.y, tolerance) << host->script();
        EXPECT_NEAR(a.size.width, b.size.width, tolerance) << host->script();
        EXPECT_NEAR(a.size.height, b.size.height, tolerance) << host->script();
    }
    CGPoint planeAt(CGPoint point) const {
        return {bounds().origin.x + point.x / 320 * bounds().size.width,
                bounds().origin.y + point.y / 180 * bounds().size.height};
    }

    static constexpr CGRect start{{-1, -0.5}, {1.6, 0.9}};
};

TEST_F(MainScreenTouch, TheViewFollowsTheFinger) {
    beginPan();
    EXPECT_EQ(bounds(), start);
    host->slide({{1, {280, 60}}}, 0.1);
    expectNear(bounds(), CGRectMake(-1.8, -0.5, 1.6, 0.9), 1e-6);
    host->slide({{1, {280, 78}}}, HeadlessHost::kFrame);
    const CGFloat step = static_cast<CGFloat>(static_cast<float>(0.1));
    EXPECT_NEAR(bounds().origin.y, -0.5 - step * 0.9, 1e-15) << "rounded to single precision on the way";
    host->lift(1);
}

TEST_F(MainScreenTouch, AThrownViewGlidesOnForAFifteenthOfASecondsWay) {
    beginPan();
    host->slide({{1, {220, 120}}}, 10 * HeadlessHost::kFrame);
    const CGRect released = bounds();
    host->lift(1);
    ASSERT_TRUE(screen->animtween);
    // (600, 360) points a second: 40 and 24 points further, in sqrt(6.997) tenths of a second.
    host->play(0.2);
    EXPECT_TRUE(screen->animtween);
    host->play(0.1);
    EXPECT_FALSE(screen->animtween);
    expectNear(bounds(), CGRectOffset(released, -40.0 / 320 * 1.6, -24.0 / 180 * 0.9), 1e-6);
}

TEST_F(MainScreenTouch, ALostTouchGlidesLikeALiftedOne) {
    beginPan();
    host->slide({{1, {220, 60}}}, 0.1);
    const CGRect released = bounds();
    host->handle(HostLifecycle::willResignActive);
    EXPECT_TRUE(screen->animtween);
    host->slide({{1, {10, 60}}}, 0.5);
    EXPECT_LT(bounds().origin.x, released.origin.x);
    EXPECT_NEAR(bounds().origin.x, released.origin.x - 0.34, 0.05) << "what the lost finger does is not seen";
}

TEST_F(MainScreenTouch, PinchStepsAreLinearAboutTheCentre) {
    const struct {
        CGFloat scale;
        CGFloat factor;
    } steps[] = {{1.1, 0.9}, {0.9, 1.1}, {1.5, 0.5}, {2, 0}, {2.5, -0.5}};
    for (const auto& [scale, factor] : steps) {
        screen->shader()->setFractalBounds(start);
        beginPinch();
        ASSERT_EQ(bounds(), start);
        host->slide({{2, {100 + 110 * scale, 60}}}, HeadlessHost::kFrame);
        expectNear(bounds(), CGRectInset(start, 0.8 * (1 - factor), 0.45 * (1 - factor)), 1e-9);
        host->play(0.2);
        const CGRect released = bounds();
        host->lift(1);
        host->lift(2);
        host->play(0.2);
        expectNear(bounds(), released, 1e-12);
    }
}

TEST_F(MainScreenTouch, APinchedViewGlidesOnForATenthOfASecond) {
    host->pinch({160, 60}, 60, 60 * std::exp(0.8), 0.4);
    const CGRect released = bounds();
    EXPECT_LT(released.size.width, start.size.width);
    ASSERT_TRUE(screen->animtween);
    host->play(0.15);
    EXPECT_FALSE(screen->animtween);
    const CGFloat factor = bounds().size.width / released.size.width;
    EXPECT_NEAR(factor, 1 - 2.0 / 20, 0.03) << "growing about twice a second";
    EXPECT_NEAR(CGRectGetMidX(bounds()), CGRectGetMidX(start), 1e-12);
}

TEST_F(MainScreenTouch, WheelAndTrackpadZoomAboutThePointer) {
    const CGPoint pointer{80, 100};
    const CGPoint under = planeAt(pointer);
    const auto expectWidth = [&](CGFloat width, const char* what) {
        EXPECT_NEAR(bounds().size.width, width, 1e-9) << what;
        EXPECT_NEAR(planeAt(pointer).x, under.x, 1e-12) << what;
        EXPECT_NEAR(planeAt(pointer).y, under.y, 1e-12) << what;
    };
    host->wheel(pointer, 1);
    host->step(0.05);
    EXPECT_NEAR(planeAt(pointer).x, under.x, 1e-12) << "on the way";
    host->play(0.2);
    expectWidth(1.6 * 0.9, "a notch");
    host->wheel(pointer, 1);
    host->step();
    host->step();
    host->wheel(pointer, 1);
    host->play(0.2);
    expectWidth(1.6 * 0.729, "two more, quickly");
    host->wheel(pointer, -3);
    host->play(0.2);
    expectWidth(1.6, "and back");
    host->magnify(pointer, 1.25);
    expectWidth(1.28, "trackpad");
}

TEST_F(MainScreenTouch, KeysMoveAndZoomWithAGlide) {
    const struct {
        HostKey key;
        const char* text;
        CGRect goal;
    } keys[] = {
        {HostKey::left, "", CGRectOffset(start, -0.16, 0)},
        {HostKey::right, "", CGRectOffset(start, 0.16, 0)},
        {HostKey::up, "", CGRectOffset(start, 0, -0.09)},
        {HostKey::down, "", CGRectOffset(start, 0, 0.09)},
        {HostKey::character, "+", CGRectInset(start, 0.16, 0.09)},
        {HostKey::character, "=", CGRectInset(start, 0.16, 0.09)},
        {HostKey::character, "-", CGRectInset(start, -0.2, -0.1125)},
    };
    for (const auto& [key, text, goal] : keys) {
        screen->shader()->setFractalBounds(start);
        host->handle(HostKeyPress{key, text, false, false, host->time()});
        host->play(0.1);
        EXPECT_NE(bounds(), goal) << "under way";
        host->play(0.15);
        expectNear(bounds(), goal, 1e-12);
        host->handle(HostKeyPress{key, text, true, false, host->time()});
        host->play(0.25);
        EXPECT_NE(bounds(), goal) << "held";
    }
    for (const HostKeyPress& home : {HostKeyPress{HostKey::home, "", false, false, 0},
                                     HostKeyPress{HostKey::character, "0", false, false, 0}}) {
        host->handle(HostKeyPress{HostKey::left, "", false, false, host->time()});
        host->handle(home);
        host->play(0.3);
        EXPECT_EQ(bounds(), screen->rectifiedBoundsFor(topView)) << "and no glide goes on";
    }
}

TEST_F(MainScreenTouch, NothingMovesTheViewWhileThePilotFlies) {
    screen->hideMenu(false);
    host->step();
    const auto flight = screen->tween;
    ASSERT_TRUE(flight);
    const CGRect before = bounds();
    const auto touch = [&](UITouchPhase phase, int64_t finger, CGPoint point) {
        host->handle(HostTouch{phase, finger, point, host->time()});
    };
    touch(UITouchPhase::began, 1, {50, 60});
    touch(UITouchPhase::moved, 1, {150, 60});
    touch(UITouchPhase::moved, 1, {250, 60});
    touch(UITouchPhase::ended, 1, {250, 60});
    touch(UITouchPhase::began, 1, {50, 60});
    touch(UITouchPhase::began, 2, {100, 60});
    for (const CGFloat x : {150, 200, 250})
        touch(UITouchPhase::moved, 2, {x, 60});
    host->handle(HostLifecycle::willResignActive);
    host->wheel({100, 60}, 2);
    host->magnify({100, 60}, 2);
    for (const HostKey key : {HostKey::left, HostKey::down, HostKey::home})
        host->press(key);
    host->type("+-0");
    EXPECT_EQ(bounds(), before);
    EXPECT_EQ(screen->tween, flight);
    EXPECT_FALSE(screen->animtween);
    host->play(0.1);
    EXPECT_NE(bounds(), before) << "the flight goes on";
}

TEST_F(MainScreenTouch, AnyGestureEndsAPausedFlightForGood) {
    constexpr CGPoint finger{100, 60};
    const std::pair<const char*, std::function<void()>> gestures[] = {
        {"pan", [&] { host->drag(finger, CGPointMake(200, 60), 0.05); }},
        {"pinch", [&] { host->pinch(finger, 50, 90, 0.05); }},
        {"wheel", [&] { host->wheel(finger, 1); }},
        {"trackpad", [&] { host->magnify(finger, 1.1); }},
        {"key", [this] { host->press(HostKey::left); }},
    };
    for (const auto& [name, gesture] : gestures) {
        screen->hideMenu(false);
        host->play(0.1);
        screen->togglePilot(nullptr);
        ASSERT_TRUE(screen->tween) << name;
        screen->targets() = {start};
        gesture();
        EXPECT_FALSE(screen->tween) << name;
        EXPECT_THAT(screen->targets(), testing::IsEmpty()) << name;
    }
}

TEST_F(MainScreenTouch, ViewsThatAreNoneCanAlwaysBeLeft) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const CGRect& view : {CGRectNull, CGRectZero, CGRectMake(0, 0, -1, -1), CGRectMake(nan, 0, 1, 1),
                               CGRectMake(0, 0, nan, nan), CGRectMake(0, 0, 1e300, 1e300),
                               CGRectMake(-infinity, 0, infinity, 1), CGRectMake(0, 0, 1e-300, 1e-300)}) {
        screen->shader()->setFractalBounds(view);
        host->step();
        host->drag({100, 60}, {200, 100}, 0.05);
        host->pinch({160, 60}, 50, 90, 0.05);
        host->wheel({100, 60}, 2);
        host->step();
        host->magnify({100, 60}, 1.5);
        host->type("+-");
        host->press(HostKey::right);
        host->step();
        screen->shader()->setFractalBounds(view);
        screen->hideMenu(false);
        host->play(0.1);
        screen->showMenu(false);
        screen->xButton->sendAction();
        host->step();
        EXPECT_EQ(bounds(), screen->rectifiedBoundsFor(topView)) << NSStringFromCGRect(view);
        EXPECT_FALSE(screen->tween || screen->animtween);
    }
}

}  // namespace
