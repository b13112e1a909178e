// The bar's layout on real screens, with the app's own storyboard, and on impossible ones.
// Buttons must stay large enough for fingers and on the screen.
#include "platform/ui/ui_toolbar.h"

#include <gtest/gtest.h>

#include "screens/swallow_touches_view.h"
#include "tests/platform/ui/main_storyboard.h"
#include "tests/support/recording_canvas.h"

namespace {

constexpr CGFloat smallestTarget = 44;

std::vector<CGRect> buttonsOf(const UIToolbar& bar) {
    std::vector<CGRect> frames;
    for (const auto& item : bar.items()) {
        if (const auto view = item->view()) frames.push_back(view->convertRectToWindow(view->bounds()));
    }
    return frames;
}

void expectApart(const std::vector<CGRect>& frames, CGFloat left, CGFloat right) {
    CGFloat former = left;
    for (const CGRect& frame : frames) {
        EXPECT_GE(CGRectGetMinX(frame), former);
        EXPECT_GE(frame.size.width, 0);
        former = CGRectGetMaxX(frame);
    }
    EXPECT_LE(former, right);
}

class ToolbarOnScreen : public testing::TestWithParam<CGSize> {};

TEST_P(ToolbarOnScreen, ButtonsAreLargeApartAndInside) {
    const CanvasProviderGuard provider;
    const CGSize screen = GetParam();
    const MainStoryboard scene(screen);
    ASSERT_NE(scene.bar, nullptr);
    const CGRect bar = scene.bar->convertRectToWindow(scene.bar->bounds());
    EXPECT_GE(CGRectGetMinX(bar), 0);
    EXPECT_LE(CGRectGetMaxX(bar), screen.width);
    EXPECT_LE(CGRectGetMaxY(bar), screen.height);

    const auto frames = buttonsOf(*scene.bar);
    ASSERT_EQ(frames.size(), 8u);
    expectApart(frames, CGRectGetMinX(bar), CGRectGetMaxX(bar));
    for (const CGRect& frame : frames) {
        EXPECT_GE(frame.size.width, smallestTarget);
        EXPECT_GE(frame.size.height, smallestTarget);
        EXPECT_EQ(frame.origin.x, std::floor(frame.origin.x)) << "sharp on every screen";
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, ToolbarOnScreen,
                         testing::Values(CGSizeMake(844, 390), CGSizeMake(1180, 820), CGSizeMake(1280, 720),
                                         CGSizeMake(568, 320), CGSizeMake(3440, 1440), CGSizeMake(480, 800),
                                         CGSizeMake(843.5, 389.5)));

TEST(UIToolbar, ShrinksButNeverOverlaps) {
    const CanvasProviderGuard provider;
    for (const CGFloat width : {400.0, 352.0, 351.0, 200.0, 40.0, 1.0, 0.0}) {
        UIToolbar::Items items;
        for (int i = 0; i < 8; ++i)
            items.push_back(std::make_shared<UIBarButtonItem>());
        const auto bar = std::make_shared<UIToolbar>(CGRectMake(0, 0, width, 56));
        bar->setItems(items);
        bar->layoutIfNeeded();
        const auto frames = buttonsOf(*bar);
        expectApart(frames, 0, width);
        if (width < 352) continue;
        for (const CGRect& frame : frames)
            EXPECT_EQ(frame.size.width, smallestTarget) << width;
    }
}

TEST(UIToolbar, SpreadsItsButtonsEvenlyWithoutSpaces) {
    const CanvasProviderGuard provider;
    const auto bar = std::make_shared<UIToolbar>(CGRectMake(0, 0, 1000, 56));
    UIToolbar::Items items;
    for (int i = 0; i < 3; ++i)
        items.push_back(std::make_shared<UIBarButtonItem>());
    bar->setItems(items);
    bar->layoutIfNeeded();
    const auto frames = buttonsOf(*bar);
    EXPECT_NEAR(CGRectGetMidX(frames[1]), 500, 1);
    EXPECT_NEAR(frames[0].origin.x, 1000 - CGRectGetMaxX(frames[2]), 1);
    EXPECT_GT(frames[0].origin.x, 100);
}

TEST(UIToolbar, RemovedItemLosesItsButtonAndTheOthersStay) {
    const CanvasProviderGuard provider;
    const auto bar = std::make_shared<UIToolbar>(CGRectMake(0, 0, 844, 56));
    UIToolbar::Items items;
    for (const char* title : {"a", "b", "c"}) {
        items.push_back(std::make_shared<UIBarButtonItem>());
        items.back()->setTitle(title);
    }
    bar->setItems(items);
    const auto kept = items[2]->view();
    const auto removed = items[1];
    items.erase(items.begin() + 1);
    bar->setItems(items);
    EXPECT_EQ(bar->subviews().size(), 2u);
    EXPECT_EQ(removed->view(), nullptr);
    EXPECT_EQ(items[1]->view(), kept);
    EXPECT_EQ(std::any_cast<std::shared_ptr<UIView>>(items[1]->valueForKey("view")), kept);
}

TEST(UIToolbar, KeepsToItsMaximumWidthAndLeavesTheRestAlone) {
    const CanvasProviderGuard provider;
    const auto bar = std::make_shared<UIToolbar>(CGRectMake(0, 0, 1001, 56));
    bar->setBackgroundColor(UIColor::black());
    bar->setMaximumWidth(400);
    bar->setItems({std::make_shared<UIBarButtonItem>(), std::make_shared<UIBarButtonItem>()});
    bar->layoutIfNeeded();
    expectApart(buttonsOf(*bar), 300, 700);
    EXPECT_EQ(bar->hitTest({299, 20}), nullptr);
    EXPECT_EQ(bar->hitTest({301, 20}), bar);
    EXPECT_EQ(bar->hitTest({701, 20}), nullptr);
    RecordingCanvas canvas;
    bar->paint(canvas);
    EXPECT_EQ(canvas.calls.front(), "fill {{300, 0}, {400, 56}}");
    bar->setFrame(CGRectMake(0, 0, 300, 56));
    bar->layoutIfNeeded();
    expectApart(buttonsOf(*bar), 0, 300);
    EXPECT_EQ(bar->hitTest({1, 20}), bar);
}

TEST(UIBarButtonItem, SymbolsForTitlesAreDrawn) {
    const CanvasProviderGuard provider;
    const auto bar = std::make_shared<UIToolbar>(CGRectMake(0, 0, 844, 56));
    const auto item = std::make_shared<UIBarButtonItem>();
    const auto ring = UIImage::imageWithGlyph({}, {24, 24});
    item->setImageForTitle("\u25CE", ring);
    item->setTitle("\u25CE");
    bar->setItems({item});
    const auto button = std::dynamic_pointer_cast<UIButton>(item->view());
    EXPECT_EQ(button->contentSize(), CGSizeMake(24, 24));
    EXPECT_EQ(button->title(), "");
    item->setTitle("0");
    EXPECT_EQ(button->title(), "0");
    EXPECT_NE(button->contentSize(), CGSizeMake(24, 24));
    item->setTitle("\u25CE");
    EXPECT_EQ(button->contentSize(), CGSizeMake(24, 24));
    EXPECT_EQ(item->title(), "\u25CE") << "what the app sees";
}

TEST(UIBarButtonItem, LongerTitleWidensTheButton) {
    const CanvasProviderGuard provider;
    const auto bar = std::make_shared<UIToolbar>(CGRectMake(0, 0, 844, 56));
    const auto item = std::make_shared<UIBarButtonItem>();
    item->setTitle("0");
    bar->setItems({item});
    bar->layoutIfNeeded();
    EXPECT_EQ(item->view()->frame().size.width, smallestTarget);
    EXPECT_TRUE(item->setValueForKey(std::string("as fast as it can"), "title"));
    bar->layoutIfNeeded();
    EXPECT_GT(item->view()->frame().size.width, 2 * smallestTarget);
    EXPECT_EQ(std::dynamic_pointer_cast<UIButton>(item->view())->title(), "as fast as it can");
}

}  // namespace
