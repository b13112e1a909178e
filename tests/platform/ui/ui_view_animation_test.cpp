// View animations through whole stories: interrupted, replaced, delayed, chained, outlived.
// What is on screen must never jump, and every completion must run once.
#include <cmath>
#include <gtest/gtest.h>

#include "platform/ui/ui_view.h"
#include "platform/ui/ui_window.h"
#include "platform/ui/view_animator.h"

namespace {

constexpr double shownAlpha = 0.85;
constexpr double frameTime = 1.0 / 60;

class UIViewAnimationTest : public testing::Test {
  protected:
    UIViewAnimationTest() { step(10); }
    ~UIViewAnimationTest() override { ViewAnimator::shared().reset(); }

    void step(double time) {
        now = time;
        ViewAnimator::shared().step(time);
    }
    /// Frame by frame; answers the largest change of the view's opacity between two frames.
    double play(double duration) {
        double largest = 0;
        for (const double end = now + duration; now < end - 1e-9;) {
            const double before = view->presentationAlpha();
            step(std::min(now + frameTime, end));
            largest = std::max(largest, std::abs(view->presentationAlpha() - before));
        }
        return largest;
    }
    UIView::Completion note(const std::string& name) {
        return [this, name](bool finished) {
            story.push_back(name + (finished ? " finished" : " interrupted"));
        };
    }
    void fade(const std::string& name, double alpha, double duration = 1, double delay = 0,
              uint32_t options = UIViewAnimationOptionNone) {
        UIView::animateWithDuration(
            duration, delay, options, [&] { view->setAlpha(alpha); }, note(name));
    }
    void spring(const std::string& name, double alpha, double duration) {
        UIView::animateWithSpring(
            duration, 0, 1.5, 2.0, UIViewAnimationOptionBeginFromCurrentState, [&] { view->setAlpha(alpha); },
            note(name));
    }

    using Story = std::vector<std::string>;
    std::shared_ptr<UIView> view = std::make_shared<UIView>(CGRectMake(10, 20, 100, 50));
    Story story;
    double now = 0;
};

TEST_F(UIViewAnimationTest, ValueIsSetAtOnceAndTheScreenFollowsWithEasing) {
    fade("fade", 0);
    EXPECT_EQ(view->alpha(), 0);
    EXPECT_EQ(view->presentationAlpha(), 1);
    step(10.1);
    const double early = 1 - view->presentationAlpha();
    EXPECT_LT(early, 0.05);
    step(10.5);
    EXPECT_DOUBLE_EQ(view->presentationAlpha(), 0.5);
    step(10.9);
    EXPECT_NEAR(view->presentationAlpha(), early, 1e-12);
    EXPECT_EQ(story, Story{});
    step(11);
    EXPECT_EQ(view->presentationAlpha(), 0);
    EXPECT_EQ(story, Story{"fade finished"});
    EXPECT_FALSE(ViewAnimator::shared().isRunning());
}

TEST_F(UIViewAnimationTest, MenuHiddenShownAndHiddenMidFlightNeverJumps) {
    view->setAlpha(shownAlpha);
    spring("hide", 0, 0.5);
    double largest = play(0.1);
    EXPECT_LT(view->presentationAlpha(), shownAlpha);
    spring("show", shownAlpha, 0.75);
    largest = std::max(largest, play(0.1));
    EXPECT_EQ(story, Story{"hide interrupted"});
    spring("hide again", 0, 0.5);
    largest = std::max(largest, play(1));
    EXPECT_EQ(story, (Story{"hide interrupted", "show interrupted", "hide again finished"}));
    EXPECT_EQ(view->presentationAlpha(), 0);
    // The fastest these springs ever move is some ten distances a second.
    EXPECT_LT(largest, shownAlpha * 10.5 * frameTime);
}

TEST_F(UIViewAnimationTest, WithoutTheOptionItStartsAtTheValueLastSet) {
    fade("out", 0);
    step(10.5);
    fade("in", 1);
    EXPECT_EQ(view->presentationAlpha(), 0);
    fade("half", 0.5, 1, 0, UIViewAnimationOptionBeginFromCurrentState);
    EXPECT_EQ(view->presentationAlpha(), 0);
    step(11.5);
    EXPECT_EQ(story, (Story{"out interrupted", "in interrupted", "half finished"}));
}

TEST_F(UIViewAnimationTest, PlainSetEndsTheAnimation) {
    fade("fade", 0);
    step(10.5);
    view->setAlpha(0.3);
    EXPECT_EQ(view->presentationAlpha(), 0.3);
    step(10.6);
    EXPECT_EQ(story, Story{"fade interrupted"});
    step(12);
    EXPECT_EQ(view->presentationAlpha(), 0.3);
    EXPECT_EQ(story.size(), 1u);
}

TEST_F(UIViewAnimationTest, OneOfTwoChangesReplacedLetsTheOtherFinish) {
    UIView::animateWithDuration(
        1, 0, UIViewAnimationOptionNone,
        [&] {
            view->setAlpha(0);
            view->setFrame(CGRectMake(110, 20, 100, 50));
        },
        note("both"));
    step(10.5);
    view->setAlpha(1);
    EXPECT_EQ(view->presentationFrame(), CGRectMake(60, 20, 100, 50));
    step(11);
    EXPECT_EQ(story, Story{"both finished"});
    EXPECT_EQ(view->presentationFrame(), view->frame());
}

TEST_F(UIViewAnimationTest, CompletionsRunInTheOrderOfTheEndsWhateverTheStep) {
    auto other = std::make_shared<UIView>();
    auto third = std::make_shared<UIView>();
    fade("long", 0, 2);
    UIView::animateWithDuration(
        0.5, 0, 0, [&] { other->setAlpha(0); }, note("short"));
    UIView::animateWithDuration(
        2, 0, 0, [&] { third->setAlpha(0); }, note("long too"));
    step(30);
    EXPECT_EQ(story, (Story{"short finished", "long finished", "long too finished"}));
}

TEST_F(UIViewAnimationTest, DeadViewEndsItsAnimationUnfinished) {
    fade("fade", 0);
    step(10.5);
    view.reset();
    step(10.6);
    EXPECT_EQ(story, Story{"fade interrupted"});
    EXPECT_FALSE(ViewAnimator::shared().isRunning());
}

TEST_F(UIViewAnimationTest, SubviewsAreResizedAlong) {
    auto child = std::make_shared<UIView>(CGRectMake(0, 0, 100, 50));
    child->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    view->addSubview(child);
    UIView::animateWithDuration(1, 0, 0, [&] { view->setFrame(CGRectMake(10, 20, 300, 50)); });
    step(10.5);
    EXPECT_EQ(child->presentationFrame().size.width, 200);
    EXPECT_EQ(child->frame().size.width, 300);
}

TEST_F(UIViewAnimationTest, DelayHoldsThePictureAndOnlyWhatMovesIsRepainted) {
    auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 200, 200));
    window->addSubview(view);
    window->takeOverlayDirty();
    step(10.1);
    EXPECT_FALSE(window->takeOverlayDirty());
    fade("late", 0, 0.5, 1);
    EXPECT_TRUE(window->takeOverlayDirty());
    step(10.5);
    EXPECT_FALSE(window->takeOverlayDirty()) << "a delay changes nothing";
    EXPECT_EQ(view->presentationAlpha(), 1);
    step(11.35);
    EXPECT_TRUE(window->takeOverlayDirty());
    EXPECT_DOUBLE_EQ(view->presentationAlpha(), 0.5);
    EXPECT_EQ(story, Story{});
    step(12);
    EXPECT_EQ(story, Story{"late finished"});
    EXPECT_TRUE(window->takeOverlayDirty()) << "the end value was never painted";
    step(12.1);
    EXPECT_FALSE(window->takeOverlayDirty());
}

}  // namespace
