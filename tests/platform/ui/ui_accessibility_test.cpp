// The screen in words, and the insets of notches: which views are told, where, and what impossible ones do.
// Frames are the window's points.
#include "platform/ui/ui_accessibility.h"

#include <gmock/gmock.h>

#include "platform/ui/ui_view_controller.h"
#include "tests/support/log_capture.h"

namespace {

std::shared_ptr<UIView> labelled(const std::string& label, CGRect frame) {
    auto view = std::make_shared<UIView>(frame);
    view->setAccessibilityLabel(label);
    return view;
}

class Accessibility : public testing::Test {
  protected:
    void SetUp() override {
        auto controller = std::make_shared<UIViewController>();
        controller->setView(screen);
        window->setRootViewController(controller);
        window->makeKeyAndVisible();
    }

    std::shared_ptr<UIView> screen = labelled("screen", {});
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 200, 100));
};

}  // namespace

TEST_F(Accessibility, TellsLabelledViewsThatShowCutToTheScreen) {
    const auto bar = std::make_shared<UIView>(CGRectMake(10, 80, 100, 40));
    const auto faint = labelled("faint", CGRectMake(0, 0, 9, 9));
    faint->setAlpha(0.005);
    const auto hidden = labelled("hidden", CGRectMake(0, 0, 9, 9));
    hidden->setHidden(true);
    hidden->addSubview(labelled("in the hidden", CGRectMake(0, 0, 9, 9)));
    for (const auto& view : {bar, faint, hidden, labelled("outside", CGRectMake(300, 0, 9, 9)),
                             labelled("last", CGRectMake(1, 2, 3, 4))}) {
        screen->addSubview(view);
    }
    bar->addSubview(labelled("cut", CGRectMake(5, 5, 10, 30)));

    std::vector<std::pair<std::string, CGRect>> told;
    for (const auto& element : accessibilityElements(*window))
        told.emplace_back(element.label, element.frame);
    EXPECT_THAT(told, testing::ElementsAre(std::pair("screen", CGRectMake(0, 0, 200, 100)),
                                           std::pair("cut", CGRectMake(15, 85, 10, 15)),
                                           std::pair("last", CGRectMake(1, 2, 3, 4))));
}

TEST_F(Accessibility, SafeAreasReachAsFarIntoEachViewAsTheyCoverIt) {
    const auto low = std::make_shared<UIView>(CGRectMake(20, 60, 180, 30));
    screen->addSubview(low);
    window->setSafeAreaInsets({5, 30, 20, 10});
    EXPECT_EQ(screen->safeAreaInsets(), (UIEdgeInsets{5, 30, 20, 10}));
    EXPECT_EQ(low->safeAreaInsets(), (UIEdgeInsets{0, 10, 10, 10}));
    EXPECT_EQ(std::make_shared<UIView>()->safeAreaInsets(), UIEdgeInsets{});

    const LogCapture log;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const UIEdgeInsets impossible[] = {{-1, 0, 0, 0}, {0, nan, 0, 0}, {50, 0, 50, 0}, {0, 0, 0, 1e300}};
    for (const UIEdgeInsets& insets : impossible)
        window->setSafeAreaInsets(insets);
    EXPECT_EQ(window->windowInsets(), (UIEdgeInsets{5, 30, 20, 10}));
    EXPECT_EQ(log.lines.size(), std::size(impossible));
}
