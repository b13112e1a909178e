// Links into the running app: which view each shows, and that nonsense changes nothing.
// The whole app runs on the headless host; links arrive as the hosts' events.
#include "app/ios_app_delegate.h"

#include <cmath>
#include <gmock/gmock.h>

#include "hosts/headless/headless_host.h"
#include "main_screen/game_view_controller.h"
#include "main_screen/pictured_place.h"
#include "platform/foundation/ns_user_defaults.h"
#include "tests/support/log_capture.h"
#include "tests/support/seen_tour.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class Links : public testing::Test {
  protected:
    Links() {
        _host = std::make_unique<HeadlessHost>(HeadlessHost::Options{CGSizeMake(320, 180)},
                                               [this] { return _delegate; });
        countTourAsSeen();
        EXPECT_TRUE(_host->launch());
        _host->step();
        log.lines.clear();
    }

    void open(const std::string& text) { _host->handle(HostOpenLink{text}); }
    GameViewController& screen() const {
        return static_cast<GameViewController&>(*_delegate->window()->rootViewController());
    }
    CGRect shown() const { return screen().shader()->fractalBounds(); }
    /// The view, the type and the last link's rectangle.
    std::string state() const {
        return NSStringFromCGRect(shown()) + NSStringFromCGRect(_delegate->launchRect()) +
               std::to_string(screen().fractalType());
    }

    LogCapture log;
    std::shared_ptr<iOSAppDelegate> _delegate = std::make_shared<iOSAppDelegate>();
    std::unique_ptr<HeadlessHost> _host;
};

TEST_F(Links, EveryFormShowsItsViewInSinglePrecision) {
    for (const char* start : {"http://zentaro.example/", "https://zentaro.example/", "zentaro://",
                              "zentaro.example/", "zentaro:///", "/", ""}) {
        screen().resetScreen(nullptr);
        screen().setFractalType(FractalType::mandelbrot);
        open(std::string(start) + "julia/-0.100000/0.200000/0.300000/0.400000");
        const CGRect wanted = CGRectMake(-0.1F, 0.2F, 0.3F - -0.1F, 0.4F - 0.2F);
        EXPECT_EQ(_delegate->launchRect(), wanted) << start;
        EXPECT_EQ(shown(), screen().rectifiedBoundsFor(wanted)) << start;
        EXPECT_EQ(screen().fractalType(), FractalType::julia);
    }
    EXPECT_THAT(log.lines, Contains("Setting launch rect: " + NSStringFromCGRect(_delegate->launchRect())));
    EXPECT_EQ(NSUserDefaults::standardUserDefaults().integerForKey("fractalType"), 2);

    open("/mandelbrot/-2.000000/-1.500000/1.000000/1.500000");
    EXPECT_EQ(_delegate->launchRect(), CGRectMake(-2, -1.5, 3, 3));
    EXPECT_EQ(screen().fractalType(), FractalType::mandelbrot);
}

TEST_F(Links, NonsenseChangesNothing) {
    open("/julia/-1/-1/1/1");
    log.lines.clear();
    const std::string before = state();
    const std::string ones(10000, '1');
    std::vector<std::string> consumed = {"/mandelbrot/0." + ones + "/0/0." + ones + "/1"};
    for (const char* link :
         {"/julia/0/0/10/1", "/julia/0/0/1/10", "/julia/1/0/0/1", "/julia/0/1/1/0", "/julia/0/0/0/1",
          "/sierpinski/0/0/1/1", "/Mandelbrot/0/0/1/1", "/mandelbrot/nan/0/nan/1",
          "/mandelbrot/-inf/-1/inf/1", "/mandelbrot/0x0/0/0x1/1", "/mandelbrot/-1e99/0/1e99/1",
          "/mandelbrot/1e39/0/2e39/1", "/mandelbrot/0.5000000/0/0.5000000/1", "/mandelbrot/a/b/c/d",
          "/mandelbrot/0/0/%FF/1", "/mandelbrot/////", "/mandelbrot/0/0/%00/1", "/%00mandelbrot/0/0/1/1"})
        consumed.emplace_back(link);
    for (const std::string& link : consumed) {
        EXPECT_TRUE(_delegate->loadDeeplink(NSURL::URLWithString(link))) << link.substr(0, 60);
        open(link);
        EXPECT_EQ(state(), before) << link.substr(0, 60);
    }
    EXPECT_THAT(log.lines, testing::IsEmpty());

    const std::vector<std::string> notRouted = {
        "/mandelbrot/0/0/1",         "/mandelbrot/0/0/1/1/1", "/",
        "zentaro://x/julia/0/0/1/1", "/mandelbrot////",       "/a" + std::string(100000, '/'),
    };
    for (const std::string& link : notRouted) {
        EXPECT_FALSE(_delegate->loadDeeplink(NSURL::URLWithString(link))) << link.substr(0, 60);
        open(link);
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr("names no view")));
        log.lines.clear();
    }
    for (const char* link : {"", "%", "http://other.example/julia/0/0/1/1", "what is this?"}) {
        open(link);
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr(" give one such as ")));
        log.lines.clear();
    }
    EXPECT_FALSE(_delegate->applicationContinueUserActivity(
        {"another activity", NSURL::URLWithString("http://zentaro.example/mandelbrot/0/0/1/1")}));
    EXPECT_FALSE(_delegate->applicationContinueUserActivity({NSUserActivityTypeBrowsingWeb, std::nullopt}));
    screen().loadURL("no view");
    EXPECT_THAT(log.lines, ElementsAre("loaded 'no view': NO"));
    EXPECT_EQ(state(), before);
}

TEST_F(Links, ALinkOfTheAppReopensWhatItShows) {
    for (const int32_t type : {FractalType::mandelbrot, FractalType::julia}) {
        screen().setFractalType(type);
        screen().jumpTox1(-0.7436F, 0.1315F, -0.7426F, 0.1323F, type, 0);
        const CGRect before = shown();
        _host->handle(HostKeyPress{HostKey::character, "c", false, true, _host->time()});
        screen().setFractalType(3 - type);
        screen().resetScreen(nullptr);
        _host->handle(HostKeyPress{HostKey::character, "v", false, true, _host->time()});
        EXPECT_EQ(screen().fractalType(), type);
        const CGRect after = shown();
        // Six decimals, then a float's seven digits.
        EXPECT_NEAR(CGRectGetMinX(after), CGRectGetMinX(before), 1e-6);
        EXPECT_NEAR(CGRectGetMaxX(after), CGRectGetMaxX(before), 1e-6);
        EXPECT_NEAR(CGRectGetMinY(after), CGRectGetMinY(before), 1e-6);
        EXPECT_NEAR(CGRectGetMaxY(after), CGRectGetMaxY(before), 1e-6);
    }
}

TEST_F(Links, APictureOpensInItsExactBoundsAndPalette) {
    const CGRect bounds{{-0.74364388703715877, 0.13182590420531198}, {1.6e-9, 0.9e-9}};
    _host->handle(HostOpenPicture{"a.png", textsOfPlace({FractalType::julia, bounds, 4}, "")});
    EXPECT_EQ(_delegate->launchRect(), bounds);
    EXPECT_EQ(shown(), screen().rectifiedBoundsFor(bounds));
    EXPECT_EQ(screen().fractalType(), FractalType::julia);
    EXPECT_EQ(screen().shader()->fractalColoring(), 4);
    EXPECT_EQ(NSUserDefaults::standardUserDefaults().integerForKey("fractalColoring"), 4);
    EXPECT_EQ(placeOfTexts(screen().renderedImage()->texts())->bounds, shown());
    open("/mandelbrot/-1/-1/1/1");
    EXPECT_EQ(screen().shader()->fractalColoring(), 4) << "links say nothing of palettes";

    const std::string before = state();
    const std::pair<std::optional<PictureTexts>, const char*> others[] = {
        {std::nullopt, "'?.png' is no PNG or JPEG picture; give one that Zentaro saved"},
        {PictureTexts{}, "'?.png' does not say which view it shows; give one that Zentaro saved"},
    };
    for (const auto& [texts, line] : others) {
        log.lines.clear();
        _host->handle(HostOpenPicture{"\n.png", texts});
        EXPECT_THAT(log.lines, ElementsAre(line));
        EXPECT_EQ(state(), before);
    }
}

TEST_F(Links, AFlightAndAnotherScreenGiveWay) {
    screen().togglePilot(nullptr);
    _host->play(1);
    auto other = std::make_shared<UIViewController>();
    screen().presentViewController(other, false);
    open("/julia/-1/-1/1/1");
    EXPECT_EQ(shown(), screen().rectifiedBoundsFor(CGRectMake(-1, -1, 2, 2)));
    EXPECT_EQ(screen().presentedViewController(), nullptr);
}

/// The window shows something else: the link is kept for a reset, and no more.
TEST_F(Links, ForAnotherRootScreenOnlyTheRectangleIsKept) {
    const auto main = _delegate->window()->rootViewController();
    const CGRect before = shown();
    _delegate->window()->setRootViewController(std::make_shared<UIViewController>());
    open("/julia/-1/-1/1/1");
    EXPECT_EQ(_delegate->launchRect(), CGRectMake(-1, -1, 2, 2));
    EXPECT_THAT(log.lines, Contains(HasSubstr("TODO: what else might be here? ")));
    auto& screen = static_cast<GameViewController&>(*main);
    EXPECT_EQ(screen.shader()->fractalBounds(), before);
    EXPECT_NE(screen.fractalType(), FractalType::julia);
    screen.resetScreen(_delegate.get());
    EXPECT_EQ(screen.shader()->fractalBounds(), screen.rectifiedBoundsFor(CGRectMake(-1, -1, 2, 2)));
}

}  // namespace
