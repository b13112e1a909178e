// The bar's layout on real screens, with the app's own storyboard, and on impossible ones.
// Buttons must stay large enough for fingers and on the screen.
#include "platform/ui/ui_toolbar.h"

#include <cmath>
#include <gtest/gtest.h>

#include "tests/support/headless_screen.h"
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

using ToolbarOnScreen = HeadlessScreenTest;

TEST_F(ToolbarOnScreen, ButtonsAreLargeApartAndInside) {
    for (const CGSize size : {CGSizeMake(844, 390), CGSizeMake(3440, 1440), CGSizeMake(480, 800),
                              CGSizeMake(568, 320), CGSizeMake(843.5, 389.5)}) {
        SCOPED_TRACE(NSStringFromCGSize(size));
        launch({size, 1});
        host->step();
        const CGRect bar = screen->menuView->convertRectToWindow(screen->menuView->bounds());
        EXPECT_EQ(CGRectUnion(bar, CGRectMake(0, 0, size.width, size.height)).size, size) << "inside";
        const auto frames = buttonsOf(*screen->menuView);
        ASSERT_EQ(frames.size(), 8u);
        expectApart(frames, CGRectGetMinX(bar), CGRectGetMaxX(bar));
        for (const CGRect& frame : frames) {
            EXPECT_GE(frame.size.width, smallestTarget);
            EXPECT_GE(frame.size.height, smallestTarget);
            EXPECT_EQ(frame.origin.x, std::floor(frame.origin.x)) << "sharp on every screen";
        }
    }
}

class UIToolbarTest : public testing::Test {
  protected:
    /// The bar at a width, with so many buttons.
    void layOut(CGFloat width, std::size_t count) {
        while (items.size() < count)
            items.push_back(std::make_shared<UIBarButtonItem>());
        bar->setFrame(CGRectMake(0, 0, width, 56));
        bar->setItems(items);
        bar->layoutIfNeeded();
    }

    CanvasProviderGuard provider;
    std::shared_ptr<UIToolbar> bar = std::make_shared<UIToolbar>(CGRectZero);
    UIToolbar::Items items;
};

TEST_F(UIToolbarTest, KeepsToItsMaximumWidthAndLeavesTheRestAlone) {
    bar->setBackgroundColor(UIColor::black());
    bar->setMaximumWidth(400);
    layOut(1001, 2);
    expectApart(buttonsOf(*bar), 300, 700);
    EXPECT_EQ(bar->hitTest({299, 20}), nullptr);
    EXPECT_EQ(bar->hitTest({301, 20}), bar);
    EXPECT_EQ(bar->hitTest({701, 20}), nullptr);
    RecordingCanvas canvas;
    bar->paint(canvas);
    EXPECT_EQ(canvas.calls.front(), "fill {{300, 0}, {400, 56}}");
}

TEST_F(UIToolbarTest, SymbolsForTitlesAreDrawnAndLongTitlesWidenTheButton) {
    layOut(844, 1);
    const auto item = items.front();
    const auto button = std::dynamic_pointer_cast<UIButton>(item->view());
    item->setImageForTitle("\u25CE", UIImage::imageWithGlyph({}, {24, 24}));
    item->setTitle("\u25CE");
    EXPECT_EQ(button->contentSize(), CGSizeMake(24, 24));
    EXPECT_EQ(button->title(), "");
    EXPECT_EQ(item->title(), "\u25CE") << "what the app sees";
    item->setTitle("0");
    EXPECT_NE(button->contentSize(), CGSizeMake(24, 24));
    bar->layoutIfNeeded();
    EXPECT_EQ(button->frame().size.width, smallestTarget);
    EXPECT_TRUE(item->setValueForKey(std::string("as fast as it can"), "title"));
    bar->layoutIfNeeded();
    EXPECT_GT(button->frame().size.width, 2 * smallestTarget);
    EXPECT_EQ(button->title(), "as fast as it can");
}

}  // namespace
