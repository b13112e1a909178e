// Screens over screens: who hears what in which order, where they lie, and whom fingers and keys reach.
// A presenter that draws nothing takes the place of the drawing.
#include <gmock/gmock.h>

#include "platform/ui/ui_accessibility.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_popover_controller.h"
#include "platform/ui/ui_screen.h"
#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;
using Story = std::vector<std::string>;

class TouchedView : public UIView {
  public:
    explicit TouchedView(std::function<void(const char*)> tell) : _tell(std::move(tell)) {}
    void touchesBegan(const UITouches&, const UIEvent&) override { _tell("touch"); }
    void touchesEnded(const UITouches&, const UIEvent&) override {}
    void touchesCancelled(const UITouches&, const UIEvent&) override { _tell("touch cancelled"); }

  private:
    std::function<void(const char*)> _tell;
};

class Screen : public UIViewController {
  public:
    Screen(std::string name, Story& story) : _name(std::move(name)), _story(story) {}
    void loadView() override {
        setView(std::make_shared<TouchedView>([this](const char* what) { tell(what); }));
        view()->setAccessibilityLabel(_name);
    }
    void viewWillAppear(bool) override { tell("will appear"); }
    void viewDidAppear(bool) override { tell("did appear"); }
    void viewWillDisappear(bool) override { tell("will disappear"); }
    void viewDidDisappear(bool) override { tell("did disappear"); }
    bool keyPressed(const HostKeyPress& press) override {
        if (UIViewController::keyPressed(press)) return true;
        tell("key");
        return true;
    }

  private:
    void tell(const std::string& what) { _story.push_back(_name + " " + what); }
    std::string _name;
    Story& _story;
};

class Delegate : public UIApplicationDelegate {
  public:
    bool applicationDidFinishLaunching() override { return true; }
    std::shared_ptr<UIWindow> window() const override { return shownWindow; }
    std::shared_ptr<UIWindow> shownWindow = std::make_shared<UIWindow>();
};

class Unseen : public FramePresenter {
  public:
    void presentFrame(UIWindow&, double, bool) override {}
    void contextLost(UIWindow&) override {}
};

class UIPresentationTest : public testing::Test {
  protected:
    void SetUp() override {
        UIScreen::mainScreen().setSizeAndScale({1180, 820}, 2);
        delegate->shownWindow->setRootViewController(root);
        app.launch();
        app.frame(time);
        story.clear();
    }
    void TearDown() override { UIScreen::mainScreen().setSizeAndScale({1280, 720}, 1); }

    void pass(double seconds) {
        for (double end = time + seconds; time < end;)
            app.frame(time += 0.0625);
    }
    void touch(CGPoint place) {
        app.handle(HostTouch{UITouchPhase::began, 1, place, time});
        app.handle(HostTouch{UITouchPhase::ended, 1, place, time});
    }
    void press(HostKey key) {
        HostKeyPress pressed;
        pressed.key = key;
        app.handle(pressed);
    }
    Story labels() const {
        Story found;
        for (const auto& element : accessibilityElements(*delegate->shownWindow))
            found.push_back(element.label);
        return found;
    }
    std::shared_ptr<Screen> other(UIModalPresentationStyle style) {
        auto screen = std::make_shared<Screen>("other", story);
        screen->setModalPresentationStyle(style);
        return screen;
    }
    Story taken() { return std::exchange(story, {}); }

    Story story;
    double time = 0;
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::shared_ptr<Screen> root = std::make_shared<Screen>("root", story);
    UIApplication app{delegate, nullptr, std::make_unique<Unseen>()};
};

TEST_F(UIPresentationTest, ScreensHearOfComingAndGoingInThePlatformsOrder) {
    struct Case {
        UIModalPresentationStyle style;
        Story comes, came, goes, gone;
    };
    const Case cases[] = {
        {UIModalPresentationStyle::fullScreen,
         {"root will disappear", "other will appear"},
         {"other did appear", "root did disappear", "completed"},
         {"other will disappear", "root will appear"},
         {"other did disappear", "root did appear"}},
        {UIModalPresentationStyle::overFullScreen,
         {"other will appear"},
         {"other did appear", "completed"},
         {"other will disappear"},
         {"other did disappear"}},
    };
    const auto completed = [this] { story.emplace_back("completed"); };
    for (const Case& c : cases) {
        const auto screen = other(c.style);
        root->presentViewController(screen, true, completed);
        EXPECT_EQ(taken(), c.comes);
        EXPECT_EQ(screen->view()->presentationFrame().origin.y, 820) << "it starts below the screen";
        EXPECT_EQ(screen->presentingViewController(), root);
        pass(1);
        EXPECT_EQ(taken(), c.came);
        EXPECT_EQ(screen->view()->presentationFrame(), CGRectMake(0, 0, 1180, 820));
        press(HostKey::escape);
        EXPECT_EQ(taken(), c.goes);
        EXPECT_EQ(root->presentedViewController(), nullptr);
        pass(1);
        EXPECT_EQ(taken(), c.gone);
        EXPECT_EQ(screen->view()->window(), nullptr);
        EXPECT_EQ(root->view()->superview()->subviews().size(), 1U) << "no backdrop is left";
    }
}

TEST_F(UIPresentationTest, DismissedWhileItComesItHasCoveredNobody) {
    const auto screen = other(UIModalPresentationStyle::fullScreen);
    root->presentViewController(screen, true, [this] { story.emplace_back("completed"); });
    pass(0.1);
    press(HostKey::back);
    pass(1);
    EXPECT_THAT(taken(),
                ElementsAre("root will disappear", "other will appear", "other will disappear",
                            "root will appear", "completed", "other did disappear", "root did appear"));
}

TEST_F(UIPresentationTest, PresentedAgainWhileItLeavesStays) {
    const auto screen = other(UIModalPresentationStyle::fullScreen);
    root->presentViewController(screen, true);
    pass(1);
    screen->dismissViewControllerAnimated(true);
    pass(0.1);
    taken();
    root->presentViewController(screen, true);
    pass(1);
    EXPECT_THAT(taken(), ElementsAre("root will disappear", "other will appear", "other did appear",
                                     "root did disappear"));
    EXPECT_NE(screen->view()->window(), nullptr);
    EXPECT_EQ(screen->view()->presentationFrame(), CGRectMake(0, 0, 1180, 820));
    root->dismissViewControllerAnimated(false);
    EXPECT_EQ(screen->view()->window(), nullptr);
}

TEST_F(UIPresentationTest, WhatLiesBelowASheetHearsNeitherFingersNorKeys) {
    app.handle(HostTouch{UITouchPhase::began, 7, {5, 5}, time});
    const auto sheet = other(UIModalPresentationStyle::formSheet);
    sheet->setPreferredContentSize({400, 300});
    root->presentViewController(sheet, false);
    EXPECT_THAT(taken(),
                ElementsAre("root touch", "root touch cancelled", "other will appear", "other did appear"));
    EXPECT_EQ(sheet->view()->frame(), CGRectMake(390, 260, 400, 300));
    EXPECT_THAT(labels(), ElementsAre("other"));
    touch({590, 400});
    press(HostKey::space);
    EXPECT_THAT(taken(), ElementsAre("other touch", "other key"));
    app.handle(HostResize{{844, 390}, 3});
    EXPECT_EQ(sheet->view()->frame(), CGRectMake(222, 90, 400, 300)) << "phones have it at the lower edge";
    sheet->setModalInPresentation(true);
    touch({5, 5});
    press(HostKey::escape);
    EXPECT_THAT(taken(), ElementsAre("other key")) << "not taken away by mistake";
    sheet->setModalInPresentation(false);
    touch({5, 5});
    EXPECT_EQ(root->presentedViewController(), nullptr);
    touch({400, 300});
    EXPECT_THAT(taken(), ElementsAre("other will disappear", "root touch"))
        << "it answers while the sheet leaves";
}

TEST_F(UIPresentationTest, OnlyAFreeScreenPresentsAndTakesAllAboveItAway) {
    const LogCapture log;
    const auto first = other(UIModalPresentationStyle::overFullScreen);
    const auto second = other(UIModalPresentationStyle::overFullScreen);
    root->presentViewController(first, false);
    taken();
    root->presentViewController(second, false);
    EXPECT_THAT(story, testing::IsEmpty());
    EXPECT_EQ(log.lines.size(), 1U);
    first->presentViewController(second, false);
    EXPECT_EQ(delegate->shownWindow->topViewController(), second);
    taken();
    root->dismissViewControllerAnimated(false);
    EXPECT_THAT(story, ElementsAre("other will disappear", "other did disappear", "other will disappear",
                                   "other did disappear"));
    EXPECT_EQ(delegate->shownWindow->topViewController(), root);
}

TEST_F(UIPresentationTest, APopoverStandsAtItsButtonAndGoesWithATapBesideIt) {
    struct Case {
        CGRect bar;
        CGRect content;  ///< in the window
    };
    const Case cases[] = {
        {{{100, 760}, {60, 50}}, {{10, 447}, {320, 300}}},
        {{{100, 10}, {60, 50}}, {{10, 73}, {320, 300}}},
        {{{1110, 760}, {60, 50}}, {{850, 447}, {320, 300}}},
    };
    const auto bar = std::make_shared<UIToolbar>();
    root->view()->addSubview(bar);
    const auto item = std::make_shared<UIBarButtonItem>();
    for (const Case& c : cases) {
        bar->setFrame(c.bar);
        bar->setItems({item});
        bar->layoutIfNeeded();
        item->view()->setFrame(bar->bounds());
        const auto content = other(UIModalPresentationStyle::fullScreen);
        content->setPreferredContentSize({320, 300});
        UIPopoverController::initWithContentViewController(content)->presentPopoverFromBarButtonItem(
            item, UIPopoverArrowDirectionAny, true);
        pass(1);
        EXPECT_EQ(content->view()->convertRectToWindow(content->view()->bounds()), c.content);
        EXPECT_THAT(taken(), ElementsAre("other will appear", "other did appear"));
        touch({CGRectGetMidX(c.content), CGRectGetMidY(c.content)});
        EXPECT_THAT(taken(), ElementsAre("other touch"));
        touch({590, 400});
        pass(1);
        EXPECT_EQ(root->presentedViewController(), nullptr);
        taken();
    }
}

}  // namespace
