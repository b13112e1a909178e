// The developers' overlay: what it says of the frame and of the moment, and where it marks targets.
// On the whole app it must come and go with its key, and take no touch.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "main_screen/developer_overlay_view.h"
#include "tests/support/headless_screen.h"
#include "tests/support/recording_canvas.h"

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(DeveloperOverlay, ShowsTheFiguresOfTheMomentAndMarksTargetsWhereTheyLie) {
    DeveloperFigures figures;
    figures.dwell = 236;
    figures.bounds = CGRectMake(-2, -1, 4, 2);
    // The middle, a small one at the left edge, one that lies outside.
    figures.targets = {CGRectMake(-0.2, -0.1, 0.4, 0.2), CGRectMake(-2.0001, -0.0001, 0.0002, 0.0002),
                       CGRectMake(8, 8, 1, 1)};
    figures.tweens = {"fractalBounds of a flight"};
    DeveloperOverlayView overlay(CGRectMake(0, 0, 800, 400), [&] { return figures; });
    for (int frame = 0; frame < 500; ++frame)
        overlay.noteFrame(frame == 499 ? 1000.0F : 20.0F);
    for (int id = 0; id < 40; ++id)
        overlay.noteEvent(HostTouch{UITouchPhase::began, id, CGPointMake(1, 2), 0.5});

    RecordingCanvas canvas;
    overlay.drawRect(canvas, overlay.bounds());
    EXPECT_THAT(canvas.calls, Contains(StartsWith("text \"frame 1000.0 ms, uDwell 236, targets 3\"")));
    EXPECT_THAT(canvas.calls, Contains(StartsWith("text \"at -2, -1\"")));
    EXPECT_THAT(canvas.calls, Contains(StartsWith("text \"size 4 x 2\"")));
    EXPECT_THAT(canvas.calls, Contains(HasSubstr("fractalBounds of a flight")));
    EXPECT_THAT(canvas.calls, Contains(HasSubstr("touch began 39")));
    EXPECT_THAT(canvas.calls, Not(Contains(HasSubstr("touch began 1 "))));
    EXPECT_THAT(canvas.calls, Contains("stroke {{360, 180}, {80, 40}}"));
    EXPECT_THAT(canvas.calls, Contains("stroke {{-5, 195}, {10, 10}}"));
    EXPECT_EQ(std::ranges::count_if(canvas.calls, [](const auto& c) { return c.starts_with("stroke"); }), 2);
}

using DeveloperOverlayOnScreen = HeadlessScreenTest;

TEST_F(DeveloperOverlayOnScreen, ComesAndGoesWithItsKeyAndLeavesTouchesAlone) {
    launch({{640, 360}, 1});
    host->play(0.1);
    const auto pixel = [&] { return host->screenPicture()->colorAt(16, 100); };
    const auto plain = pixel();
    host->press(HostKey::f1);
    host->play(0.1);
    EXPECT_NE(pixel(), plain);
    host->tap({40, 60});
    EXPECT_TRUE(screen->isMenuHiding());
    host->tap({40, 60});
    host->press(HostKey::f1);
    host->press(HostKey::character);
    host->play(0.1);
    EXPECT_FALSE(screen->isMenuHiding());
    EXPECT_EQ(screen->view()->hitTest({40, 60}), screen->view());
}
