// Fingers injected into SDL, on their way through the window's loop to the fractal.
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
    std::vector<Step> _steps;
    std::shared_ptr<ScriptedDelegate> _delegate;
    CGRect _before;
};

TEST_F(DesktopFingers, TwoPinchTheFractal) {
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

}  // namespace
