// The program's flights from the command line: what they print, that a seed and a film's pictures repeat, and
// what a mistake is told.
#include <filesystem>

#include "tests/support/program_test.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using Fly = ProgramTest;

/// Without the last line's time, which differs from run to run.
std::string flightsOf(const std::string& text) {
    return text.substr(0, text.rfind(" frames"));
}

TEST_F(Fly, PrintsEachFlightAndASummary) {
    const Ended ended = zentaro("--fly 11 --seed 3 --size 320x180 --type julia --palette 2");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
    const std::string flight = " s  http://[^/]+/julia/[-0-9.]+/[-0-9.]+/[-0-9.]+/[-0-9.]+\n";
    EXPECT_THAT(
        ended.out,
        testing::MatchesRegex(" +0\\.00" + flight + " +5\\.02" + flight + " +10\\.03" + flight +
                              "3 flights, 0 home without targets \\(0\\.0 %\\), 0 home without good targets\n"
                              "deepest width [^,]+, median of the deepest before each return [^\n]+\n"
                              "660 frames without drawing, [0-9.]+ ms each\n"));
    EXPECT_THAT(_folder.names(), testing::IsEmpty());
}

TEST_F(Fly, TheSameSeedFliesTheSameWithPicturesOrWithout) {
    const std::string ride = "--fly 12 --fps 4 --size 320x180 --palette 1 --cycling 4 ";
    const Ended plain = zentaro(ride + "--seed 5");
    const Ended film = zentaro(ride + "--seed 5 --frames new/film");
    const Ended other = zentaro(ride + "--seed 6");
    EXPECT_EQ(plain.status + film.status + other.status, 0) << film.err;
    EXPECT_EQ(flightsOf(plain.out), flightsOf(film.out));
    EXPECT_NE(flightsOf(plain.out), flightsOf(other.out));

    const fs::path folder = _folder.file("new/film");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 48);
    const Picture first = readPicture((folder / "frame_00001.png").string());
    const Picture last = readPicture((folder / "frame_00048.png").string());
    EXPECT_EQ(first.width, 320);
    EXPECT_EQ(last.height, 180);
    EXPECT_NE(first.bytes, last.bytes);

    const Ended again = zentaro(ride + "--seed 5 --frames again");
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(readPicture(_folder.file("again/frame_00048.png")).bytes, last.bytes);
}

TEST_F(Fly, AFilmShowsNoToolbar) {
    EXPECT_EQ(zentaro("--fly 0.5 --fps 4 --size 640x360 --seed 1 --frames film").status, 0);
    EXPECT_EQ(zentaro("--snapshot top.png --size 640x360").status, 0);
    // The first frame is the top view: the flight has not moved yet.
    EXPECT_EQ(readPicture(_folder.file("film/frame_00001.png")).bytes,
              readPicture(_folder.file("top.png")).bytes);
}

TEST_F(Fly, AFilmHasEveryFrameAtItsExactTimeAndShowsWhatThePicturesShow) {
    writeFile(_folder.file("film.mp4"), "an older one");
    const Ended ended =
        zentaro("--fly 3 --fps 7 --seed 5 --size 321x181 --palette 1 --record film.mp4 --frames frames");
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_THAT(_folder.names(), testing::ElementsAre("film.mp4", "frames"));
    ChildProcess probe({"ffprobe", "-v", "error", "-show_entries",
                        "stream=codec_name,width,height,nb_frames:format=duration:packet=pts_time", "-of",
                        "csv=p=0", _folder.file("film.mp4")});
    EXPECT_EQ(probe.wait(30), 0) << probe.err();
    for (int i = 0; i < 21; ++i) {
        char line[32];
        std::snprintf(line, sizeof line, "%.6f", i / 7.0);
        EXPECT_THAT(probe.out(), HasSubstr(line)) << i;
    }
    EXPECT_THAT(probe.out(), HasSubstr("h264,320,180,21"));
    EXPECT_THAT(probe.out(), HasSubstr("\n3.000000"));
    for (const char* number : {"00001", "00013", "00021"}) {
        const Picture decoded =
            pictureFromCommand({"ffmpeg", "-v", "error", "-i", _folder.file("film.mp4"), "-vf",
                                "select=eq(n\\," + std::to_string(std::stoi(number) - 1) + ")", "-frames:v",
                                "1", "-c:v", "ppm", "-f", "rawvideo", "-"});
        const Picture drawn = pictureFromCommand({"convert", _folder.file("frames/frame_") + number + ".png",
                                                  "-crop", "320x180+0+0", "+repage", "-depth", "8", "ppm:-"});
        EXPECT_LT(meanDifference(decoded, drawn), 6) << number;
    }
}
TEST_F(Fly, MistakesAreOneLine) {
    writeFile(_folder.file("file"), "");
    fs::create_directory(_folder.file("old"));
    writeFile(_folder.file("old/frame_00007.png"), "");
    const std::pair<const char*, const char*> cases[] = {
        {"--fly 1 --frames file", "cannot make the folder file"},
        {"--fly 1 --frames file/in/it", "cannot make the folder file/in/it"},
        {"--fly 1 --frames old", "old holds frames already"},
        {"--fly 1 --record old", "name a .mp4 file"},
        {"--fly 1 --record none/a.mp4", "cannot write none/a.mp4: there is no such folder"},
        {"--fly 1 --frames new --record file/a.mp4", "cannot write file/a.mp4"},
        {"--fly 1 --size 1x20 --record a.mp4", "a side of a film has at least 2 pixels"},
        {"--fly 1 --defaults none.json", "there is no such file"},
        {"--fly 1 --fps zero", "no rate"},
    };
    for (const auto& [line, says] : cases)
        expectMistake(line, says, {"file", "old"});
}

TEST_F(Fly, ALongFlightLeavesNothingBehind) {
    const Ended ended = zentaro("--fly 600 --seed 1 --size 160x90 --verbose");
    EXPECT_EQ(ended.status, 0);
    const auto numberAfter = [&](const std::string& text) {
        const auto place = ended.out.find(text);
        return place == std::string::npos ? 0.0 : std::stod(ended.out.substr(place + text.size()));
    };
    const double early = numberAfter("after a minute: ");
    EXPECT_GT(early, 1);
    EXPECT_LE(numberAfter("at the end: "), 1.01 * early);
    const auto filesIn = [&](const std::string& when) {
        const std::string line = ended.out.substr(ended.out.find(when));
        return line.substr(line.find("resident"), line.find('\n') - line.find("resident"));
    };
    EXPECT_EQ(filesIn("after a minute"), filesIn("at the end"));
    EXPECT_THAT(ended.out, HasSubstr("left behind: 0 tweens, 0 display links\n"));
}

}  // namespace
