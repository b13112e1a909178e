// The order of a frame and of the app's life, its clock, resizing and screens that come and go.
// A presenter that only listens takes the place of the drawing.
#include "platform/ui/ui_application.h"

#include <gmock/gmock.h>

#include "hosts/headless/scripted_window.h"
#include "platform/foundation/ca_display_link.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_notification_center.h"
#include "platform/ui/ui_screen.h"
#include "platform/ui/ui_view_controller.h"
#include "platform/ui/view_animator.h"
#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;
using Story = std::vector<std::string>;

class Screen : public UIViewController {
  public:
    Screen(std::string name, Story& story) : _name(std::move(name)), _story(story) {}
    void viewDidLoad() override { tell("loads"); }
    void viewWillAppear(bool) override { tell("will appear"); }
    void viewDidAppear(bool) override { tell("did appear"); }
    void viewWillDisappear(bool) override { tell("will disappear"); }
    void viewDidDisappear(bool) override { tell("did disappear"); }
    void viewDidLayoutSubviews() override { laidOut = view()->frame(); }
    void didReceiveMemoryWarning() override { tell("memory warning"); }
    CGRect laidOut;

  private:
    void tell(const std::string& what) { _story.push_back(_name + " " + what); }
    std::string _name;
    Story& _story;
};

class Delegate : public UIApplicationDelegate {
  public:
    explicit Delegate(Story& told) : story(told) {}
    bool applicationDidFinishLaunching() override {
        story.push_back("launched");
        return true;
    }
    void applicationWillResignActive() override { story.push_back("will resign"); }
    void applicationDidEnterBackground() override { story.push_back("background"); }
    void applicationWillEnterForeground() override { story.push_back("foreground"); }
    void applicationDidBecomeActive() override { story.push_back("active"); }
    void applicationWillTerminate() override { story.push_back("will terminate"); }
    std::shared_ptr<UIWindow> window() const override { return shownWindow; }

    Story& story;
    std::shared_ptr<UIWindow> shownWindow = std::make_shared<UIWindow>();
};

class Presenter : public FramePresenter {
  public:
    explicit Presenter(Story& told) : story(told) {}
    void presentFrame(UIWindow&, double, bool overlayChanged) override {
        story.push_back(overlayChanged ? "presents a new overlay" : "presents");
    }
    void contextLost(UIWindow&) override {}
    Story& story;
};

class Window : public ScriptedWindow {
  public:
    void requestQuit() override { ++quits; }
    int quits = 0;
};

class UIApplicationTest : public testing::Test {
  protected:
    UIApplicationTest() {
        UIScreen::mainScreen().setSizeAndScale({1280, 720}, 1);
        delegate->shownWindow->setRootViewController(root);
    }
    ~UIApplicationTest() override {
        ViewAnimator::shared().reset();
        UIScreen::mainScreen().setSizeAndScale({1280, 720}, 1);
    }
    void launch() {
        ASSERT_TRUE(app.launch());
        story.clear();
    }

    Story story;
    LogCapture log;
    Window window;
    std::shared_ptr<int> listener = std::make_shared<int>();
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>(story);
    std::shared_ptr<Screen> root = std::make_shared<Screen>("root", story);
    UIApplication app{delegate, &window, std::make_unique<Presenter>(story)};
};

TEST_F(UIApplicationTest, LaunchBringsTheRootScreenUp) {
    EXPECT_TRUE(app.launch());
    EXPECT_THAT(story,
                ElementsAre("launched", "root loads", "root will appear", "root did appear", "active"));
    EXPECT_EQ(root->laidOut, CGRectMake(0, 0, 1280, 720));
}

TEST_F(UIApplicationTest, FrameHasItsOrder) {
    launch();
    app.frame(0);
    story.clear();
    DispatchQueue::mainQueue().async([this] { story.push_back("main queue"); });
    app.addFrameCallback([this](double) { story.push_back("update"); });
    for (const char* name : {"link 1", "link 2"}) {
        const auto told = [this, name](CADisplayLink& link) {
            story.push_back(name);
            EXPECT_EQ(link.timestamp(), app.time());
        };
        std::make_shared<CADisplayLink>(told)->addToRunLoop(NSRunLoop::currentRunLoop());
    }
    UIView::animateWithDuration(
        0, 0, 0, [this] { root->view()->setAlpha(0.5); }, [this](bool) { story.push_back("animation"); });
    app.frame(0.1);
    EXPECT_THAT(story, ElementsAre("main queue", "link 1", "link 2", "animation", "update",
                                   "presents a new overlay"));
    story.clear();
    app.frame(0.2);
    EXPECT_THAT(story, ElementsAre("link 1", "link 2", "update", "presents"));
}

TEST_F(UIApplicationTest, ClockCountsWhatWasShown) {
    launch();
    app.frame(100);
    EXPECT_EQ(app.time(), 0);
    app.frame(101.5);
    EXPECT_EQ(app.time(), 1.5);
    app.frame(90);
    EXPECT_EQ(app.time(), 1.5) << "a step back stands still";
    app.frame(91);
    EXPECT_EQ(app.time(), 2.5);
    app.handle(HostVisibility{false});
    story.clear();
    app.frame(5000);
    EXPECT_THAT(story, testing::IsEmpty()) << "hidden";
    app.handle(HostVisibility{true});
    app.frame(9000);
    EXPECT_EQ(app.time(), 2.5);
    app.frame(9000.25);
    EXPECT_EQ(app.time(), 2.75);
}

TEST_F(UIApplicationTest, LifeIsToldInThePlatformsOrder) {
    launch();
    for (const std::string name : {"WillResignActive", "DidEnterBackground", "WillEnterForeground",
                                   "DidBecomeActive", "WillTerminate", "DidReceiveMemoryWarning"}) {
        NSNotificationCenter::defaultCenter().addObserver(
            listener, "UIApplication" + name + "Notification", nullptr,
            [this, name](const NSNotification&) { story.push_back("posted " + name); });
    }
    const std::pair<HostEvent, Story> steps[] = {
        {HostLifecycle::didBecomeActive, {}},  // it is active already
        {HostLifecycle::willResignActive, {"will resign", "posted WillResignActive"}},
        {HostLifecycle::willResignActive, {}},
        {HostLifecycle::didBecomeActive, {"active", "posted DidBecomeActive"}},
        {HostVisibility{false},
         {"will resign", "posted WillResignActive", "background", "posted DidEnterBackground"}},
        {HostVisibility{false}, {}},
        {HostLifecycle::didBecomeActive, {}},  // focused while hidden
        {HostVisibility{true},
         {"foreground", "posted WillEnterForeground", "active", "posted DidBecomeActive"}},
        {HostLifecycle::memoryWarning, {"posted DidReceiveMemoryWarning", "root memory warning"}},
        {HostClose{}, {"will resign", "posted WillResignActive", "will terminate", "posted WillTerminate"}},
        {HostClose{}, {}},
        {HostVisibility{false}, {}},
        {HostVisibility{true}, {}},
    };
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        story.clear();
        app.handle(steps[i].first);
        EXPECT_EQ(story, steps[i].second) << "step " << i << ", " << describe(steps[i].first);
    }
    EXPECT_EQ(window.quits, 2);
}

TEST_F(UIApplicationTest, ResizeReachesScreenWindowAndViews) {
    launch();
    app.frame(0);
    app.handle(HostResize{{844, 390}, 3});
    EXPECT_EQ(UIScreen::mainScreen().bounds(), CGRectMake(0, 0, 844, 390));
    EXPECT_EQ(UIScreen::mainScreen().scale(), 3);
    EXPECT_EQ(root->laidOut, CGRectMake(0, 0, 844, 390));
    story.clear();
    app.handle(HostResize{{844, 390}, 2});
    app.frame(1);
    EXPECT_THAT(story, ElementsAre("presents a new overlay")) << "another scale, same size";

    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const HostResize& bad :
         {HostResize{{0, 390}, 1}, HostResize{{844, 390}, 0}, HostResize{{nan, 390}, 1}}) {
        log.lines.clear();
        app.handle(bad);
        EXPECT_EQ(log.lines.size(), 1u);
        EXPECT_EQ(root->view()->frame(), CGRectMake(0, 0, 844, 390));
    }
}

}  // namespace
