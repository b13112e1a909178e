// The program's pictures from the command line, and what it says when it cannot draw one.
// The program itself is started, without a display.
#include <filesystem>

#include "tests/support/program_test.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

using Snapshot = ProgramTest;

long linesIn(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

TEST_F(Snapshot, OneLineSaysWhatWasDrawn) {
    const Ended ended = zentaro("--snapshot a.png --size 320x180 --scale 2 --view -0.5,-0.5,0.5,0.5");
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
    const Picture mandelbrot = draw("a.png", "--size 320x180");
    const Picture julia = draw("b.png", "--size 320x180 --type julia");
    const Picture palette = draw("c.png", "--size 320x180 --palette 4");
    const Picture view = draw("d.png", "--size 320x180 --view -0.8,0,-0.7,0.1");
    EXPECT_GT(mandelbrot.countColors(), 200U);
    EXPECT_EQ(mandelbrot.count({255, 0, 255}), 0U) << "the colour of what was not drawn";
    EXPECT_NE(julia.bytes, mandelbrot.bytes);
    EXPECT_NE(view.bytes, mandelbrot.bytes);
    EXPECT_NE(palette.bytes, mandelbrot.bytes);
    EXPECT_EQ(palette.count({0, 0, 0}), mandelbrot.count({0, 0, 0})) << "black is the set, in every palette";
}

TEST_F(Snapshot, TheScreenHasTheToolbarAndTheSameFractal) {
    const Picture fractal = draw("a.png", "--size 640x360");
    const Picture screen = draw("b.png", "--size 640x360 --screen");
    EXPECT_EQ(differingRows(fractal, screen, 0, 250), 0U) << "nothing but the fractal above the toolbar";
    EXPECT_GT(differingRows(fractal, screen, 290, 360), 30U);
    const Picture large = draw("c.png", "--size 640x360 --scale 2 --screen");
    EXPECT_LT(meanDifference(halved(large), screen), 6) << "the same screen with twice the pixels";
}

TEST_F(Snapshot, BandsOfALargeScreenMeetWithoutASeam) {
    // Higher than a band of the fractal, and with a toolbar higher than a band of the overlay.
    const Picture screen = draw("a.png", "--size 800x500 --scale 4 --screen");
    const Picture once = draw("b.png", "--size 800x500 --screen");
    EXPECT_EQ(screen.height, 2000);
    EXPECT_LT(meanDifference(halved(halved(screen)), once), 8);
}

TEST_F(Snapshot, APictureHigherThanWideIsFilledAndAScreenHoldsASquare) {
    const Picture picture = draw("a.png", "--size 200x300");
    const Picture screen = draw("b.png", "--size 200x300 --screen");
    for (const int y : {10, 290}) {
        EXPECT_NE(picture.at(3, y), (Rgb{0, 0, 0})) << y;
        EXPECT_EQ(screen.at(3, y), (Rgb{0, 0, 0})) << y;
    }
    EXPECT_EQ(differingRows(picture, screen, 55, 180), 0U) << "not stretched: the square's own rows";
}

TEST_F(Snapshot, APictureIsDrawnAgainFromItsFile) {
    for (const char* file : {"a.png", "a.jpg"}) {
        const std::string size = " --size 320x180 ";
        const std::string place = size + "--type julia --view -0.1,0.2,0.5,0.6 --palette 4";
        const Picture first = draw("b.png", place);
        EXPECT_EQ(zentaro(std::string("--snapshot ") + file + place).status, 0);
        EXPECT_EQ(draw("c.png", file + size).bytes, first.bytes) << file;
        EXPECT_NE(draw("c.png", file + size + "--palette 1").bytes, first.bytes);
        EXPECT_EQ(draw("d.png", "c.png" + size + "--palette 4").bytes, first.bytes);
    }
    const Ended flight = zentaro("c.png --fly 0.1 --size 64x36");
    EXPECT_THAT(flight.out, HasSubstr("/julia/")) << flight.err;
}

TEST_F(Snapshot, SettingsAreReadFromTheFileNamedAndNeverWritten) {
    const std::string settings = R"({"fractalColoring": 3, "fractalType": 2})";
    writeFile(_folder.file("s.json"), settings);
    const Picture asSaved = draw("a.png", "--size 320x180 --defaults s.json");
    const Picture asked = draw("b.png", "--size 320x180 --type julia --palette 3");
    EXPECT_EQ(asSaved.bytes, asked.bytes);
    draw("c.png", "--size 320x180 --defaults s.json --type mandelbrot");
    EXPECT_EQ(contentOf(_folder.file("s.json")), settings);
    writeFile(_folder.file("s.json"), "{ nonsense");
    const Ended ended = zentaro("--snapshot a.png --size 64x36 --defaults s.json");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(linesIn(ended.err), 1) << ended.err;
    EXPECT_EQ(contentOf(_folder.file("s.json")), "{ nonsense");
    EXPECT_THAT(_folder.names(), testing::ElementsAre("a.png", "b.png", "c.png", "s.json"));
}

TEST_F(Snapshot, WhatCannotBeWrittenIsOneLineAndLeavesNothing) {
    fs::create_directory(_folder.file("folder.png"));
    for (const char* line : {"--snapshot nowhere/a.png", "--snapshot folder.png", "--snapshot a.gif",
                             "--snapshot a.png --size 0x0", "--snapshot a.png --view 0,0,10,1",
                             "--snapshot a.png --defaults nowhere.json", "--nonsense",
                             "absent.png --snapshot a.png", "folder.png --fly 1", "folder.png"})
        expectMistake(line, "", {"folder.png"});
    fs::remove(_folder.file("folder.png"));
    for (const char* option : {"--fullscreen", "--verbose", "--size=640x360"})
        expectMistake(option, "no display", {});
}

TEST_F(Snapshot, HelpAndVersionGoToTheOutput) {
    for (const char* option : {"--help", "--version"}) {
        const Ended ended = zentaro(option);
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.err, "");
        EXPECT_THAT(ended.out, testing::AnyOf(HasSubstr("Zentaro"), HasSubstr("zentaro")));
    }
}

TEST_F(Snapshot, WithoutADisplayAPlainStartDrawsAPictureAndFliesInstead) {
    ChildProcess program({ZENTARO_EXECUTABLE}, environment(), _folder.file(""));
    EXPECT_TRUE(program.waitForText("1280x720 pixels", kPatience));
    EXPECT_THAT(program.err(),
                testing::MatchesRegex("zentaro: no display: [^\n]*drawing zentaro\\.png and flying "
                                      "20 seconds into zentaro\\.mp4 instead\n"));
    const Picture picture = readPicture(_folder.file("zentaro.png"));
    EXPECT_EQ(picture.width, 1280);
    EXPECT_EQ(picture.height, 720);
    // The whole film takes its time; that it has begun is enough.
    EXPECT_TRUE(program.waitForText("0.00 s  http", kPatience)) << program.err();
    EXPECT_THAT(_folder.names(), testing::Contains("zentaro (unfinished).mp4"));
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
