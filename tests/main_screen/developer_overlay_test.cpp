// The developers' overlay: what it says of the frame and of the moment, and where it marks targets.
// On the whole app it must come and go with its key, and take no touch.
#include <gmock/gmock.h>

#include "main_screen/developer_overlay_view.h"
#include "tests/support/headless_screen.h"
#include "tests/support/recording_canvas.h"

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

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
