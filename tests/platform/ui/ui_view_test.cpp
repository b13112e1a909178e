// The tree of views: autoresizing, hit testing, painting, labels.
// Painting is looked at through a canvas that records its calls.
#include <gmock/gmock.h>

#include "platform/ui/ui_control.h"
#include "platform/ui/ui_window.h"
#include "tests/support/recording_canvas.h"

namespace {

using testing::ElementsAre;
using Lines = std::vector<std::string>;

std::shared_ptr<UIView> makeView(CGRect frame, UIColor color = UIColor::clear()) {
    auto view = std::make_shared<UIView>(frame);
    view->setBackgroundColor(color);
    return view;
}

TEST(UIView, AutoresizingGivesTheGrowthToWhatIsFlexible) {
    // From 100 x 100 to 200 x 300; margins 10, 60 across and 20, 40 down.
    const CGRect start = CGRectMake(10, 20, 30, 40);
    const std::tuple<const char*, uint32_t, CGRect> table[] = {
        {"width and top margin", UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleTopMargin,
         CGRectMake(10, 220, 130, 40)},
        {"width and height", UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight,
         CGRectMake(10, 20, 130, 240)},
    };
    for (const auto& [name, mask, expected] : table) {
        const auto parent = makeView(CGRectMake(0, 0, 100, 100));
        const auto child = makeView(start);
        child->setAutoresizingMask(mask);
        parent->addSubview(child);
        parent->setFrame(CGRectMake(0, 0, 200, 300));
        EXPECT_EQ(child->frame(), expected) << name;
        parent->setFrame(CGRectMake(0, 0, 100, 100));
        EXPECT_EQ(child->frame(), start) << name << ", and back";
    }
}

TEST(UIView, HitTestFindsTheFrontMostThatAnswers) {
    const auto root = makeView(CGRectMake(0, 0, 100, 100));
    const auto back = makeView(CGRectMake(10, 10, 50, 50));
    const auto front = makeView(CGRectMake(30, 30, 50, 50));
    root->addSubview(back);
    root->addSubview(front);
    const CGPoint both = CGPointMake(40, 40);
    EXPECT_EQ(root->hitTest(both), front);
    EXPECT_EQ(root->hitTest({15, 15}), back);
    EXPECT_EQ(root->hitTest({100, 5}), nullptr) << "the right edge is outside";
    front->setHidden(true);
    EXPECT_EQ(root->hitTest(both), back);
    front->setHidden(false);
    front->setAlpha(0.005);
    EXPECT_EQ(root->hitTest(both), back);
    front->setAlpha(1);
    front->setUserInteractionEnabled(false);
    EXPECT_EQ(root->hitTest(both), back);
}

TEST(UIView, PaintsBackToFrontWithoutClipping) {
    const auto root = makeView(CGRectMake(0, 0, 100, 100));
    const auto panel = makeView(CGRectMake(10, 10, 40, 40), UIColor::black());
    const auto sticksOut = makeView(CGRectMake(30, 30, 40, 40), UIColor::white());
    const auto rounded = makeView(CGRectMake(0, 0, 20, 20), UIColor::white());
    rounded->setCornerRadius(4);
    root->addSubview(panel);
    panel->addSubview(sticksOut);
    root->addSubview(rounded);
    RecordingCanvas canvas;
    root->paint(canvas);
    EXPECT_THAT(canvas.calls, ElementsAre("fill {{10, 10}, {40, 40}}", "fill {{40, 40}, {40, 40}}",
                                          "fill path {{0, 0}, {20, 20}}"));
    EXPECT_TRUE(canvas.isBalanced());
    EXPECT_EQ(root->paintedFrame(), CGRectMake(0, 0, 80, 80));
}

TEST(UIView, LayersOnlyWhereSomethingIsSeenThrough) {
    const auto root = makeView(CGRectMake(0, 0, 100, 100));
    const auto panel = makeView(CGRectMake(10, 10, 40, 40), UIColor::black());
    root->addSubview(panel);
    const auto painted = [&] {
        RecordingCanvas canvas;
        root->paint(canvas);
        return canvas.calls;
    };
    const std::string fill = "fill {{10, 10}, {40, 40}}";
    EXPECT_EQ(painted(), Lines{fill});
    panel->setAlpha(0.5);
    EXPECT_EQ(painted(), (Lines{"clip {{-6, -6}, {72, 72}}", "layer 0.5", fill, "end layer"}));
    panel->setAlpha(0);
    EXPECT_EQ(painted(), Lines{});
    EXPECT_TRUE(CGRectIsNull(root->paintedFrame()));
    panel->setAlpha(1);
    panel->setHidden(true);
    EXPECT_EQ(painted(), Lines{});
    panel->removeFromSuperview();
    root->setAlpha(0.5);
    EXPECT_EQ(painted(), Lines{}) << "no layer for nothing";
}

TEST(UIView, OverlayIsRepaintedAfterEveryVisibleChange) {
    const auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 100, 100));
    const auto view = makeView(CGRectMake(0, 0, 10, 10));
    const auto label = std::make_shared<UILabel>(CGRectMake(0, 0, 10, 10));
    window->addSubview(view);
    view->addSubview(label);
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"alpha", [&] { view->setAlpha(0.5); }},
        {"frame", [&] { view->setFrame(CGRectMake(1, 0, 10, 10)); }},
        {"hidden", [&] { view->setHidden(true); }},
        {"shown", [&] { view->setHidden(false); }},
        {"background", [&] { view->setBackgroundColor(UIColor::black()); }},
        {"text", [&] { label->setText("Zoom"); }},
        {"removal", [&] { view->removeFromSuperview(); }},
        {"return", [&] { window->addSubview(view); }},
    };
    for (const auto& [name, change] : changes) {
        window->takeOverlayDirty();
        change();
        EXPECT_TRUE(window->takeOverlayDirty()) << name;
    }
    view->setHidden(false);
    label->setText("Zoom");
    EXPECT_FALSE(window->takeOverlayDirty()) << "nothing changed";
}

TEST(UILabel, TakesTheSizeOfItsWrappedText) {
    const CanvasProviderGuard provider;
    UILabel label(CGRectMake(5, 6, 60, 0));
    label.setFont(UIFont::systemFontOfSize(10));
    label.setText("0123456789012345678");  // 95 points wide in one line
    label.setNumberOfLines(0);
    label.sizeToFit();
    EXPECT_EQ(label.frame(), CGRectMake(5, 6, 60, 20));
    label.setText("a\nbcd\ne");
    label.sizeToFit();
    EXPECT_EQ(label.frame(), CGRectMake(5, 6, 15, 30));
}

}  // namespace
