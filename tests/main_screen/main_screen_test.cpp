// The main screen on the headless host: settings and their life, jumps and resets, the toolbar's fades,
// snapshot mode, memory warnings, resizing, keys.
#include <gmock/gmock.h>

#include "hosts/native/memory_preferences_store.h"
#include "platform/foundation/cf_time.h"
#include "platform/foundation/ns_user_defaults.h"
#include "tests/support/headless_screen.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Starts where the last link said, whatever main screen tests need of it.
class LinkedDelegate : public iOSAppDelegate {
  public:
    CGRect launchRect() const override { return link; }
    bool loadDeeplink(const std::optional<NSURL>& url) override {
        return url && url->absoluteString() == "known";
    }
    CGRect link = CGRectMake(0.25, 0.5, 1, 1);
};

class MainScreen : public HeadlessScreenTest {
  protected:
    void start(CGSize size = CGSizeMake(320, 180), bool canRecord = true) {
        delegate = std::make_shared<LinkedDelegate>();
        launch({size, 1, store, {}, true, canRecord}, delegate);
        first = host->screenPicture();
        host->step();
    }
    static int64_t saved(const std::string& key) {
        return NSUserDefaults::standardUserDefaults().integerForKey(key);
    }
    double menuAlpha() const { return screen->menuView->presentationAlpha(); }

    std::shared_ptr<MemoryPreferencesStore> store = std::make_shared<MemoryPreferencesStore>();
    std::shared_ptr<LinkedDelegate> delegate;
    /// What the screen showed first.
    CGImageRef first;
};

}  // namespace

TEST_F(MainScreen, FirstLaunchShowsTheTopViewWithFreshSettings) {
    start(CGSizeMake(1280, 720));
    EXPECT_EQ(bounds(), CGRectMake(-0x1.d55554p+1, -1.5, 0x1.555554p+2, 3));
    EXPECT_EQ(screen->fractalType(), 0);
    EXPECT_EQ(screen->shader()->fractalColoring(), 0);
    EXPECT_EQ(screen->colorCyclingButton->title(), "0");
    EXPECT_EQ(screen->toggleRecordButton->title(), "◎");
    EXPECT_TRUE(host->window().isIdleTimerDisabled());
    EXPECT_FALSE(screen->isMenuHiding());
    EXPECT_NE(first->colorAt(640, 700), host->screenPicture()->colorAt(640, 700)) << "no toolbar at first";
    EXPECT_EQ(first->colorAt(640, 300), host->screenPicture()->colorAt(640, 300));
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(MainScreen, ButtonsStepThroughTheirValuesAndSaveEach) {
    start();
    for (const int32_t type : {2, 1, 2}) {
        screen->fractalButton->sendAction();
        EXPECT_EQ(screen->fractalType(), type);
        EXPECT_EQ(screen->shader()->fractalType(), type);
        EXPECT_EQ(saved("fractalType"), type);
    }
    for (const int32_t palette : {1, 2, 3, 4, 5, 0, 1}) {
        screen->colorButton->sendAction();
        EXPECT_EQ(screen->shader()->fractalColoring(), palette);
        EXPECT_EQ(saved("fractalColoring"), palette);
    }
    const std::pair<int32_t, const char*> speeds[] = {{1, "1"}, {4, "2"}, {0, "0"}, {1, "1"}};
    for (const auto& [speed, title] : speeds) {
        screen->colorCyclingButton->sendAction();
        EXPECT_EQ(screen->shader()->fractalColorCycling(), speed);
        EXPECT_EQ(screen->colorCyclingButton->title(), title);
        EXPECT_EQ(saved("fractalColorCycling"), speed);
    }
    start();
    EXPECT_EQ(screen->fractalType(), 2);
    EXPECT_EQ(screen->shader()->fractalType(), 2);
    EXPECT_EQ(screen->shader()->fractalColoring(), 1);
    EXPECT_EQ(screen->shader()->fractalColorCycling(), 1);
    EXPECT_EQ(screen->colorCyclingButton->title(), "1");
}

TEST_F(MainScreen, OddSavedSettingsAreTakenAsTheyAre) {
    store->save(R"({"fractalColorCycling": 3, "fractalColoring": 2147483647, "fractalType": -5})");
    start();
    EXPECT_EQ(screen->colorCyclingButton->title(), "2");
    screen->toggleColorCycling(nullptr);
    EXPECT_EQ(screen->shader()->fractalColorCycling(), 0);
    screen->toggleColoring(nullptr);
    EXPECT_EQ(screen->shader()->fractalColoring(), 2);
    screen->toggleFractal(nullptr);
    EXPECT_EQ(screen->fractalType(), 2);
}

TEST_F(MainScreen, JumpsTakeOnlyUsableRectangles) {
    start(CGSizeMake(1280, 720));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        float x1, y1, x2, y2;
        bool taken;
    };
    const Case cases[] = {{0, 0, 1, 1, true},          {1, 0, 1, 1, false},   {0, 0, 10, 1, false},
                          {0, 0, 1, 10, false},        {0, 1, 1, 0, false},   {0, 0, 1, 0, false},
                          {nan, 0, 1, 1, false},       {0, nan, 1, 1, false}, {0, 0, 9.99F, 9.99F, true},
                          {-1e30F, 0, 1e30F, 1, false}};
    for (const Case& c : cases) {
        screen->resetScreen(nullptr);
        screen->shader()->setFractalColoring(0);
        const CGRect before = bounds();
        EXPECT_EQ(screen->jumpTox1(c.x1, c.y1, c.x2, c.y2, 2, 10), c.taken);
        EXPECT_EQ(screen->shader()->fractalColoring(), c.taken ? 10 : 0);
        EXPECT_EQ(bounds() == before, !c.taken);
        EXPECT_EQ(screen->shader()->fractalType(), 0);
    }
    EXPECT_TRUE(screen->jumpTox1(0, 0, 1, 1, 1, 0));
    EXPECT_EQ(bounds(), CGRectMake(-0x1.8e38e4p-2, 0, 0x1.c71c72p+0, 1));
    EXPECT_EQ(saved("fractalColoring"), 0);
}

TEST_F(MainScreen, ResetGoesToTheTopOrToTheLinkOfTheDelegate) {
    start();
    const CGRect top = bounds();
    screen->jumpTox1(0, 0, 1, 1, 1, 0);
    screen->targets() = {CGRectZero};
    screen->resetScreen(delegate.get());
    EXPECT_EQ(bounds(), screen->rectifiedBoundsFor(delegate->link));
    EXPECT_THAT(screen->targets(), IsEmpty());
    screen->xButton->sendAction();
    EXPECT_EQ(bounds(), top);
    screen->loadURL("known");
    screen->loadURL("nonsense");
    EXPECT_THAT(log.lines, ElementsAre("loaded 'known': YES", "loaded 'nonsense': NO"));
}

TEST_F(MainScreen, TheToolbarFadesOutAndBackToTheAlphaOfItsLayout) {
    start();
    const double shown = screen->menuView->alpha();
    ASSERT_GT(shown, 0.0);
    host->tap(CGPointMake(160, 60));
    EXPECT_TRUE(screen->isMenuHiding());
    host->play(0.25);
    EXPECT_GT(menuAlpha(), 0.0);
    EXPECT_LT(menuAlpha(), shown);
    host->play(0.3);
    EXPECT_EQ(menuAlpha(), 0.0);
    EXPECT_TRUE(screen->menuView->isHidden());
    host->tap(CGPointMake(160, 60));
    EXPECT_FALSE(screen->menuView->isHidden());
    host->play(0.6);
    EXPECT_LT(menuAlpha(), shown);
    host->play(0.2);
    EXPECT_NEAR(menuAlpha(), shown, 1e-6);

    screen->hideMenu(true);
    host->play(0.1);
    const double midway = menuAlpha();
    screen->showMenu(true);
    screen->showMenu(true);
    EXPECT_EQ(menuAlpha(), midway) << "turned round";
    screen->hideMenu(false);
    EXPECT_TRUE(screen->menuView->isHidden());
    screen->showMenu(false);
    EXPECT_NEAR(menuAlpha(), shown, 1e-6);
}

TEST_F(MainScreen, WithoutARecorderTheRecordButtonGoesAndTheOthersKeepTheirOrder) {
    start();
    std::vector<std::string> labels;
    for (const auto& item : screen->menuView->items()) {
        if (item != screen->toggleRecordButton) labels.push_back(item->accessibilityLabel());
    }
    start(CGSizeMake(320, 180), false);
    std::vector<std::string> left;
    for (const auto& item : screen->menuView->items())
        left.push_back(item->accessibilityLabel());
    EXPECT_EQ(left, labels);
}

TEST_F(MainScreen, FactoryResetEntersSnapshotModeThatDrawsOneFrameInSixtyOne) {
    start();
    screen->toggleColoring(nullptr);
    screen->toggleColorCycling(nullptr);
    screen->setFractalType(2);
    delegate->resetCrap();
    EXPECT_EQ(screen->fractalType(), 0);
    EXPECT_EQ(screen->shader()->fractalColoring(), 0);
    EXPECT_EQ(screen->shader()->fractalColorCycling(), 0);
    EXPECT_EQ(saved("fractalType") + saved("fractalColoring") + saved("fractalColorCycling"), 0);
    EXPECT_TRUE(NSUserDefaults::standardUserDefaults().boolForKey("MPCoachMarksShown"));

    // The palette clock moves only with a frame that is drawn; the first of them, the 61st, sets it going.
    screen->shader()->setFractalColorCycling(1);
    std::vector<int> drawn;
    double clock = 0;
    for (int frame = 1; frame <= 183; ++frame) {
        host->step();
        if (screen->shader()->paletteClock() != clock) drawn.push_back(frame);
        clock = screen->shader()->paletteClock();
    }
    EXPECT_THAT(drawn, ElementsAre(122, 183));

    screen->targets() = {CGRectZero};
    screen->resetScreen(nullptr);
    EXPECT_EQ(screen->targets().size(), 1U);
}

TEST_F(MainScreen, AMemoryWarningIsIgnoredWhileTheScreenShowsAndDropsViewAndContextOtherwise) {
    start();
    host->handle(HostLifecycle::memoryWarning);
    EXPECT_TRUE(screen->isViewLoaded());
    EXPECT_TRUE(screen->context());
    screen->view()->removeFromSuperview();
    screen->didReceiveMemoryWarning();
    EXPECT_FALSE(screen->isViewLoaded());
    EXPECT_FALSE(screen->context());
    EXPECT_FALSE(EAGLContext::currentContext());
    EXPECT_THAT(log.lines, testing::Contains("TODO: tearDownGL"));
}

TEST_F(MainScreen, ResizingKeepsCentreAndHeightAndFitsTheWidth) {
    start(CGSizeMake(1280, 720));
    screen->jumpTox1(-0.75F, 0.1F, -0.74F, 0.11F, 1, 0);
    const CGRect before = bounds();
    for (const CGSize size : {CGSizeMake(800, 600), CGSizeMake(1000, 400), CGSizeMake(700, 700)}) {
        host->resize(size);
        host->step();
        EXPECT_NEAR(CGRectGetMidX(bounds()), CGRectGetMidX(before), 1e-12);
        EXPECT_EQ(bounds().origin.y, before.origin.y);
        EXPECT_EQ(bounds().size.height, before.size.height);
        EXPECT_NEAR(bounds().size.width, before.size.height * size.width / size.height, 1e-12);
        EXPECT_EQ(screen->glkView()->drawableWidth(), static_cast<int32_t>(size.width));
        EXPECT_LE(CGRectGetMaxY(screen->menuView->frame()), size.height);
    }
}

TEST_F(MainScreen, AWindowHigherThanWideShowsASquareBetweenBlackBars) {
    start();
    host->resize(CGSizeMake(300, 500));
    for (const bool retained : {false, true}) {
        screen->glkView()->setRetainedBacking(retained);
        host->step();
        host->step();
        EXPECT_EQ(screen->view()->frame(), CGRectMake(0, 100, 300, 300));
        EXPECT_NEAR(bounds().size.width, bounds().size.height, 1e-6);
        const CGImageRef picture = host->screenPicture();
        EXPECT_EQ(picture->colorAt(150, 99), (CGImage::Color{0, 0, 0, 255}));
        EXPECT_NE(picture->colorAt(1, 101), (CGImage::Color{0, 0, 0, 255}));
        EXPECT_NE(picture->colorAt(299, 110), (CGImage::Color{0, 0, 0, 255}));
        EXPECT_EQ(picture->colorAt(150, 401), (CGImage::Color{0, 0, 0, 255}));
    }
    host->tap(CGPointMake(150, 50));
    EXPECT_FALSE(screen->isMenuHiding());
}

TEST_F(MainScreen, SlowFramesAreDrawnCoarserInTimeAndPicturesAreNot) {
    start(CGSizeMake(160, 90));
    host->step();
    host->step();
    const CGImageRef sharp = host->screenPicture();
    const auto pixelsThatDiffer = [&](const CGImageRef& picture) {
        int count = 0;
        for (int32_t i = 0; i < 160 * 90; ++i)
            count += picture->colorAt(i % 160, i / 160) == sharp->colorAt(i % 160, i / 160) ? 0 : 1;
        return count;
    };
    double clock = 0;
    double frameSeconds = 0.2;
    CFAbsoluteTimeSetClock([&] { return clock += frameSeconds; });
    const auto widthAfter = [&](int frames) {
        for (int i = 0; i < frames; ++i)
            host->step();
        const OffscreenDrawable* drawable = screen->glkView()->displayedDrawable();
        return drawable ? drawable->width() : 160;
    };
    EXPECT_EQ(widthAfter(40), 160);
    EXPECT_EQ(widthAfter(22), 113);
    EXPECT_EQ(widthAfter(24), 57);
    const CGRect before = bounds();
    const UIImageRef kept = screen->renderedImage();
    EXPECT_EQ(kept->size(), CGSizeMake(160, 90));
    EXPECT_GT(pixelsThatDiffer(host->screenPicture()), 1000);

    frameSeconds = 0.001;
    EXPECT_EQ(widthAfter(60), 57);
    EXPECT_EQ(widthAfter(3 * 60), 160);
    EXPECT_EQ(bounds(), before);
    EXPECT_EQ(pixelsThatDiffer(host->screenPicture()), 0);
    CFAbsoluteTimeSetClock({});
}

TEST_F(MainScreen, KeysDoWhatTheirButtonsDo) {
    start();
    host->type("fca");
    EXPECT_EQ(screen->fractalType(), 2);
    EXPECT_EQ(screen->shader()->fractalColoring(), 1);
    EXPECT_EQ(screen->shader()->fractalColorCycling(), 1);
    screen->jumpTox1(0, 0, 1, 1, 1, 0);
    host->type("0");
    EXPECT_EQ(bounds(), screen->rectifiedBoundsFor(topView));
    host->type("sf");
    EXPECT_TRUE(screen->presentedViewController());
    EXPECT_EQ(screen->fractalType(), 2) << "keys reach the sheet alone";
    host->press(HostKey::escape);
    EXPECT_FALSE(screen->presentedViewController());
    host->type("ri");
    EXPECT_TRUE(screen->presentedViewController());
    host->press(HostKey::escape);
    EXPECT_FALSE(screen->presentedViewController());
    EXPECT_EQ(host->capture().starts, 1);
    host->press(HostKey::space);
    EXPECT_TRUE(screen->isMenuHiding());
    host->press(HostKey::f11);
    EXPECT_TRUE(host->window().isFullscreen());
    const std::size_t views = screen->view()->subviews().size();
    host->type("?");
    EXPECT_EQ(screen->view()->subviews().size(), views + 1);
    host->press(HostKey::escape);
    EXPECT_EQ(screen->view()->subviews().size(), views);
    EXPECT_TRUE(host->window().isFullscreen());
    host->press(HostKey::escape);
    EXPECT_FALSE(host->window().isFullscreen());
    EXPECT_FALSE(host->window().quitRequested());
    host->press(HostKey::escape);
    EXPECT_TRUE(host->window().quitRequested());
}

TEST_F(MainScreen, ATapClosesTheListOfKeysAndNothingElse) {
    start(CGSizeMake(844, 390));
    const std::size_t views = screen->view()->subviews().size();
    host->type("?");
    host->step();
    host->tap(CGPointMake(20, 20));
    EXPECT_EQ(screen->view()->subviews().size(), views);
    EXPECT_FALSE(screen->isMenuHiding());
}
