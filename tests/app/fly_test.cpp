// The program's flights from the command line: what they print, that a seed and a film's pictures repeat, and
// what a mistake is told. The program itself is started, without a display.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/picture.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

struct Ended {
    int status = -1;
    std::string out;
    std::string err;
};

class Fly : public testing::Test {
  protected:
    Ended zentaro(const std::string& line) {
        std::vector<std::string> arguments = {ZENTARO_EXECUTABLE};
        std::istringstream words(line);
        for (std::string word; words >> word;)
            arguments.push_back(word);
        // What is freed counts as freed at once: a sanitized build would keep it aside for a while.
        ChildProcess program(arguments,
                             {{"DISPLAY", std::nullopt},
                              {"XDG_CONFIG_HOME", _folder.file("config")},
                              {"ASAN_OPTIONS", "quarantine_size_mb=0:thread_local_quarantine_size_kb=0"}},
                             _folder.file(""));
        const int status = program.wait(120).value_or(-1);
        return {status, program.out(), program.err()};
    }
    /// Without the last line's time, which differs from run to run.
    static std::string flightsOf(const std::string& text) { return text.substr(0, text.rfind(" frames")); }

    TemporaryFolder _folder;
};

TEST_F(Fly, PrintsEachFlightAndASummary) {
    const Ended ended = zentaro("--fly 11 --seed 3 --size 320x180 --type julia --palette 2");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
    const std::string flight = " s  http://[^/]+/julia/[-0-9.]+/[-0-9.]+/[-0-9.]+/[-0-9.]+\n";
    EXPECT_THAT(ended.out,
                MatchesRegex(" +0\\.00" + flight + " +5\\.02" + flight + " +10\\.03" + flight +
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

TEST_F(Fly, MistakesAreOneLine) {
    writeFile(_folder.file("file"), "");
    fs::create_directory(_folder.file("old"));
    writeFile(_folder.file("old/frame_00007.png"), "");
    struct Case {
        const char* line;
        const char* says;
    };
    const Case cases[] = {
        {"--fly 1 --frames file", "cannot make the folder file"},
        {"--fly 1 --frames file/in/it", "cannot make the folder file/in/it"},
        {"--fly 1 --frames old", "old holds frames already"},
        {"--fly 1 --defaults none.json", "there is no such file"},
        {"--fly 1 --fps zero", "no rate"},
    };
    for (const Case& c : cases) {
        const Ended ended = zentaro(c.line);
        EXPECT_EQ(ended.status, 2) << c.line;
        EXPECT_EQ(ended.out, "") << c.line;
        EXPECT_THAT(ended.err, MatchesRegex("zentaro: [^\n]+\n"));
        EXPECT_THAT(ended.err, HasSubstr(c.says));
    }
    EXPECT_THAT(_folder.names(), testing::ElementsAre("file", "old"));
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
