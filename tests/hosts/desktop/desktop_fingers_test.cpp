// Fingers injected into SDL, on their way through the window's loop to the fractal.
// The app runs in the test's own process, in a window on a virtual display; a script plays a step a frame.
#include <SDL.h>
#include <gtest/gtest.h>

#include "app/ios_app_delegate.h"
#include "hosts/desktop/desktop_host.h"
#include "hosts/native/native_services.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ca_display_link.h"
#include "tests/support/environment_variable.h"
#include "tests/support/seen_tour.h"
#include "tests/support/virtual_display.h"

namespace {

class ScriptedDelegate : public iOSAppDelegate {
  public:
    bool applicationDidFinishLaunching() override {
        const bool launched = iOSAppDelegate::applicationDidFinishLaunching();
        std::make_shared<CADisplayLink>([this](CADisplayLink&) {
            play(_frame++);
        })->addToRunLoop(NSRunLoop::currentRunLoop());
        return launched;
    }
    bool isOver = false;

  private:
    // Focus and size come and go while a window opens.
    static constexpr int settled = 10;
    static constexpr int moves = 12;
    static constexpr int rest = 60;

    static void send(SDL_Event event) { SDL_PushEvent(&event); }
    static void fingers(uint32_t type, float apart) {
        for (const int side : {-1, 1}) {
            SDL_Event event{};
            event.type = type;
            event.tfinger.touchId = 5;
            event.tfinger.fingerId = side + 2;
            event.tfinger.x = (320 + static_cast<float>(side) * apart / 2) / 640;
            event.tfinger.y = 150.0F / 360;
            send(event);
        }
    }
    void play(int frame) {
        auto& screen = dynamic_cast<GameViewController&>(*window()->rootViewController());
        const CGRect bounds = screen.shader()->fractalBounds();
        const int move = frame - settled;
        if (move == 0) {
            _before = bounds;
            fingers(SDL_FINGERDOWN, 40);
        } else if (move > 0 && move <= moves) {
            fingers(SDL_FINGERMOTION, static_cast<float>(40 + 8 * move));
        } else if (move == moves + 1) {
            fingers(SDL_FINGERUP, 40 + 8 * moves);
        } else if (move == moves + rest) {
            EXPECT_LT(bounds.size.width, 0.6 * _before.size.width);
            EXPECT_GT(bounds.size.width, 0.1 * _before.size.width);
            EXPECT_NEAR(CGRectGetMidX(bounds), CGRectGetMidX(_before), 1e-6);
            EXPECT_NEAR(CGRectGetMidY(bounds), CGRectGetMidY(_before), 1e-6);
            EXPECT_FALSE(screen.isMenuHiding()) << "no finger of it tapped";
            isOver = true;
            SDL_Event quit{};
            quit.type = SDL_QUIT;
            send(quit);
        }
    }

    int _frame = 0;
    CGRect _before;
};

TEST(DesktopFingers, TwoPinchTheFractal) {
    const VirtualDisplay display;
    if (!display.isAvailable()) GTEST_SKIP() << "Xvfb is not installed";
    const EnvironmentVariable x11("DISPLAY", display.name());
    const EnvironmentVariable wayland("WAYLAND_DISPLAY", std::nullopt);
    const NativeServices services(nullptr, ZENTARO_RESOURCES_DIR);
    countTourAsSeen();
    const auto delegate = std::make_shared<ScriptedDelegate>();
    const DesktopResult result = runDesktop({{640, 360}, 1.0}, [&] { return delegate; });
    EXPECT_EQ(result.end, DesktopEnd::closed) << result.why;
    EXPECT_TRUE(delegate->isOver);
}

}  // namespace
