// The tour of the main screen: when it comes, what it says, where its holes are, and what rests meanwhile.
// Played on the devices' sizes, as the user's own fingers and keys go through it.
#include <gmock/gmock.h>

#include "hosts/native/memory_preferences_store.h"
#include "platform/foundation/ns_user_defaults.h"
#include "tests/support/headless_screen.h"

using testing::ElementsAre;

namespace {

class Tutorial : public HeadlessScreenTest {
  protected:
    Tutorial() { isFirstRun = true; }

    void start(CGSize size = CGSizeMake(844, 390), double scale = 1, bool canRecord = true) {
        launch({size, scale, store, {}, true, canRecord});
        settle();
    }
    /// Until nothing moves any more, in few frames: they take long where there are many pixels.
    void settle() {
        for (int i = 0; i < 4; ++i)
            host->step(0.4);
    }
    void stepOn() {
        host->tap({400, 100});
        settle();
    }
    std::vector<std::shared_ptr<UIBarButtonItem>> explained() const {
        std::vector<std::shared_ptr<UIBarButtonItem>> items = {screen->xButton, screen->shareButton,
                                                               screen->fractalButton, screen->colorButton,
                                                               screen->colorCyclingButton};
        if (RPScreenRecorder::sharedRecorder().isAvailable()) items.push_back(screen->toggleRecordButton);
        items.push_back(screen->infoButton);
        return items;
    }
    CGRect placeOf(const std::shared_ptr<UIBarButtonItem>& item) const {
        return item->view()->convertRectToWindow(item->view()->bounds());
    }
    CGRect markRect(std::size_t i) const {
        return std::any_cast<CGRect>(screen->coachMarksView->coachMarks.at(i).at("rect"));
    }
    bool isTouring() const { return screen->coachMarksView && screen->coachMarksView->superview(); }
    /// Whether the hole shows what lies below, and the mask what is beside it.
    void expectHoleOn(CGRect place, double scale) const {
        const CGImageRef picture = host->screenPicture();
        const auto at = [&](CGFloat x, CGFloat y) {
            return picture->colorAt(static_cast<int32_t>(x * scale), static_cast<int32_t>(y * scale));
        };
        const CGFloat y = CGRectGetMidY(place) + 20;
        const auto isViolet = [](CGImage::Color c) { return c.blue > c.green + 60 && c.blue > 100; };
        EXPECT_FALSE(isViolet(at(CGRectGetMinX(place) + 2, y)));
        EXPECT_FALSE(isViolet(at(CGRectGetMaxX(place) - 2, y)));
        EXPECT_TRUE(isViolet(at(CGRectGetMinX(place) - 2, y)));
        EXPECT_TRUE(isViolet(at(CGRectGetMaxX(place) + 2, y)));
    }

    std::shared_ptr<MemoryPreferencesStore> store = std::make_shared<MemoryPreferencesStore>();
};

}  // namespace

TEST_F(Tutorial, ExplainsEachButtonInAHoleOfItsOwnAndNeverAgain) {
    const std::tuple<CGSize, double, bool> cases[] = {
        {{844, 390}, 3, true}, {{1180, 820}, 2, true}, {{1280, 720}, 1, true}, {{844, 390}, 1, false}};
    for (const auto& [size, scale, canRecord] : cases) {
        SCOPED_TRACE(size.width);
        store = std::make_shared<MemoryPreferencesStore>();
        start(size, scale, canRecord);
        ASSERT_TRUE(isTouring());
        const MPCoachMarks& tour = *screen->coachMarksView;
        std::vector<std::string> captions = {
            "This will bring you back to the top of the fractal.",
            "Open a share sheet with a snapshot of the fractal and its coordinates!",
            "Toggle between Mandelbrot and Julia sets.", "Pick through a few predefined color palettes.",
            "Animate the color palettes!"};
        if (canRecord) captions.push_back("Toggle ReplayKit recording.");
        captions.push_back("And finally, more\nabout this app.");
        const auto items = explained();
        for (std::size_t i = 0; i < captions.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_EQ(tour.lblCaption->text(), captions[i]);
            EXPECT_EQ(markRect(i), placeOf(items[i]));
            expectHoleOn(placeOf(items[i]), scale);
            const CGRect caption = tour.lblCaption->frame();
            EXPECT_EQ(CGRectGetMaxY(caption), placeOf(items[i]).origin.y - 5);
            EXPECT_LE(caption.size.width, size.width / 2);
            EXPECT_EQ(tour.btnSkipCoach()->frame(),
                      CGRectMake(0.7 * size.width, 20, size.width - 0.7 * size.width, 30));
            EXPECT_FALSE(tour.lblContinue());
            stepOn();
        }
        EXPECT_FALSE(isTouring());
        start(size, 1, canRecord);
        EXPECT_FALSE(isTouring());
    }
}

TEST_F(Tutorial, NothingBelowReactsMeanwhile) {
    start();
    const CGRect before = bounds();
    host->drag({400, 200}, {200, 100}, 0.3);
    host->pinch({400, 200}, 50, 200, 0.3);
    host->wheel({400, 200}, 3);
    host->magnify({400, 200}, 2);
    host->type("cfsr+0");
    settle();
    EXPECT_EQ(bounds(), before);
    EXPECT_EQ(screen->fractalType(), 0);
    EXPECT_EQ(screen->shader()->fractalColoring(), 0);
    EXPECT_FALSE(screen->presentedViewController());
    EXPECT_TRUE(isTouring());
    EXPECT_FALSE(screen->isMenuHiding());
    EXPECT_FALSE(screen->tween);
    const CGRect share = placeOf(screen->shareButton);
    host->tap({CGRectGetMidX(share), CGRectGetMidY(share)});
    settle();
    EXPECT_FALSE(screen->presentedViewController());
    EXPECT_EQ(screen->coachMarksView->markIndex(), 1U);
}

TEST_F(Tutorial, KeysLeadThroughItAndSkipIt) {
    start();
    const MPCoachMarks& tour = *screen->coachMarksView;
    const std::pair<HostKey, uint32_t> keys[] = {{HostKey::left, 0}, {HostKey::space, 1}, {HostKey::right, 2},
                                                 {HostKey::down, 3}, {HostKey::left, 2},  {HostKey::up, 1},
                                                 {HostKey::left, 0}, {HostKey::home, 0}};
    for (const auto& [key, index] : keys) {
        host->press(key);
        settle();
        EXPECT_EQ(tour.markIndex(), index);
    }
    host->press(HostKey::escape);
    settle();
    EXPECT_FALSE(isTouring());
    host->press(HostKey::space);
    EXPECT_TRUE(screen->isMenuHiding()) << "keys are the screen's again";
}

TEST_F(Tutorial, SkippingEndsItAndItCanBeSeenAgainWithTheButtonsThere) {
    start();
    host->tap({700, 35});
    settle();
    ASSERT_FALSE(isTouring());
    const auto first = screen->coachMarksView;
    const CGRect rect = markRect(1);
    screen->done({"replayIntroduction"});
    settle();
    EXPECT_TRUE(isTouring());
    EXPECT_EQ(screen->coachMarksView, first);
    EXPECT_EQ(markRect(1), rect);
    EXPECT_EQ(screen->coachMarksView->markIndex(), 0U);
    host->press(HostKey::escape);
    settle();

    screen->togglePilot(nullptr);
    settle();
    ASSERT_TRUE(screen->tween);
    screen->showTutorial(nullptr);
    settle();
    EXPECT_FALSE(screen->isMenuHiding());
    const CGRect still = bounds();
    settle();
    EXPECT_EQ(bounds(), still) << "the flight waits";
    screen->done({"elsewhere"});
    EXPECT_TRUE(isTouring());
}

TEST_F(Tutorial, FollowsTheScreensSizeAndItsNotch) {
    start();
    stepOn();
    const auto expectInPlace = [this](double scale) {
        EXPECT_EQ(markRect(1), placeOf(screen->shareButton));
        EXPECT_EQ(screen->coachMarksView->frame(), screen->view()->bounds());
        EXPECT_EQ(screen->coachMarksView->markIndex(), 1U);
        expectHoleOn(placeOf(screen->shareButton), scale);
    };
    host->resize({1280, 720});
    host->play(0.1);
    expectInPlace(1);
    host->handle(HostSafeArea{{40, 60, 30, 60}});
    host->play(0.1);
    expectInPlace(1);
    EXPECT_EQ(screen->coachMarksView->btnSkipCoach()->frame().origin.y, 60);
    host->press(HostKey::escape);
    host->resize({844, 390}, 2);
    screen->showTutorial(nullptr);
    settle();
    stepOn();
    expectInPlace(2);
}

TEST_F(Tutorial, ScreenReadersFindTheTourAlone) {
    start();
    EXPECT_THAT(labels(), ElementsAre("Fractal", "Next",
                                      "This will bring you back to the top of the fractal.", "Skip"));
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(screen->coachMarksView->accessibilityActivate());
        settle();
    }
    EXPECT_THAT(labels(), ElementsAre("Fractal", "Done", "And finally, more\nabout this app.", "Skip"));
    screen->coachMarksView->accessibilityActivate();
    settle();
    EXPECT_THAT(labels(), testing::Contains("Share"));
}
