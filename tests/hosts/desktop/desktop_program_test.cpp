// The program in a window, as the user has it: started under a virtual display, with keys, clicks and the
// window's own buttons, looked at from outside.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <thread>

#include "app/ios_app_delegate.h"
#include "hosts/headless/headless_host.h"
#include "main_screen/game_view_controller.h"
#include "tests/support/child_process.h"
#include "tests/support/picture.h"
#include "tests/support/seen_tour.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/virtual_display.h"

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr double kPatience = 30;

class DesktopProgram : public testing::Test {
  protected:
    void SetUp() override {
        if (!_display.isAvailable()) GTEST_SKIP() << "Xvfb is not installed";
        std::filesystem::create_directories(_folder.file("config/zentaro"));
        writeFile(settingsFile(), seenTourSettings);
    }
    void TearDown() override {
        if (!_program) return;
        EXPECT_THAT(_program->err(), Not(HasSubstr("OpenGL error")));
        EXPECT_THAT(_program->err(), Not(HasSubstr("GLSL")));
        EXPECT_THAT(_program->err(), Not(HasSubstr("cannot be drawn")));
    }

    std::vector<ChildProcess::Variable> environment() const {
        return {{"DISPLAY", _display.name()},
                {"WAYLAND_DISPLAY", std::nullopt},
                // The leak check stops all threads, and fails while the drivers' own come and go; leaks of
                // the app are found by the headless tests.
                {"LSAN_OPTIONS", "detect_leaks=0"},
                {"XDG_CONFIG_HOME", _folder.file("config")},
                {"XDG_RUNTIME_DIR", _runtime.file("")}};
    }
    std::string settingsFile() const { return _folder.file("config/zentaro/settings.json"); }

    void start(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {ZENTARO_EXECUTABLE, "--verbose", "--size", "640x360"});
        _program = std::make_unique<ChildProcess>(more, environment(), _folder.file(""));
        ASSERT_TRUE(_program->waitForText("first frame", kPatience)) << _program->err();
        _window = tool({"search", "--sync", "--onlyvisible", "--name", "^Zentaro$"});
        _window = _window.substr(0, _window.find('\n'));
        tool({"windowfocus", "--sync", _window});
    }
    std::string tool(std::vector<std::string> words) const {
        words.insert(words.begin(), "xdotool");
        ChildProcess xdotool(words, environment());
        EXPECT_EQ(xdotool.wait(kPatience), 0) << words[1] << ": " << xdotool.err();
        return xdotool.out();
    }
    void key(const std::string& name) const { tool({"key", name}); }
    /// The program's own picture of the screen, without a window.
    Picture snapshot(std::vector<std::string> more) const {
        more.insert(more.begin(), {ZENTARO_EXECUTABLE, "--snapshot", _folder.file("a.png"), "--screen"});
        ChildProcess program(more);
        EXPECT_EQ(program.wait(kPatience), 0);
        return readPicture(_folder.file("a.png"));
    }
    void click(CGPoint point) const {
        tool({"mousemove", "--window", _window, std::to_string(static_cast<int>(point.x)),
              std::to_string(static_cast<int>(point.y)), "click", "1"});
    }
    Picture picture() const {
        return pictureFromCommand({"import", "-window", _window, "-depth", "8", "ppm:-"}, environment());
    }
    /// Looks again and again; the program draws when it can.
    static bool becomes(const std::function<bool()>& wanted) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(kPatience);
        while (!wanted()) {
            if (std::chrono::steady_clock::now() > end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return true;
    }
    /// The picture once the toolbar is there and nothing moves any more.
    Picture settledPicture() const {
        // Fades end so slowly that two looks in a row may agree before they do.
        constexpr int wantedLooks = 4;
        Picture last;
        int equalLooks = 0;
        becomes([&] {
            Picture next = picture();
            equalLooks = !next.bytes.empty() && next.bytes == last.bytes ? equalLooks + 1 : 0;
            last = std::move(next);
            return equalLooks == wantedLooks;
        });
        return last;
    }
    /// Whole screens and closing are up to the desktop's window manager.
    void startWindowManager() {
        _windowManager = std::make_unique<ChildProcess>(std::vector<std::string>{"openbox", "--sm-disable"},
                                                        environment());
        EXPECT_TRUE(becomes([&] {
            ChildProcess asking({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}, environment());
            asking.wait(kPatience);
            return asking.out().find("window id") != std::string::npos;
        }));
    }
    bool settingsSay(const std::string& text) const {
        return becomes([&] { return contentOf(settingsFile()).find(text) != std::string::npos; });
    }
    static bool isFractal(const Picture& picture) {
        return picture.count({255, 0, 255}) == 0 && picture.countColors() > 100 &&
               picture.at(picture.width * 11 / 16, picture.height / 2) == Rgb{0, 0, 0};
    }

    VirtualDisplay _display;
    TemporaryFolder _folder;
    TemporaryFolder _runtime;
    std::unique_ptr<ChildProcess> _windowManager;
    std::unique_ptr<ChildProcess> _program;
    std::string _window;
};

/// The middle of a toolbar button of a screen of the window's size.
CGPoint middleOf(std::shared_ptr<UIBarButtonItem> GameViewController::*button) {
    std::shared_ptr<iOSAppDelegate> delegate;
    HeadlessHost host({{640, 360}, 1}, [&] { return delegate = std::make_shared<iOSAppDelegate>(); });
    countTourAsSeen();
    host.launch();
    host.play(0.1);
    auto& screen = dynamic_cast<GameViewController&>(*delegate->window()->rootViewController());
    const auto view = (screen.*button)->view();
    const CGRect place = view->convertRectToWindow(view->bounds());
    return {CGRectGetMidX(place), CGRectGetMidY(place)};
}

TEST_F(DesktopProgram, KeysAndClicksDoWhatTheirButtonsSay) {
    start();
    const Picture first = settledPicture();
    key("c");
    EXPECT_TRUE(becomes([&] { return differingRows(first, picture(), 0, 360) > 300; }));
    EXPECT_TRUE(settingsSay("\"fractalColoring\": 1"));
    const Picture second = settledPicture();
    key("f");
    EXPECT_TRUE(becomes([&] { return differingRows(second, picture(), 100, 260) > 100; }));
    key("f");
    click(middleOf(&GameViewController::colorButton));
    tool({"mousemove", "--window", _window, "5", "5"});
    EXPECT_TRUE(settingsSay("\"fractalColoring\": 2"));
    EXPECT_TRUE(isFractal(settledPicture()));
    tool({"key", "question"});
    EXPECT_TRUE(_program->waitForText("event key \"?\"", kPatience)) << _program->err();
}

TEST_F(DesktopProgram, ClicksOnTheFractalStartPauseAndResumeOneFlight) {
    start();
    const Picture before = settledPicture();
    click({320, 60});
    EXPECT_TRUE(_program->waitForText("http://", kPatience)) << _program->err();
    EXPECT_TRUE(becomes([&] { return differingRows(before, picture(), 0, 300) > 200; }));
    click({320, 60});
    const Picture paused = settledPicture();
    EXPECT_FALSE(paused.bytes == before.bytes);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(picture().bytes == paused.bytes);
    click({320, 60});
    EXPECT_TRUE(becomes([&] { return differingRows(paused, picture(), 0, 300) > 200; }));
    const std::string log = _program->err();
    EXPECT_EQ(log.find("http://"), log.rfind("http://")) << "one flight:\n" << log;
}

TEST_F(DesktopProgram, DragsThrowsAndTheWheelMoveTheViewAndKeysBringItBack) {
    start();
    const Picture before = settledPicture();
    tool({"mousemove", "--window", _window, "400", "100", "mousedown", "1"});
    for (int i = 1; i <= 10; ++i)
        tool({"mousemove", "--window", _window, std::to_string(400 - 10 * i), "100"});
    tool({"mouseup", "1"});
    EXPECT_TRUE(becomes([&] { return differingRows(before, picture(), 0, 300) > 200; }));
    const Picture dragged = settledPicture();
    tool({"click", "4"});
    EXPECT_TRUE(becomes([&] { return differingRows(dragged, picture(), 0, 300) > 200; }));
    for (const char* name : {"Right", "plus", "minus", "Down"})
        key(name);
    settledPicture();
    key("Home");
    EXPECT_TRUE(becomes([&] { return picture().bytes == before.bytes; }));
}

TEST_F(DesktopProgram, TheFirstRunShowsTheTourAndAfterAKillTheNextGoesOnWithItsSettings) {
    std::filesystem::remove(settingsFile());
    const auto isViolet = [this] {
        const Rgb corner = picture().at(2, 100);
        return corner[2] > 150 && corner[0] > 90 && corner[1] < 120;
    };
    start();
    EXPECT_TRUE(becomes(isViolet));
    EXPECT_TRUE(settingsSay("\"MPCoachMarksShown\": true"));
    const Picture first = settledPicture();
    click({320, 100});
    EXPECT_TRUE(becomes([&] { return differingRows(first, picture(), 200, 360) > 20; }))
        << "another button's hole";
    key("Escape");
    settledPicture();
    key("c");
    ASSERT_TRUE(settingsSay("\"fractalColoring\": 1"));
    const Picture before = settledPicture();
    _program->signal(SIGKILL);
    EXPECT_EQ(_program->wait(kPatience), 128 + SIGKILL);
    start();
    EXPECT_TRUE(settledPicture().bytes == before.bytes);
    EXPECT_FALSE(isViolet());
    EXPECT_THAT(_folder.names(), testing::ElementsAre("config"));
}

TEST_F(DesktopProgram, FullScreenComesWhereAskedForAndWithF11AndGoesWithEscapeWhichThenQuits) {
    startWindowManager();
    start({"--fullscreen"});
    const auto fills = [this](int width, int height) {
        return becomes([&] {
            const Picture shown = picture();
            return shown.width == width && shown.height == height && isFractal(shown);
        });
    };
    EXPECT_TRUE(fills(1600, 1000)) << _program->err();
    key("Escape");
    EXPECT_TRUE(fills(640, 360)) << _program->err();
    key("F11");
    EXPECT_TRUE(fills(1600, 1000)) << _program->err();
    key("Escape");
    EXPECT_TRUE(fills(640, 360)) << _program->err();
    EXPECT_FALSE(_program->wait(0.2)) << "it goes on in its window";
    key("Escape");
    EXPECT_EQ(_program->wait(kPatience), 0) << _program->err();
}

TEST_F(DesktopProgram, AResizedWindowIsFilled) {
    start();
    tool({"windowsize", "--sync", _window, "900", "400"});
    EXPECT_TRUE(becomes([&] {
        const Picture shown = picture();
        return shown.width == 900 && shown.height == 400 && isFractal(shown);
    }));
    // The view keeps its centre and height: the set's left tip, -2, lies where its width puts it.
    EXPECT_LT(meanDifference(settledPicture(), snapshot({"--size", "900x400"})), 6);
}

TEST_F(DesktopProgram, TheScaleMakesPointsOfSeveralPixels) {
    start({"--scale", "2"});
    const Picture shown = settledPicture();
    EXPECT_EQ(shown.width, 1280);
    EXPECT_EQ(shown.height, 720);
    EXPECT_LT(meanDifference(shown, snapshot({"--size", "640x360", "--scale", "2"})), 6)
        << "but for the picture's 16-bit colours it is the same screen";
    click({640, 120});
    EXPECT_TRUE(_program->waitForText("touch began 0 {320, 60}", kPatience)) << _program->err();
}

TEST_F(DesktopProgram, TheWindowsCloseButtonAndSignalsEndItCleanly) {
    startWindowManager();
    start();
    key("alt+F4");
    EXPECT_EQ(_program->wait(kPatience), 0) << _program->err();
    for (const int number : {SIGTERM, SIGINT}) {
        start();
        _program->signal(number);
        EXPECT_EQ(_program->wait(kPatience), 0) << number;
    }
}

TEST_F(DesktopProgram, AHiddenWindowWaitsAndStillHearsSignals) {
    start();
    tool({"windowunmap", "--sync", _window});
    ASSERT_TRUE(_program->waitForText("event hidden", kPatience));
    const auto cpuTime = [&] {
        const std::string stat = contentOf("/proc/" + std::to_string(_program->pid()) + "/stat");
        long user = 0;
        long system = 0;
        std::sscanf(stat.c_str() + stat.rfind(')'), ") %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %ld %ld",
                    &user, &system);
        return user + system;
    };
    _program->wait(0.3);
    const long before = cpuTime();
    _program->wait(1);
    EXPECT_LE(cpuTime() - before, 3) << "hundredths of a second in a second of nothing to do";
    tool({"windowmap", "--sync", _window});
    EXPECT_TRUE(becomes([&] { return isFractal(picture()); }));
    tool({"windowunmap", "--sync", _window});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    _program->signal(SIGTERM);
    EXPECT_EQ(_program->wait(kPatience), 0) << _program->err();
}

TEST_F(DesktopProgram, WithoutOpenGLItSaysSo) {
    auto variables = environment();
    variables.emplace_back("LIBGL_DRIVERS_PATH", _folder.file(""));
    ChildProcess program({ZENTARO_EXECUTABLE}, variables, _folder.file(""));
    EXPECT_EQ(program.wait(kPatience), 2);
    // The drivers have their own say before; ours is one line.
    EXPECT_THAT(program.err(), HasSubstr("\nzentaro: Failed to create ES context: "));
    EXPECT_THAT(program.err(), Not(HasSubstr("GLSL")));
}

TEST_F(DesktopProgram, ASecondStartHandsItsLinkToTheFirst) {
    start({"/julia/-1/-1/1/1"});
    EXPECT_THAT(_program->err(), HasSubstr("Setting launch rect: {{-1, -1}, {2, 2}}"));
    const auto open = [&](std::vector<std::string> words) {
        words.insert(words.begin(), ZENTARO_EXECUTABLE);
        return std::make_unique<ChildProcess>(words, environment());
    };
    const auto second = open({"http://zentaro.example/mandelbrot/-0.5/0/0.5/1"});
    EXPECT_EQ(second->wait(kPatience), 0);
    EXPECT_EQ(second->out() + second->err(), "");
    EXPECT_TRUE(_program->waitForText("Setting launch rect: {{-0.5, 0}, {1, 1}}", kPatience));
    EXPECT_TRUE(settingsSay("\"fractalType\": 1"));

    snapshot({"--type", "julia", "--palette", "3", "--view", "0,0,1,1", "--size", "640x360"});
    EXPECT_EQ(open({_folder.file("a.png")})->wait(kPatience), 0);
    EXPECT_TRUE(settingsSay("\"fractalColoring\": 3"));
    EXPECT_EQ(open({settingsFile() + ".png"})->wait(kPatience), 2);
    EXPECT_TRUE(settingsSay("\"fractalType\": 2"));

    EXPECT_TRUE(open({"--new", "--verbose", "/julia/0/0/1/1"})->waitForText("first frame", kPatience));
    _program->signal(SIGSTOP);
    const auto impatient = open({"--verbose", "/julia/0/0/1/1"});
    EXPECT_TRUE(impatient->waitForText("first frame", kPatience));
    EXPECT_THAT(impatient->err(), HasSubstr("the app that runs does not answer"));
    _program->signal(SIGCONT);
}

TEST_F(DesktopProgram, LinksAreCopiedAndPasted) {
    start({"/julia/-1/-1/1/1"});
    key("ctrl+c");
    key("f");
    EXPECT_TRUE(settingsSay("\"fractalType\": 1"));
    key("0");
    key("ctrl+v");
    EXPECT_TRUE(_program->waitForText("Setting launch rect: {{-1.7777", kPatience));
    EXPECT_TRUE(settingsSay("\"fractalType\": 2"));
}

}  // namespace
