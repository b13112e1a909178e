// Where touches go: views, recognisers, bars that swallow them, fingers that get lost.
// Hosts may deliver touches late, twice or never.
#include <gmock/gmock.h>
#include <sstream>

#include "platform/ui/ui_gesture_recognizer.h"
#include "platform/ui/ui_toolbar.h"
#include "platform/ui/ui_window.h"
#include "platform/ui/view_animator.h"
#include "screens/swallow_touches_view.h"
#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Story = std::vector<std::string>;

void tell(Story& story, const char* what, const UITouches& touches, const UIEvent& event) {
    std::ostringstream line;
    line << what << " " << touches.front()->id << " of " << event.allTouches.size();
    story.push_back(line.str());
}

template <typename Base>
class Spy : public Base {
  public:
    using Base::Base;
    void touchesBegan(const UITouches& t, const UIEvent& e) override { tell(story, "began", t, e); }
    void touchesMoved(const UITouches& t, const UIEvent& e) override { tell(story, "moved", t, e); }
    void touchesEnded(const UITouches& t, const UIEvent& e) override { tell(story, "ended", t, e); }
    void touchesCancelled(const UITouches& t, const UIEvent& e) override { tell(story, "cancelled", t, e); }
    Story story;
};

/// A window like the app's: the fractal over all of it, a toolbar with one button at its bottom.
class UITouchTest : public testing::Test {
  protected:
    UITouchTest() {
        window->addSubview(fractal);
        fractal->addSubview(bar);
        item->setAction([this](const auto&) { ++presses; });
        bar->setItems({item});
        fractal->addGestureRecognizer(spy);
        fractal->addGestureRecognizer(
            std::make_shared<UITapGestureRecognizer>([this](UIGestureRecognizer& tap) {
                ++taps;
                EXPECT_EQ(tap.state(), UIGestureRecognizerState::ended);
            }));
        window->layoutIfNeeded();
    }
    ~UITouchTest() override { ViewAnimator::shared().reset(); }

    void send(UITouchPhase phase, CGPoint at, double time, int64_t id = 1) {
        window->sendTouch({phase, id, at, time});
    }
    void began(CGPoint at, double time = 0, int64_t id = 1) { send(UITouchPhase::began, at, time, id); }
    void moved(CGPoint at, double time = 0, int64_t id = 1) { send(UITouchPhase::moved, at, time, id); }
    void ended(CGPoint at, double time = 0, int64_t id = 1) { send(UITouchPhase::ended, at, time, id); }

    static constexpr CGPoint onFractal{100, 100};
    static constexpr CGPoint besideButton{20, 370};
    CGPoint onButton() const {
        const auto view = item->view();
        return view->convertPointToWindow({CGRectGetMidX(view->bounds()), CGRectGetMidY(view->bounds())});
    }

    LogCapture log;
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 844, 390));
    std::shared_ptr<Spy<UIView>> fractal = std::make_shared<Spy<UIView>>(CGRectMake(0, 0, 844, 390));
    std::shared_ptr<SwallowTouchesView> bar =
        std::make_shared<SwallowTouchesView>(CGRectMake(0, 334, 844, 56));
    std::shared_ptr<UIBarButtonItem> item = std::make_shared<UIBarButtonItem>();
    std::shared_ptr<Spy<UIGestureRecognizer>> spy =
        std::make_shared<Spy<UIGestureRecognizer>>(UIGestureRecognizer::Action{});
    int taps = 0;
    int presses = 0;
};

TEST_F(UITouchTest, BarKeepsItsTouchesToItselfUntilItIsHidden) {
    began(besideButton);
    moved(onFractal, 0.1);
    ended(onFractal, 0.2);
    EXPECT_THAT(fractal->story, IsEmpty());
    EXPECT_THAT(spy->story, IsEmpty());
    EXPECT_EQ(taps + presses, 0);
    began(besideButton, 1, 1);
    began(onFractal, 1, 2);
    ended(onFractal, 1.1, 2);
    ended(besideButton, 1.2, 1);
    EXPECT_EQ(taps, 1) << "a finger on the bar does not disturb the fractal's";
    UIView::animateWithDuration(0.5, 0, 0, [&] { bar->setAlpha(0); });
    began(besideButton, 2);
    ended(besideButton, 2.1);
    EXPECT_EQ(taps, 2) << "what fades away no longer answers";
}

TEST_F(UITouchTest, ButtonActsWhereTheFingerLifts) {
    const auto button = std::dynamic_pointer_cast<UIButton>(item->view());
    began(onButton());
    EXPECT_TRUE(button->isHighlighted());
    moved(onFractal, 0.1);
    EXPECT_FALSE(button->isHighlighted());
    moved(onButton(), 0.2);
    EXPECT_TRUE(button->isHighlighted());
    ended(onButton(), 5);
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_EQ(presses, 1);

    began(onButton(), 6);
    ended(onFractal, 6.1);
    EXPECT_EQ(presses, 1) << "lifted elsewhere";
    began(onButton(), 7);
    window->cancelTouches();
    EXPECT_FALSE(button->isHighlighted());
    began(onButton(), 9, 1);
    began(onButton(), 9, 2);
    ended(onButton(), 9.1, 2);
    EXPECT_EQ(presses, 1) << "a second finger neither presses nor blocks";
    ended(onButton(), 9.2, 1);
    EXPECT_EQ(presses, 2) << "works on after a cancelled touch";
    EXPECT_THAT(spy->story, IsEmpty());
    EXPECT_EQ(taps, 0);
}

TEST_F(UITouchTest, KeyLightsTheButtonUp) {
    item->sendAction();
    EXPECT_EQ(presses, 1);
    const auto glow = item->view()->subviews().front();
    EXPECT_EQ(glow->presentationAlpha(), 1);
    ViewAnimator::shared().step(0);
    ViewAnimator::shared().step(1);
    EXPECT_EQ(glow->presentationAlpha(), 0);
}

TEST_F(UITouchTest, ButtonMayTakeItsBarAway) {
    item->setAction([this](const auto&) {
        bar->removeFromSuperview();
        bar.reset();
        item.reset();
    });
    const CGPoint at = onButton();
    began(at);
    ended(at, 0.1);
    EXPECT_TRUE(fractal->subviews().empty());
}

TEST_F(UITouchTest, TapIsShortAndStill) {
    const std::tuple<const char*, CGPoint, double, int> table[] = {
        {"10 points", {6, 8}, 0.1, 1},
        {"just over 10 points", {6.1, 8}, 0.1, 0},
        {"0.75 s", {0, 0}, 0.75, 1},
        {"longer", {0, 0}, 0.7501, 0},
    };
    double time = 0;
    for (const auto& [name, by, duration, expected] : table) {
        taps = 0;
        began(onFractal, time);
        moved({onFractal.x + by.x, onFractal.y + by.y}, time);
        moved(onFractal, time);
        ended(onFractal, time + duration);
        EXPECT_EQ(taps, expected) << name;
        taps = 0;
        began(onFractal, time + 1);
        ended({onFractal.x + by.x, onFractal.y + by.y}, time + 1 + duration);
        EXPECT_EQ(taps, expected) << name << ", seen at the lift only";
        time += 10;
    }
}

TEST_F(UITouchTest, TwoFingersAreNoTap) {
    began(onFractal, 0, 1);
    began({200, 100}, 0.05, 2);
    ended({200, 100}, 0.1, 2);
    ended(onFractal, 0.15, 1);
    EXPECT_EQ(taps, 0);
    EXPECT_THAT(spy->story, ElementsAre("began 1 of 1", "began 2 of 2", "ended 2 of 2", "ended 1 of 1"));
}

TEST_F(UITouchTest, CancelledTouchesLeaveNothingBehind) {
    began(onFractal, 0, 1);
    began(onFractal, 0, 2);
    window->cancelTouches();
    EXPECT_THAT(fractal->story,
                ElementsAre("began 1 of 1", "began 2 of 2", "cancelled 1 of 2", "cancelled 2 of 1"));
    moved(onFractal, 0.1, 1);
    ended(onFractal, 0.1, 1);
    EXPECT_EQ(taps, 0);
    EXPECT_EQ(fractal->story.size(), 4u) << "the rest of a cancelled touch";
    EXPECT_THAT(log.lines, IsEmpty());
    began(onFractal, 1, 2);
    ended(onFractal, 1.1, 2);
    EXPECT_EQ(taps, 1);
}

TEST_F(UITouchTest, NonsenseFromTheHostIsDroppedWithALine) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    began(onFractal, 1);
    const struct {
        const char* name;
        UITouchPhase phase;
        CGPoint at;
        double time;
        int64_t finger;
    } nonsense[] = {
        {"unknown finger", UITouchPhase::moved, onFractal, 1, 7},
        {"second landing", UITouchPhase::began, onFractal, 1, 1},
        {"move in the past", UITouchPhase::moved, onFractal, 0.5, 1},
        {"move to nowhere", UITouchPhase::moved, {nan, 0}, 1, 1},
        {"landing at no time", UITouchPhase::began, onFractal, nan, 3},
    };
    for (const auto& [name, phase, at, time, finger] : nonsense) {
        log.lines.clear();
        send(phase, at, time, finger);
        EXPECT_EQ(log.lines.size(), 1u) << name;
    }
    EXPECT_EQ(fractal->story.size(), 1u);
    log.lines.clear();
    ended({nan, nan}, 0.2);
    EXPECT_THAT(log.lines, IsEmpty()) << "a lift always counts";
    EXPECT_EQ(taps, 1);
}

}  // namespace
