// Fingers, wheel and gestures injected into SDL, on their way through the window's loop to the fractal.
// The app runs in the test's own process, in a window on a virtual display; a script plays a step a frame.
#include <SDL.h>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "app/ios_app_delegate.h"
#include "hosts/desktop/desktop_host.h"
#include "hosts/native/native_services.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ca_display_link.h"
#include "tests/support/log_capture.h"
#include "tests/support/virtual_display.h"

namespace {

using Step = std::function<void()>;

class ScriptedDelegate : public iOSAppDelegate {
  public:
    explicit ScriptedDelegate(Step everyFrame) : _everyFrame(std::move(everyFrame)) {}
    bool applicationDidFinishLaunching() override {
        const bool launched = iOSAppDelegate::applicationDidFinishLaunching();
        std::make_shared<CADisplayLink>([this](CADisplayLink&) {
            _everyFrame();
        })->addToRunLoop(NSRunLoop::currentRunLoop());
        return launched;
    }

  private:
    Step _everyFrame;
};

class DesktopFingers : public testing::Test {
  protected:
    void SetUp() override {
        if (!_display.isAvailable()) GTEST_SKIP() << "Xvfb is not installed";
        setenv("DISPLAY", _display.name().c_str(), 1);
        unsetenv("WAYLAND_DISPLAY");
    }

    /// Plays the steps, one a frame once the window has settled; then the window closes.
    void play() {
        // Focus and size come and go while a window opens.
        std::size_t next = 0;
        int settling = 10;
        const NativeServices services(nullptr, ZENTARO_RESOURCES_DIR);
        const DesktopOptions options{{640, 360}, 1.0};
        const DesktopResult result = runDesktop(options, [&] {
            _delegate = std::make_shared<ScriptedDelegate>([&] {
                if (settling-- > 0) return;
                if (next < _steps.size()) return _steps[next++]();
                SDL_Event quit{};
                quit.type = SDL_QUIT;
                SDL_PushEvent(&quit);
            });
            return _delegate;
        });
        EXPECT_EQ(result.end, DesktopEnd::closed) << result.why;
        EXPECT_EQ(next, _steps.size());
        _delegate = nullptr;
    }
    GameViewController& screen() {
        return dynamic_cast<GameViewController&>(*_delegate->window()->rootViewController());
    }
    CGRect bounds() { return screen().shader()->fractalBounds(); }
    void then(Step step) { _steps.push_back(std::move(step)); }
    void wait(int frames) {
        for (int i = 0; i < frames; ++i)
            then([] {});
    }

    static void finger(uint32_t type, SDL_FingerID id, CGPoint point) {
        SDL_Event event{};
        event.type = type;
        event.tfinger.touchId = 5;
        event.tfinger.fingerId = id;
        event.tfinger.x = static_cast<float>(point.x / 640);
        event.tfinger.y = static_cast<float>(point.y / 360);
        SDL_PushEvent(&event);
    }
    struct Way {
        SDL_FingerID id;
        CGPoint from;
        CGPoint by;
    };
    /// Fingers land and go by so much a frame.
    void slide(const std::vector<Way>& ways, int frames) {
        then([=] {
            for (const Way& way : ways)
                finger(SDL_FINGERDOWN, way.id, way.from);
        });
        for (int i = 1; i <= frames; ++i) {
            then([=] {
                for (const auto& [id, from, by] : ways)
                    finger(SDL_FINGERMOTION, id, {from.x + i * by.x, from.y + i * by.y});
            });
        }
    }

    VirtualDisplay _display;
    LogCapture _log;
    std::vector<Step> _steps;
    std::shared_ptr<ScriptedDelegate> _delegate;
    CGRect _before;
    CGRect _after;
};

TEST_F(DesktopFingers, ADragMovesTheViewAndAThrowGlidesOn) {
    then([this] { _before = bounds(); });
    slide({{3, {400, 100}, {-10, 5}}}, 20);
    then([this] {
        _after = bounds();
        finger(SDL_FINGERUP, 3, {200, 200});
    });
    wait(1);
    then([this] {
        // All but the first steps, up to 10 points, and the last one, which is on its way.
        EXPECT_NEAR(_after.origin.x - _before.origin.x, 180.0 / 640 * _before.size.width,
                    20.0 / 640 * _before.size.width);
        EXPECT_NEAR(_after.origin.y - _before.origin.y, -90.0 / 360 * _before.size.height,
                    10.0 / 360 * _before.size.height);
        EXPECT_EQ(_after.size, _before.size);
        EXPECT_TRUE(screen().animtween);
    });
    wait(90);
    then([this] {
        EXPECT_GT(bounds().origin.x, _after.origin.x);
        EXPECT_LT(bounds().origin.y, _after.origin.y);
        EXPECT_FALSE(screen().animtween);
    });
    play();
}

TEST_F(DesktopFingers, TwoFingersPinch) {
    then([this] { _before = bounds(); });
    slide({{1, {300, 150}, {-4, 0}}, {2, {340, 150}, {4, 0}}}, 12);
    then([] {
        finger(SDL_FINGERUP, 1, {252, 150});
        finger(SDL_FINGERUP, 2, {388, 150});
    });
    wait(60);
    then([this] {
        EXPECT_LT(bounds().size.width, 0.6 * _before.size.width);
        EXPECT_GT(bounds().size.width, 0.1 * _before.size.width);
        EXPECT_NEAR(CGRectGetMidX(bounds()), CGRectGetMidX(_before), 1e-6);
        EXPECT_NEAR(CGRectGetMidY(bounds()), CGRectGetMidY(_before), 1e-6);
        EXPECT_FALSE(screen().isMenuHiding()) << "no finger of it tapped";
    });
    play();
}

TEST_F(DesktopFingers, ThoseOfAWindowThatLosesItsFocusAreLost) {
    slide({{1, {200, 100}, {10, 0}}}, 10);
    then([] {
        SDL_Event lost{};
        lost.type = SDL_WINDOWEVENT;
        lost.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
        SDL_PushEvent(&lost);
    });
    wait(60);
    then([this] {
        _before = bounds();
        finger(SDL_FINGERMOTION, 1, {500, 100});
        finger(SDL_FINGERUP, 1, {500, 100});
        // And events that no finger sends.
        finger(SDL_FINGERMOTION, 9, {10, 10});
        finger(SDL_FINGERUP, 9, {10, 10});
    });
    wait(2);
    then([this] { EXPECT_EQ(bounds(), _before); });
    play();
    const auto dropped = std::count(_log.lines.begin(), _log.lines.end(), "touch 10 out of order: dropped");
    EXPECT_EQ(dropped, 2);
}

TEST_F(DesktopFingers, TheWheelZoomsAboutThePointerAndGuestsAreNotHeard) {
    then([this] {
        _before = bounds();
        SDL_Event wheel{};
        wheel.type = SDL_MOUSEWHEEL;
        wheel.wheel.preciseY = 2;
        wheel.wheel.mouseX = 160;
        wheel.wheel.mouseY = 90;
        SDL_PushEvent(&wheel);
    });
    wait(30);
    then([this] {
        const CGSize size{0.81 * _before.size.width, 0.81 * _before.size.height};
        EXPECT_NEAR(bounds().size.width, size.width, 1e-9);
        EXPECT_NEAR(bounds().origin.x, _before.origin.x + 0.25 * (_before.size.width - size.width), 1e-9);
        EXPECT_NEAR(bounds().origin.y, _before.origin.y + 0.25 * (_before.size.height - size.height), 1e-9);
        _after = bounds();
        SDL_Event mouse{};
        mouse.type = SDL_MOUSEBUTTONDOWN;
        mouse.button.which = SDL_TOUCH_MOUSEID;
        mouse.button.button = SDL_BUTTON_LEFT;
        SDL_PushEvent(&mouse);
        SDL_Event gesture{};
        gesture.type = SDL_MULTIGESTURE;
        gesture.mgesture.touchId = 5;
        gesture.mgesture.dDist = 0.1F;
        SDL_PushEvent(&gesture);
    });
    wait(2);
    then([this] {
        EXPECT_EQ(bounds(), _after) << "a mouse made of fingers, a gesture of a screen's fingers";
    });
    play();
}

}  // namespace
