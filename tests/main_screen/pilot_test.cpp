// The autopilot on the headless host: when it sets out, how it is stopped, what brings it home, and that a
// seed repeats its flights.
#include <gmock/gmock.h>
#include <limits>

#include "platform/foundation/random_source.h"
#include "tests/support/headless_screen.h"
#include "tween/easing.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Inside the set: nothing but black.
constexpr CGRect blackView = CGRectMake(-0.2, -0.05, 0.16, 0.09);

class Pilot : public HeadlessScreenTest {
  protected:
    Pilot() { start(); }

    void start(CGSize size = CGSizeMake(640, 360), uint64_t seed = 1) {
        RandomSource::shared().seed(seed);
        launch({size, 1, nullptr, {}, false});
        screen->setFlightObserver([this](const auto& flight) { flights.push_back(flight); });
        log.lines.clear();
        flights.clear();
    }
    /// The pilot's next choice, from a view with the given candidates.
    void chooseFrom(CGRect view, std::vector<CGRect> candidates = {}) {
        screen->resetScreen(nullptr);
        screen->shader()->setFractalBounds(view);
        screen->targets() = std::move(candidates);
        log.lines.clear();
        flights.clear();
        screen->hideMenu(false);
        host->step();
    }

    std::vector<GameViewController::Flight> flights;
};

}  // namespace

TEST_F(Pilot, FliesWhileTheMenuIsHiddenAndOnlyThen) {
    host->play(1);
    EXPECT_THAT(flights, IsEmpty());
    EXPECT_EQ(bounds(), top());
    screen->togglePilot(nullptr);
    EXPECT_TRUE(screen->isMenuHiding());
    host->step();
    ASSERT_EQ(flights.size(), 1U);
    EXPECT_TRUE(screen->tween);
    EXPECT_THAT(log.lines, ElementsAre(screen->coordinatesForDeeplink(flights[0].to)));
    EXPECT_NEAR(flights[0].to.size.width, 0.1 * top().size.width, 1e-6);
    EXPECT_EQ(flights[0].from, top());

    // Half the time, sin(45 degrees) of the way: 1 + 300 steps of the tween's clock make a flight.
    host->play(2.5);
    host->step();
    EXPECT_NEAR(CGRectGetMinX(bounds()),
                top().origin.x + 0.70710678 * (flights[0].to.origin.x - top().origin.x), 1e-5);
    host->play(2.5);
    EXPECT_THAT(bounds().origin.x, testing::DoubleNear(flights[0].to.origin.x, 1e-9));
    ASSERT_EQ(flights.size(), 2U);
    EXPECT_EQ(flights[1].from, bounds());
    EXPECT_TRUE(screen->tween);
    EXPECT_EQ(GSTween::livingTweens(), 1U);
}

TEST_F(Pilot, ThePilotsButtonFreezesAFlightAndGoesOnWithIt) {
    screen->togglePilot(nullptr);
    host->play(2);
    const CGRect before = bounds();
    const auto flight = screen->tween;
    screen->togglePilot(nullptr);
    EXPECT_FALSE(screen->isMenuHiding());
    host->play(20);
    EXPECT_EQ(bounds(), before);
    EXPECT_EQ(screen->tween, flight);
    screen->togglePilot(nullptr);
    host->step();
    EXPECT_EQ(screen->tween, flight);
    EXPECT_NE(bounds(), before);
    EXPECT_EQ(flights.size(), 1U);
    host->play(3.1);
    EXPECT_EQ(flights.size(), 2U);
    EXPECT_NE(screen->tween, flight);
}

TEST_F(Pilot, BackToTheTopEndsFlightAndGlideAndTheNextFlightStartsThere) {
    screen->togglePilot(nullptr);
    host->play(2);
    screen->targets().push_back(CGRectZero);
    screen->resetScreen(nullptr);
    EXPECT_EQ(bounds(), top());
    EXPECT_FALSE(screen->tween);
    EXPECT_THAT(screen->targets(), IsEmpty());
    host->step();
    ASSERT_EQ(flights.size(), 2U);
    EXPECT_EQ(flights[1].from, top());
    EXPECT_EQ(GSTween::livingTweens(), 1U);

    screen->resetScreen(nullptr);
    screen->animtween = GSTween::tweenWithTarget(screen->shader(), 9, Cubic::easeOut(),
                                                 {{"fractalBounds", NSStringFromCGRect(blackView)}});
    screen->tweenTo(top());
    EXPECT_FALSE(screen->animtween);
    EXPECT_EQ(NSRunLoop::currentRunLoop().displayLinkCount(), 1U);
}

TEST_F(Pilot, ABlackScreenBringsItHome) {
    chooseFrom(blackView);
    EXPECT_THAT(log.lines,
                ElementsAre("no targets, bouncing back to top", screen->coordinatesForDeeplink(top())));
    ASSERT_EQ(flights.size(), 1U);
    EXPECT_EQ(flights[0].bounce, GameViewController::Bounce::noTargets);
    host->play(5.1);
    EXPECT_EQ(flights[1].from, top());
}

TEST_F(Pilot, CandidatesThatLieTooFarBringItHome) {
    chooseFrom(blackView, {CGRectMake(5, 5, 0.1, 0.1), CGRectMake(-0.2, 6, 0.1, 0.1)});
    EXPECT_THAT(log.lines, ElementsAre("no GOOD targets for HERE, bouncing back to top",
                                       screen->coordinatesForDeeplink(top())));
    EXPECT_THAT(screen->targets(), IsEmpty());
    EXPECT_EQ(flights[0].bounce, GameViewController::Bounce::noGoodTargets);
}

TEST_F(Pilot, TheEndOfTheFloatsPrecisionBringsItHome) {
    // A mini filament: busy at a width where a tenth of it is past the limit of 640 pixels.
    chooseFrom(CGRectMake(-0.7436450, 0.1318252, 4.0e-5, 2.25e-5), {CGRectMake(-0.7436, 0.1318, 1e-5, 1e-5)});
    ASSERT_EQ(log.lines.size(), 12U);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_EQ(log.lines[i], "Failed precision needed: 6.25e-09; have: 1.19209e-07 (/10: 1.19209e-08)");
    EXPECT_EQ(log.lines[10], "no GOOD targets for HERE, bouncing back to top");
    EXPECT_THAT(screen->targets(), IsEmpty());
    EXPECT_EQ(flights[0].to, top());
}

TEST_F(Pilot, SeventyCandidatesAreCutToFifty) {
    std::vector<CGRect> candidates;
    for (int i = 0; i < 70; ++i)
        candidates.push_back(CGRectMake(-0.15 + 0.0001 * i, 0.02, 0.016, 0.009));
    chooseFrom(blackView, candidates);
    EXPECT_EQ(screen->targets().size(), 49U);
    ASSERT_EQ(flights.size(), 1U);
    EXPECT_THAT(candidates, Contains(flights[0].to));
    EXPECT_THAT(screen->targets(), testing::Not(Contains(flights[0].to)));
    EXPECT_THAT(candidates, testing::IsSupersetOf(screen->targets()));
    // Shuffled: the fifty are not simply the first.
    EXPECT_THAT(screen->targets(), testing::Contains(testing::Truly([&](const CGRect& left) {
                    return left.origin.x > candidates[50].origin.x;
                })));
}

TEST_F(Pilot, JuliaAndDarkPalettesAreSampledAsOthersAndShownAsThemselves) {
    // Black in the Mandelbrot set, coloured in this Julia set.
    screen->setFractalType(FractalType::julia);
    for (int i = 0; i < 3; ++i)
        screen->toggleColoring(nullptr);
    chooseFrom(blackView);
    EXPECT_THAT(log.lines, Contains("no targets, bouncing back to top"));
    EXPECT_EQ(screen->shader()->fractalType(), 2);
    EXPECT_EQ(screen->shader()->fractalColoring(), 3);
    chooseFrom(top());
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("/julia/")));
}

TEST_F(Pilot, ASeedRepeatsItsFlightsAndPaletteThreeThoseOfZeroInWhichItIsSampled) {
    const auto ride = [this](uint64_t seed, int palette) {
        start(CGSizeMake(320, 180), seed);
        for (int i = 0; i < palette; ++i)
            screen->toggleColoring(nullptr);
        screen->hideMenu(false);
        host->play(60);
        return log.lines;
    };
    const auto first = ride(7, 0);
    EXPECT_GE(first.size(), 12U);
    EXPECT_EQ(ride(7, 0), first);
    EXPECT_EQ(ride(7, 3), first);
    EXPECT_NE(ride(7, 4), first);
    EXPECT_NE(ride(8, 0), first);
}

TEST_F(Pilot, WithoutOpenGLItStaysAtTheTop) {
    host->loseContext();
    screen->glkView()->setContext(nullptr);
    screen->hideMenu(false);
    host->step();
    EXPECT_THAT(log.lines, Contains("no targets, bouncing back to top"));
}

TEST_F(Pilot, APictureThatSomebodyKeepsIsNotDrawnOver) {
    const UIImageRef kept = screen->glkView()->snapshot();
    const CGImageRef pixels = screen->glkView()->snapshot()->image();
    const auto shownAtFirst = std::vector<uint8_t>(pixels->pixels().begin(), pixels->pixels().end());
    screen->shader()->setFractalBounds(blackView);
    const UIImageRef black = screen->glkView()->snapshot();
    EXPECT_TRUE(std::ranges::equal(kept->image()->pixels(), shownAtFirst));
    EXPECT_TRUE(std::ranges::equal(pixels->pixels(), shownAtFirst));
    EXPECT_FALSE(std::ranges::equal(black->image()->pixels(), shownAtFirst));
}

TEST_F(Pilot, SnapshotModeStepsThroughSevenPlacesAndRound) {
    screen->resetCrap();
    std::vector<CGRect> places;
    for (int i = 0; i < 8; ++i) {
        screen->togglePilot(nullptr);
        EXPECT_THAT(log.lines.back(), HasSubstr("----- ***** SNAPSHOT "));
        EXPECT_EQ(std::ranges::count(places, bounds()), i == 7) << i;
        places.push_back(bounds());
        EXPECT_EQ(screen->shader()->fractalType(), 0);
        EXPECT_FALSE(screen->isMenuHiding());
    }
    EXPECT_EQ(places.front(), places.back());
    EXPECT_THAT(places, Contains(screen->rectifiedBoundsFor(
                            CGRectMake(static_cast<double>(-1.256196F), static_cast<double>(-0.034824F),
                                       static_cast<double>(-1.256094F - -1.256196F),
                                       static_cast<double>(-0.034767F - -0.034824F)))))
        << "sides are rounded to single precision";
    EXPECT_THAT(flights, IsEmpty());
}

TEST_F(Pilot, ComesHomeFromViewsThatAreNone) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const CGRect& view : {CGRectMake(nan, 0, 1, 1), CGRectMake(0, -infinity, 1, infinity),
                               CGRectMake(0, 0, 1e300, 1e300), CGRectNull, CGRectZero}) {
        chooseFrom(view);
        host->play(10.1);
        ASSERT_GE(flights.size(), 3U) << NSStringFromCGRect(view);
        EXPECT_EQ(flights.front().to, top());
        EXPECT_EQ(flights[2].bounce, GameViewController::Bounce::none) << NSStringFromCGRect(view);
    }
}

TEST_F(Pilot, AResizedWindowEndsTheFlightToTheFormerShape) {
    for (const bool paused : {false, true}) {
        start();
        screen->togglePilot(nullptr);
        host->play(2);
        if (paused) screen->togglePilot(nullptr);
        host->resize(CGSizeMake(400, 300));
        host->step();
        if (paused) screen->togglePilot(nullptr);
        host->play(6);
        EXPECT_GE(flights.size(), 3U);
        EXPECT_NEAR(bounds().size.width / bounds().size.height, 4.0 / 3, 1e-6);
    }
}
