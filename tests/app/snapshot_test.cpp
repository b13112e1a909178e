// The program's pictures from the command line, and what it says when it cannot draw one.
// The program itself is started, without a display.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/picture.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kPatience = 120;

struct Ended {
    int status = -1;
    std::string out;
    std::string err;
};

class Snapshot : public testing::Test {
  protected:
    Ended zentaro(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), ZENTARO_EXECUTABLE);
        ChildProcess program(arguments,
                             {{"DISPLAY", std::nullopt},
                              {"WAYLAND_DISPLAY", std::nullopt},
                              {"XDG_RUNTIME_DIR", std::nullopt},
                              {"SDL_VIDEODRIVER", std::nullopt},
                              {"XDG_CONFIG_HOME", _folder.file("config")}},
                             _folder.file(""));
        const int status = program.wait(kPatience).value_or(-1);
        return {status, program.out(), program.err()};
    }
    Picture draw(const std::string& file, std::vector<std::string> more) {
        more.insert(more.begin(), {"--snapshot", file});
        const Ended ended = zentaro(more);
        EXPECT_EQ(ended.status, 0) << ended.err;
        return readPicture(_folder.file(file));
    }
    static long linesIn(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

    TemporaryFolder _folder;
};

TEST_F(Snapshot, OneLineSaysWhatWasDrawn) {
    const Ended ended =
        zentaro({"--snapshot", "a.png", "--size", "320x180", "--scale", "2", "--view", "-0.5,-0.5,0.5,0.5"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
    EXPECT_THAT(ended.out,
                testing::MatchesRegex("640x360 pixels, http://[^/]+/mandelbrot/-0\\.888889/-0\\.500000/"
                                      "0\\.888889/0\\.500000, iteration limit 256, [0-9]+ ms\n"));
    const Picture picture = readPicture(_folder.file("a.png"));
    EXPECT_EQ(picture.width, 640);
    EXPECT_EQ(picture.height, 360);
    EXPECT_THAT(_folder.names(), testing::UnorderedElementsAre("a.png")) << "no settings, nothing beside it";
}

TEST_F(Snapshot, TypePaletteAndViewAreTheOnesAskedFor) {
    const Picture mandelbrot = draw("a.png", {"--size", "320x180"});
    const Picture julia = draw("b.png", {"--size", "320x180", "--type", "julia"});
    const Picture palette = draw("c.png", {"--size", "320x180", "--palette", "4"});
    const Picture view = draw("d.png", {"--size", "320x180", "--view", "-0.8,0,-0.7,0.1"});
    EXPECT_GT(mandelbrot.countColors(), 200U);
    EXPECT_EQ(mandelbrot.count({255, 0, 255}), 0U) << "the colour of what was not drawn";
    EXPECT_NE(julia.bytes, mandelbrot.bytes);
    EXPECT_NE(view.bytes, mandelbrot.bytes);
    EXPECT_NE(palette.bytes, mandelbrot.bytes);
    EXPECT_EQ(palette.count({0, 0, 0}), mandelbrot.count({0, 0, 0})) << "black is the set, in every palette";
}

TEST_F(Snapshot, TheScreenHasTheToolbarAndTheSameFractal) {
    const std::vector<std::string> size{"--size", "640x360"};
    const Picture fractal = draw("a.png", size);
    const Picture screen = draw("b.png", {"--size", "640x360", "--screen"});
    EXPECT_EQ(differingRows(fractal, screen, 0, 250), 0U) << "nothing but the fractal above the toolbar";
    EXPECT_GT(differingRows(fractal, screen, 290, 360), 30U);
    const Picture large = draw("c.png", {"--size", "640x360", "--scale", "2", "--screen"});
    EXPECT_LT(meanDifference(halved(large), screen), 6) << "the same screen with twice the pixels";
}

TEST_F(Snapshot, BandsOfALargeScreenMeetWithoutASeam) {
    // Higher than a band of the fractal, and with a toolbar higher than a band of the overlay.
    const Picture screen = draw("a.png", {"--size", "800x500", "--scale", "4", "--screen"});
    const Picture once = draw("b.png", {"--size", "800x500", "--screen"});
    EXPECT_EQ(screen.height, 2000);
    EXPECT_LT(meanDifference(halved(halved(screen)), once), 8);
}

TEST_F(Snapshot, APictureHigherThanWideIsFilledAndAScreenHoldsASquare) {
    const Picture picture = draw("a.png", {"--size", "200x300"});
    const Picture screen = draw("b.png", {"--size", "200x300", "--screen"});
    for (const int y : {10, 290}) {
        EXPECT_NE(picture.at(3, y), (Rgb{0, 0, 0})) << y;
        EXPECT_EQ(screen.at(3, y), (Rgb{0, 0, 0})) << y;
    }
    EXPECT_EQ(differingRows(picture, screen, 55, 180), 0U) << "not stretched: the square's own rows";
}

TEST_F(Snapshot, SettingsAreReadFromTheFileNamedAndNeverWritten) {
    const std::string settings = R"({"fractalColoring": 3, "fractalType": 2})";
    writeFile(_folder.file("s.json"), settings);
    const Picture asSaved = draw("a.png", {"--size", "320x180", "--defaults", "s.json"});
    const Picture asked = draw("b.png", {"--size", "320x180", "--type", "julia", "--palette", "3"});
    EXPECT_EQ(asSaved.bytes, asked.bytes);
    draw("c.png", {"--size", "320x180", "--defaults", "s.json", "--type", "mandelbrot"});
    EXPECT_EQ(contentOf(_folder.file("s.json")), settings);
}

TEST_F(Snapshot, DamagedSettingsAreReportedAndLeftAlone) {
    writeFile(_folder.file("s.json"), "{ nonsense");
    const Ended ended = zentaro({"--snapshot", "a.png", "--size", "64x36", "--defaults", "s.json"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(linesIn(ended.err), 1) << ended.err;
    EXPECT_THAT(_folder.names(), testing::UnorderedElementsAre("a.png", "s.json"));
}

TEST_F(Snapshot, WhatCannotBeWrittenIsOneLineAndLeavesNothing) {
    fs::create_directory(_folder.file("folder.png"));
    const std::vector<std::vector<std::string>> rows{
        {"--snapshot", "nowhere/a.png"},
        {"--snapshot", "folder.png"},
        {"--snapshot", "a.gif"},
        {"--snapshot", "a.png", "--size", "0x0"},
        {"--snapshot", "a.png", "--view", "0,0,10,1"},
        {"--snapshot", "a.png", "--defaults", "nowhere.json"},
        {"--nonsense"},
    };
    for (const auto& row : rows) {
        const Ended ended = zentaro(row);
        EXPECT_EQ(ended.status, 2) << row.back();
        EXPECT_EQ(linesIn(ended.err), 1) << ended.err;
        EXPECT_THAT(ended.err, testing::StartsWith("zentaro: "));
        EXPECT_THAT(ended.out, IsEmpty());
        EXPECT_THAT(_folder.names(), testing::ElementsAre("folder.png"));
    }
}

TEST_F(Snapshot, HelpAndVersionGoToTheOutput) {
    for (const char* option : {"--help", "--version"}) {
        const Ended ended = zentaro({option});
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.err, "");
        EXPECT_THAT(ended.out, testing::AnyOf(HasSubstr("Zentaro"), HasSubstr("zentaro")));
    }
}

TEST_F(Snapshot, WithoutADisplayAPlainStartDrawsAPictureInstead) {
    const Ended ended = zentaro({});
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.err, testing::MatchesRegex("zentaro: no display: [^\n]*zentaro\\.png instead\n"));
    const Picture picture = readPicture(_folder.file("zentaro.png"));
    EXPECT_EQ(picture.width, 1280);
    EXPECT_EQ(picture.height, 720);
}

TEST_F(Snapshot, WithoutADisplayWindowOptionsAreAMistake) {
    for (const char* option : {"--fullscreen", "--verbose", "--size=640x360"}) {
        const Ended ended = zentaro({option});
        EXPECT_EQ(ended.status, 2);
        EXPECT_THAT(ended.err, HasSubstr("no display"));
        EXPECT_EQ(linesIn(ended.err), 1) << ended.err;
        EXPECT_THAT(_folder.names(), IsEmpty());
    }
}

TEST_F(Snapshot, WithoutOpenGLItSaysSo) {
    ChildProcess program(
        {ZENTARO_EXECUTABLE, "--snapshot", "a.png"},
        {{"LIBGL_DRIVERS_PATH", _folder.file("")}, {"__EGL_VENDOR_LIBRARY_DIRS", _folder.file("")}},
        _folder.file(""));
    EXPECT_EQ(program.wait(kPatience), 2);
    EXPECT_THAT(program.err(), testing::StartsWith("zentaro: Failed to create ES context: "));
    EXPECT_EQ(linesIn(program.err()), 1);
    EXPECT_THAT(_folder.names(), IsEmpty());
}

TEST_F(Snapshot, DamagedResourcesAreOneLineAndNoPicture) {
    const std::pair<const char*, const char*> damages[] = {{"Shader.fsh", nullptr},
                                                           {"Shader.fsh", "void main() {"},
                                                           {"Shader.vsh", ""},
                                                           {"Main.storyboard.json", nullptr},
                                                           {"Main.storyboard.json", "{"}};
    for (const auto& [file, text] : damages) {
        const TemporaryFolder installed;
        fs::copy_file(ZENTARO_EXECUTABLE, installed.file("zentaro"));
        fs::copy(ZENTARO_RESOURCES_DIR, installed.file("resources"), fs::copy_options::recursive);
        fs::remove(installed.file(std::string("resources/") + file));
        if (text) std::ofstream(installed.file(std::string("resources/") + file)) << text;
        ChildProcess program({installed.file("zentaro"), "--snapshot", "a.png"}, {}, _folder.file(""));
        EXPECT_EQ(program.wait(kPatience), 2) << file;
        EXPECT_EQ(linesIn(program.err()), 1) << program.err();
        EXPECT_THAT(program.err(), testing::StartsWith("zentaro: ")) << file;
        EXPECT_THAT(_folder.names(), IsEmpty());
    }
}

}  // namespace
