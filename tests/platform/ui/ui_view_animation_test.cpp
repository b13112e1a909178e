// View animations through whole stories: eased, interrupted, replaced, delayed, outlived.
// Every completion must run once, and nothing be painted that did not change.
#include <gtest/gtest.h>

#include "platform/ui/ui_view.h"
#include "platform/ui/ui_window.h"
#include "platform/ui/view_animator.h"

namespace {

class UIViewAnimationTest : public testing::Test {
  protected:
    UIViewAnimationTest() { step(10); }
    ~UIViewAnimationTest() override { ViewAnimator::shared().reset(); }

    static void step(double time) { ViewAnimator::shared().step(time); }
    UIView::Completion note(const std::string& name) {
        return [this, name](bool finished) {
            story.push_back(name + (finished ? " finished" : " interrupted"));
        };
    }
    void fade(const std::string& name, double alpha, double duration = 1, double delay = 0) {
        UIView::animateWithDuration(
            duration, delay, UIViewAnimationOptionNone, [&] { view->setAlpha(alpha); }, note(name));
    }
    using Story = std::vector<std::string>;
    std::shared_ptr<UIView> view = std::make_shared<UIView>(CGRectMake(10, 20, 100, 50));
    Story story;
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

TEST_F(UIViewAnimationTest, WithoutTheOptionItStartsAtTheValueLastSet) {
    fade("out", 0);
    step(10.5);
    fade("in", 1);
    EXPECT_EQ(view->presentationAlpha(), 0);
    step(11.5);
    EXPECT_EQ(story, (Story{"out interrupted", "in finished"}));
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

TEST_F(UIViewAnimationTest, DeadViewEndsItsAnimationUnfinished) {
    fade("fade", 0);
    step(10.5);
    view.reset();
    step(10.6);
    EXPECT_EQ(story, Story{"fade interrupted"});
    EXPECT_FALSE(ViewAnimator::shared().isRunning());
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
