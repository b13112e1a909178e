// The main screen for who is made dizzy by motion, looks around a notch, or finds the way by names alone.
// What is read is what a host would hand on.
#include <gtest/gtest.h>

#include "hosts/native/memory_preferences_store.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/ui/ui_accessibility.h"
#include "tests/support/headless_screen.h"

namespace {

class MainScreenForAll : public HeadlessScreenTest {
  protected:
    void start(CGSize size = CGSizeMake(320, 180)) { launch({size, 1, store}); }
    static int64_t savedCycling() {
        return NSUserDefaults::standardUserDefaults().integerForKey("fractalColorCycling");
    }

    std::shared_ptr<MemoryPreferencesStore> store = std::make_shared<MemoryPreferencesStore>();
};

}  // namespace

TEST_F(MainScreenForAll, LessMotionStopsTheColoursAndLeavesTheSettingAsItWas) {
    store->save(R"({"fractalColorCycling": 4})");
    start();
    const auto cycling = [this] { return screen->shader()->fractalColorCycling(); };
    for (const bool reduced : {true, true, false, true}) {
        host->handle(HostReduceMotion{reduced});
        EXPECT_EQ(cycling(), reduced ? 0 : 4);
        EXPECT_EQ(screen->colorCyclingButton->title(), reduced ? "0" : "2");
        EXPECT_EQ(savedCycling(), 4);
    }
    screen->togglePilot(nullptr);
    EXPECT_EQ(screen->menuView->presentationAlpha(), 0) << "springs are cuts";

    screen->colorCyclingButton->sendAction();
    EXPECT_EQ(cycling(), 1);
    EXPECT_EQ(savedCycling(), 1);
    host->handle(HostReduceMotion{false});
    EXPECT_EQ(cycling(), 1);
}

TEST_F(MainScreenForAll, TheToolbarKeepsClearOfNotchAndHomeIndicator) {
    start(CGSizeMake(844, 390));
    const UIEdgeInsets notches[] = {{0, 47, 21, 47}, {0, 0, 0, 60}, {30, 5, 5, 5}, {}};
    const CGRect frames[] = {
        {{47, 313}, {750, 56}}, {{12, 322}, {772, 56}}, {{12, 322}, {820, 56}}, {{12, 322}, {820, 56}}};
    for (std::size_t i = 0; i < std::size(notches); ++i) {
        host->handle(HostSafeArea{notches[i]});
        host->step();
        EXPECT_EQ(screen->menuView->frame(), frames[i]);
    }
}

TEST_F(MainScreenForAll, AHiddenToolbarComesBackByNameAndTheFlightIsTold) {
    start();
    const auto named = [this](const std::string& label) -> std::shared_ptr<UIView> {
        for (const auto& element : accessibilityElements(*screen->view()->window()))
            if (element.label == label) return element.view;
        return nullptr;
    };
    EXPECT_TRUE(named("Fractal"));
    EXPECT_FALSE(named("Show the buttons"));
    screen->togglePilot(nullptr);
    host->step();
    EXPECT_TRUE(named("Fractal, autopilot flying"));
    EXPECT_FALSE(named("Share"));
    const auto button = named("Show the buttons");
    ASSERT_TRUE(button);
    EXPECT_EQ(button->accessibilityTraits(), UIAccessibilityTraitButton);
    EXPECT_TRUE(button->accessibilityActivate());
    EXPECT_FALSE(screen->isMenuHiding());
    EXPECT_TRUE(named("Fractal, flight paused"));
    EXPECT_TRUE(named("Share"));
    screen->resetScreen(nullptr);
    EXPECT_TRUE(named("Fractal"));
}
