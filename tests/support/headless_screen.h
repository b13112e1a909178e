// The app on the headless host with its main screen at hand, for the tests that play scenarios on it.
// A host that starts anew replaces the one before.
#pragma once

#include <gtest/gtest.h>
#include <memory>

#include "app/ios_app_delegate.h"
#include "hosts/headless/headless_host.h"
#include "main_screen/game_view_controller.h"
#include "platform/ui/ui_accessibility.h"
#include "tests/support/log_capture.h"
#include "tests/support/seen_tour.h"

class HeadlessScreenTest : public testing::Test {
  protected:
    void launch(const HeadlessHost::Options& options,
                const std::shared_ptr<iOSAppDelegate>& delegate = std::make_shared<iOSAppDelegate>()) {
        screen = nullptr;
        host = nullptr;
        host = std::make_unique<HeadlessHost>(options, [delegate] { return delegate; });
        if (!isFirstRun) countTourAsSeen();
        ASSERT_TRUE(host->launch());
        screen = std::dynamic_pointer_cast<GameViewController>(delegate->window()->rootViewController());
        ASSERT_TRUE(screen);
        host->step();
    }
    CGRect bounds() const { return screen->shader()->fractalBounds(); }
    /// What screen readers are told, in order.
    std::vector<std::string> labels() const {
        std::vector<std::string> found;
        for (const auto& element : accessibilityElements(*screen->view()->window()))
            found.push_back(element.label);
        return found;
    }
    CGRect top() const { return screen->rectifiedBoundsFor(topView); }

    /// NO: the user has seen the tour.
    bool isFirstRun = false;
    LogCapture log;
    std::unique_ptr<HeadlessHost> host;
    std::shared_ptr<GameViewController> screen;
};
