// The tour's overlay alone: every place worked out by hand, the hole's growth, its life with and without a
// delegate. Text is measured by a canvas whose letters are half as wide as high, so that sums stay whole.
#include "coach_marks/mp_coach_marks.h"

#include <gtest/gtest.h>

#include "platform/foundation/ns_bundle.h"
#include "platform/ui/ui_gesture_recognizer.h"
#include "platform/ui/ui_window.h"
#include "platform/ui/view_animator.h"
#include "tests/support/recording_canvas.h"

namespace {

constexpr CGSize phoneSize{800, 400};
constexpr CGSize deskSize{1280, 720};

class CoachMarks : public testing::Test {
  protected:
    CoachMarks() {
        // Arrows 40 wide and 20 high, whatever their direction.
        NSBundle::mainBundle().setReader([](const std::string&) {
            return std::optional<std::string>(R"(<svg viewBox="0 0 40 20"><path d="M0 0h9"/></svg>)");
        });
        step(0);
    }
    ~CoachMarks() override {
        ViewAnimator::shared().reset();
        NSBundle::mainBundle().setReader({});
    }

    void make(std::vector<MPCoachMark> marks, CGSize size = phoneSize) {
        window = std::make_shared<UIWindow>(CGRect{CGPointZero, size});
        below = std::make_shared<UIView>(window->bounds());
        below->addGestureRecognizer(
            std::make_shared<UITapGestureRecognizer>([this](UIGestureRecognizer&) { ++tapsBelow; }));
        window->addSubview(below);
        marksView = MPCoachMarks::initWithFrame(window->bounds(), std::move(marks));
        below->addSubview(marksView);
    }
    void listen() {
        told = std::make_shared<MPCoachMarksViewDelegate>();
        const auto note = [this](std::string what) {
            return [this, what = std::move(what)](MPCoachMarks&) { story.push_back(what); };
        };
        const auto noteIndex = [this](std::string what) {
            return [this, what = std::move(what)](MPCoachMarks&, uint32_t i) {
                story.push_back(what + " " + std::to_string(i));
            };
        };
        told->coachMarksViewWillNavigateToIndex = noteIndex("will");
        told->coachMarksViewDidNavigateToIndex = noteIndex("did");
        told->coachMarksViewWillCleanup = note("will clean up");
        told->coachMarksViewDidCleanup = note("cleaned up");
        told->coachMarksViewSkipButtonClicked = note("skip");
        marksView->delegate = told;
    }
    void step(double seconds) { ViewAnimator::shared().step(now += seconds); }
    /// Until the first mark's hole has grown.
    void startAndSettle() {
        marksView->start();
        step(marksView->animationDuration);
        step(marksView->animationDuration);
    }
    void tap(CGPoint p) {
        window->sendTouch({UITouchPhase::began, ++finger, p, now});
        window->sendTouch({UITouchPhase::ended, finger, p, now});
    }
    bool isShown() const { return marksView->superview() != nullptr; }
    CGRect hole() const {
        UIBezierPath path;
        const auto shown = marksView->mask()->presentationPath();
        int contours = 0;
        for (const auto& element : shown.elements()) {
            if (element.verb == UIBezierPath::Verb::move) ++contours;
            if (contours < 2) continue;
            if (element.verb == UIBezierPath::Verb::move) path.moveToPoint(element.points[2]);
            if (element.verb == UIBezierPath::Verb::line) path.addLineToPoint(element.points[2]);
            if (element.verb == UIBezierPath::Verb::curve)
                path.addCurveToPoint(element.points[2], element.points[0], element.points[1]);
        }
        return path.bounds();
    }

    CanvasProviderGuard canvases;
    std::shared_ptr<UIWindow> window;
    std::shared_ptr<UIView> below;
    std::shared_ptr<MPCoachMarks> marksView;
    std::shared_ptr<MPCoachMarksViewDelegate> told;
    std::vector<std::string> story;
    int tapsBelow = 0;
    int64_t finger = 0;
    double now = 100;
};

MPCoachMark mark(CGRect rect, const std::string& caption = "caption") {
    return {{"rect", rect}, {"caption", caption}};
}

}  // namespace

TEST_F(CoachMarks, CaptionsAndArrowsStandWhereTheirPositionSays) {
    struct Case {
        CGSize screen;
        CGRect rect;
        int32_t position, alignment;
        CGRect caption;               ///< without an arrow
        std::optional<CGRect> arrow;  ///< 40 by 20
        CGPoint withArrow;            ///< the caption's origin beside it
    };
    // Captions of eleven letters: 110 by 20.
    const CGRect middle = CGRectMake(300, 100, 50, 30);
    const CGRect low = CGRectMake(300, 330, 50, 40);
    const CGRect lowest = CGRectMake(100, 610, 41, 40);
    const CGRect lower = CGRectMake(100, 609, 41, 20);
    const Case cases[] = {
        {phoneSize, middle, 0, 0, {{345, 165}, {110, 20}}, CGRectMake(345, 165, 40, 20), {345, 190}},
        {phoneSize, middle, 0, 1, {{5, 165}, {110, 20}}, CGRectMake(5, 165, 40, 20), {5, 190}},
        {phoneSize, middle, 0, 2, {{685, 165}, {110, 20}}, CGRectMake(685, 165, 40, 20), {685, 190}},
        {phoneSize, middle, 9, 7, {{345, 165}, {110, 20}}, CGRectMake(345, 165, 40, 20), {345, 190}},
        {phoneSize, middle, 1, 0, {{635, 105}, {110, 20}}, CGRectMake(705, 105, 40, 20), {590, 105}},
        {phoneSize, middle, 2, 0, {{345, 75}, {110, 20}}, CGRectMake(345, 75, 40, 20), {345, 50}},
        {phoneSize, middle, 3, 0, {{355, 105}, {110, 20}}, std::nullopt, {355, 105}},
        {phoneSize, middle, 4, 0, {{355, 165}, {110, 20}}, CGRectMake(310, 160, 40, 20), {355, 175}},
        {phoneSize, middle, 5, 0, {{185, 165}, {110, 20}}, CGRectMake(310, 160, 40, 20), {185, 175}},
        // Too low: over the rectangle instead; the arrow follows, and the caption still moves down by it.
        {phoneSize, low, 0, 0, {{345, 275}, {110, 20}}, CGRectMake(345, 275, 40, 20), {345, 300}},
        {phoneSize, low, 4, 0, {{355, 275}, {110, 20}}, CGRectMake(310, 270, 40, 20), {355, 285}},
        {phoneSize, low, 5, 0, {{185, 275}, {110, 20}}, CGRectMake(310, 270, 40, 20), {185, 285}},
        {deskSize, low, 0, 0, {{585, 405}, {110, 20}}, CGRectMake(585, 405, 40, 20), {585, 430}},
        {deskSize, low, 1, 2, {{1115, 340}, {110, 20}}, CGRectMake(1185, 340, 40, 20), {1070, 340}},
        {deskSize, low, 2, 2, {{1165, 305}, {110, 20}}, CGRectMake(1165, 305, 40, 20), {1165, 280}},
        {deskSize, lowest, 4, 0, {{146, 555}, {110, 20}}, CGRectMake(105.5, 550, 40, 20), {146, 565}},
        {deskSize, lower, 5, 0, {{-24, 664}, {110, 20}}, CGRectMake(105.5, 659, 40, 20), {-24, 674}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "position " << c.position << " of " << NSStringFromCGRect(c.rect)
                                        << " on " << c.screen.width);
        for (const bool arrow : {false, true}) {
            make({{{"rect", c.rect},
                   {"caption", std::string("elf letters")},
                   {"position", c.position},
                   {"alignment", c.alignment},
                   {"showArrow", arrow}}},
                 c.screen);
            marksView->goToCoachMarkIndexed(0);
            EXPECT_EQ(NSStringFromCGRect(marksView->lblCaption->frame()),
                      NSStringFromCGRect(arrow ? CGRect{c.withArrow, c.caption.size} : c.caption));
            const bool shows = marksView->arrowImage() && marksView->arrowImage()->superview();
            ASSERT_EQ(shows, arrow && c.arrow.has_value());
            if (shows) {
                EXPECT_EQ(marksView->arrowImage()->frame(), *c.arrow);
            }
        }
    }
}

TEST_F(CoachMarks, HintAndSkipButtonComeOnceWithTheFirstMarkAtTheirHeight) {
    const std::pair<MPCoachMarksContinueLocation, CGFloat> heights[] = {
        {MPCoachMarksContinueLocation::top, 30},
        {MPCoachMarksContinueLocation::center, 185},
        {MPCoachMarksContinueLocation::bottom, 349},
        {static_cast<MPCoachMarksContinueLocation>(7), 349}};
    for (const auto& [location, y] : heights) {
        make({mark({{10, 10}, {20, 20}}), mark({{50, 50}, {20, 20}})});
        window->setSafeAreaInsets({10, 0, 21, 0});
        marksView->continueLocation = location;
        startAndSettle();
        EXPECT_EQ(marksView->lblContinue()->frame(), CGRectMake(0, y, 560, 30));
        EXPECT_EQ(marksView->lblContinue()->text(), "Tap to continue");
        EXPECT_EQ(marksView->btnSkipCoach()->frame(), CGRectMake(560, y, 240, 30));
        EXPECT_EQ(marksView->btnSkipCoach()->presentationAlpha(), 0) << "not yet";
        step(1.3);
        EXPECT_EQ(marksView->btnSkipCoach()->presentationAlpha(), 1);
        marksView->userDidTap();
        EXPECT_FALSE(marksView->lblContinue());
        EXPECT_TRUE(marksView->btnSkipCoach()->superview());
    }
    make({mark({{10, 10}, {20, 20}})});
    marksView->enableSkipButton = false;
    startAndSettle();
    EXPECT_EQ(marksView->lblContinue()->frame().size.width, 800);
    EXPECT_FALSE(marksView->btnSkipCoach());
}

TEST_F(CoachMarks, TheHoleGrowsOutOfTheFirstMarkAndMovesOnEasingOut) {
    make({mark({{101, 61}, {40, 20}}), mark({{301, 161}, {80, 60}})});
    marksView->animationDuration = 1;
    marksView->start();
    EXPECT_TRUE(marksView->mask()->presentationPath().isEmpty()) << "nothing is dark while it fades in";
    step(1);
    EXPECT_EQ(hole(), CGRectMake(121, 71, 0, 0));
    step(0.5);
    // The platform's ease-out is at 0.68464 of its way at half time.
    EXPECT_NEAR(hole().size.width, 40 * 0.68464, 0.01);
    EXPECT_NEAR(CGRectGetMidX(hole()), 121, 1e-9);
    step(0.5);
    EXPECT_EQ(hole(), CGRectMake(101, 61, 40, 20));
    marksView->userDidTap();
    step(0.5);
    EXPECT_NEAR(hole().origin.x, 101 + 200 * 0.68464, 0.05);
    EXPECT_NEAR(hole().size.height, 20 + 40 * 0.68464, 0.05);
    step(0.5);
    EXPECT_EQ(hole(), CGRectMake(301, 161, 80, 60));
    step(10);
    EXPECT_FALSE(ViewAnimator::shared().isRunning()) << "at rest it costs nothing";
}

TEST_F(CoachMarks, HolesHaveTheirShapesAndTheRadiusOfTheirOwnMark) {
    const CGRect rect = CGRectMake(100, 100, 40, 40);
    MPCoachMark plain = mark(rect);
    MPCoachMark round = mark(rect);
    round["cutoutRadius"] = 12.25;
    MPCoachMark oval = mark(rect);
    oval["shape"] = MPCoachMarkShape::circle;
    MPCoachMark square = mark(rect);
    square["shape"] = int64_t{2};
    MPCoachMark odd = mark(rect);
    odd["shape"] = int32_t{99};
    odd["cutoutRadius"] = std::string("wide");
    make({plain, round, plain, oval, square, odd});
    marksView->cutoutRadius = 9;
    startAndSettle();
    const CGFloat radii[] = {5, 12.25, 5, 20, 0, 5};
    for (const CGFloat radius : radii) {
        // The hole's contour begins behind the corner's curve.
        const auto path = marksView->mask()->path();
        EXPECT_EQ(path.elements()[5].points[2], CGPointMake(100 + radius, 100)) << marksView->markIndex();
        marksView->userDidTap();
    }
}

TEST_F(CoachMarks, ATapAnywhereGoesOnNothingBelowIsTouchedAndTheTourCanComeAgain) {
    make({mark({{0, 0}, {20, 20}}), mark({{50, 50}, {20, 20}})});
    listen();
    for (int run = 0; run < 2; ++run) {
        story.clear();
        marksView->start();
        tap({400, 200});
        EXPECT_EQ(story, std::vector<std::string>{}) << "a view that fades in takes no touches";
        step(0.3);
        step(0.1);
        tap({10, 10});
        step(0.3);
        tap({400, 200});
        step(0.3);
        EXPECT_FALSE(isShown());
        EXPECT_EQ(tapsBelow, run);
        tap({400, 200});
        EXPECT_EQ(tapsBelow, run + 1);
        EXPECT_EQ(std::count(story.begin(), story.end(), "did 1"), 2);
        EXPECT_EQ(story.back(), "cleaned up");
        below->addSubview(marksView);
    }
}

TEST_F(CoachMarks, SkipEndAndEmptyListsLeadOut) {
    make({mark({{0, 0}, {20, 20}}), mark({{50, 50}, {20, 20}})});
    listen();
    startAndSettle();
    step(2);
    story.clear();
    tap({700, 385});
    step(0.15);
    EXPECT_TRUE(isShown()) << "it fades";
    step(0.2);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(story, (std::vector<std::string>{"skip", "will clean up", "cleaned up"}));

    below->addSubview(marksView);
    startAndSettle();
    marksView->end();
    step(0);
    EXPECT_FALSE(isShown());

    below->addSubview(marksView);
    startAndSettle();
    marksView->cleanup(true);
    marksView->start();
    step(5);
    EXPECT_TRUE(isShown()) << "started anew while it faded";

    make({});
    marksView->start();
    step(0.3);
    step(0.3);
    EXPECT_FALSE(isShown());
    make({mark({{0, 0}, {20, 20}})});
    marksView->goToCoachMarkIndexed(4'000'000'000U);
    step(0.3);
    EXPECT_FALSE(isShown());
}

TEST_F(CoachMarks, OnlyWhoWantsTapsInTheHoleGetsThem) {
    make({mark({{100, 100}, {50, 50}}), mark({{300, 300}, {50, 50}}), mark({{0, 0}, {1, 1}})});
    listen();
    startAndSettle();
    EXPECT_FALSE(marksView->currentView());
    tap({125, 125});
    EXPECT_EQ(marksView->markIndex(), 1U);
    uint32_t clicked = 9;
    told->coachMarksViewDidClickedAtIndex = [&](MPCoachMarks&, uint32_t index) { clicked = index; };
    marksView->goToCoachMarkIndexed(0);
    tap({10, 10});
    EXPECT_EQ(marksView->markIndex(), 1U);
    EXPECT_EQ(clicked, 9U);
    tap({310, 310});
    EXPECT_EQ(clicked, 1U);
    step(0.3);
    EXPECT_FALSE(isShown());
}

TEST_F(CoachMarks, OddMarksAreLaidOutSomehow) {
    const CGFloat infinite = std::numeric_limits<CGFloat>::infinity();
    std::vector<MPCoachMark> marks = {
        {},
        {{"rect", std::string("here")}, {"caption", 7}, {"position", std::string("up")}},
        mark({{-500, 9000}, {-20, -30}}),
        mark({{infinite, 0}, {infinite, infinite}}),
        mark(CGRectNull),
        mark({{5, 5}, {5, 5}}, std::string(20000, 'w'))};
    marks[0]["position"] = 1e300;
    marks[0]["cutoutRadius"] = -infinite;
    marks[0]["showArrow"] = 1;
    marks.resize(400, marks[2]);
    make(marks);
    startAndSettle();
    RecordingCanvas canvas;
    while (marksView->markIndex() + 1 < marks.size()) {
        EXPECT_TRUE(isFinite(marksView->lblCaption->frame())) << marksView->markIndex();
        EXPECT_TRUE(marksView->mask()->path().isFinite()) << marksView->markIndex();
        window->paint(canvas);
        marksView->userDidTap();
        step(0.1);
    }
    EXPECT_LE(marksView->lblCaption->frame().size.width, marksView->maxLblWidth);
    EXPECT_TRUE(canvas.isBalanced());
}
