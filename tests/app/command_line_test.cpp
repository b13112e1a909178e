// The command line, row by row: what is understood, and what each mistake is told.
// Every mistake is one line and writes nothing.
#include "app/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Arguments are separated by spaces; '' stands for an empty one.
CommandLine parse(const std::string& line) {
    std::vector<std::string> words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
        words.push_back(word == "''" ? "" : word);
    }
    const std::vector<std::string_view> arguments(words.begin(), words.end());
    return parseCommandLine(arguments);
}

CommandLineOptions understood(const std::string& line) {
    const CommandLine result = parse(line);
    if (const auto* mistake = std::get_if<CommandLineMistake>(&result)) {
        ADD_FAILURE() << line << ": " << mistake->line;
        return {};
    }
    return std::get<CommandLineOptions>(result);
}

TEST(CommandLine, NothingAskedForIsAPlainStart) {
    const CommandLineOptions options = understood("");
    EXPECT_TRUE(options.plainStart);
    EXPECT_EQ(options.size, CGSizeMake(1280, 720));
    EXPECT_FALSE(options.scale || options.snapshot || options.fullscreen || options.verbose);
    EXPECT_EQ(options.defaultsFile, "");
}

TEST(CommandLine, WindowOptions) {
    const CommandLineOptions options =
        understood("--size 800x450 --scale 1.5 --fullscreen --defaults a.json --verbose");
    EXPECT_FALSE(options.plainStart);
    EXPECT_EQ(options.size, CGSizeMake(800, 450));
    EXPECT_EQ(options.scale, 1.5);
    EXPECT_TRUE(options.fullscreen && options.verbose);
    EXPECT_EQ(options.defaultsFile, "a.json");
}

TEST(CommandLine, Links) {
    const CommandLineOptions options = understood("--new zentaro://julia/0/0/1/1 --verbose");
    EXPECT_EQ(options.link, "zentaro://julia/0/0/1/1");
    EXPECT_TRUE(options.startsAnother && options.verbose && !options.plainStart);
    EXPECT_EQ(understood("--snapshot a.png /julia/0/0/1/1 --palette 2").link, "/julia/0/0/1/1");
}

TEST(CommandLine, SnapshotOptions) {
    const CommandLineOptions options = understood(
        "--seed 18446744073709551615 --snapshot=a.PNG --screen --type julia --palette 10 --view "
        "-2,-1.5,7.5e-1,1.5");
    ASSERT_TRUE(options.snapshot);
    EXPECT_EQ(options.snapshot->file, "a.PNG");
    EXPECT_TRUE(options.snapshot->screen);
    EXPECT_EQ(options.snapshot->fractalType, 2);
    EXPECT_EQ(options.snapshot->palette, 10);
    EXPECT_EQ(options.snapshot->view, (ViewCorners{-2, -1.5F, 0.75F, 1.5F}));
    EXPECT_EQ(options.seed, 18446744073709551615U);
}

TEST(CommandLine, FlightOptions) {
    const CommandLineOptions plain = understood("--fly 0.5 --seed 7");
    ASSERT_TRUE(plain.flight);
    EXPECT_FALSE(plain.snapshot || plain.flight->fractalType || plain.flight->palette ||
                 plain.flight->cycling);
    EXPECT_EQ(plain.flight->seconds, 0.5);
    EXPECT_EQ(plain.flight->fps, 60);
    EXPECT_EQ(plain.seed, 7U);
    const CommandLineOptions full = understood(
        "--fly 3600 --fps 25 --type julia --palette 10 --cycling 4 --frames film --size 640x360 --scale 2");
    ASSERT_TRUE(full.flight);
    EXPECT_EQ(full.flight->fps, 25);
    EXPECT_EQ(full.flight->fractalType, 2);
    EXPECT_EQ(full.flight->palette, 10);
    EXPECT_EQ(full.flight->cycling, 4);
    EXPECT_EQ(full.flight->framesFolder, "film");
}

TEST(CommandLine, EndingsOfPictures) {
    for (const char* file : {"a.png", "a.jpg", "a.b.JPEG", "a.jpg.PNG"}) {
        EXPECT_EQ(understood(std::string("--snapshot ") + file).snapshot->file, file);
    }
}

TEST(CommandLine, LargestSizesPass) {
    EXPECT_EQ(understood("--snapshot a.png --size 16384x16384").size, CGSizeMake(16384, 16384));
    EXPECT_EQ(understood("--snapshot a.png --size 4096x4096 --scale 4").size, CGSizeMake(4096, 4096));
    EXPECT_EQ(understood("--snapshot a.png --size 32768x2 --scale 0.5").size, CGSizeMake(32768, 2));
    EXPECT_EQ(understood("--snapshot a.png --size 1x1").size, CGSizeMake(1, 1));
}

TEST(CommandLine, HelpAndVersionAnswerAtOnce) {
    for (const char* line : {"--help", "--verbose --help --nonsense", "--size 5x5 --help"}) {
        const CommandLine help = parse(line);
        ASSERT_TRUE(std::holds_alternative<CommandLineAnswer>(help)) << line;
        const std::string& text = std::get<CommandLineAnswer>(help).text;
        for (const char* option :
             {"--size", "--scale", "--fullscreen", "--defaults", "--verbose", "--snapshot", "--screen",
              "--type", "--palette", "--view", "--seed", "--new", "LINK", "--version", "--help"}) {
            EXPECT_THAT(text, testing::HasSubstr(option));
        }
    }
    const CommandLine version = parse("--version");
    ASSERT_TRUE(std::holds_alternative<CommandLineAnswer>(version));
    EXPECT_THAT(std::get<CommandLineAnswer>(version).text,
                testing::MatchesRegex("zentaro [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

struct Mistake {
    const char* line;
    const char* says;   ///< what is wrong
    const char* right;  ///< what would be right
};

class CommandLineMistakes : public testing::TestWithParam<Mistake> {};

TEST_P(CommandLineMistakes, AreOneLineThatSaysWhatWouldBeRight) {
    const CommandLine result = parse(GetParam().line);
    ASSERT_TRUE(std::holds_alternative<CommandLineMistake>(result)) << GetParam().line;
    const std::string& said = std::get<CommandLineMistake>(result).line;
    EXPECT_THAT(said, testing::HasSubstr(GetParam().says));
    EXPECT_THAT(said, testing::HasSubstr(GetParam().right));
    EXPECT_THAT(said, testing::Not(testing::HasSubstr("\n")));
}

INSTANTIATE_TEST_SUITE_P(
    Table, CommandLineMistakes,
    testing::Values(
        Mistake{"--colour", "unknown option '--colour'", "--help"},
        Mistake{"-v", "unknown option '-v'", "--help"}, Mistake{"--", "unknown option '--'", "--help"},
        Mistake{"--snapshot a.png b.png", "'b.png' is no link", "http://zentaro.example/"},
        Mistake{"''", "'' is no link", "http://zentaro.example/"},
        Mistake{"http://other.example/julia/0/0/1/1", "another site", "http://zentaro.example/"},
        Mistake{"/julia/0/0/1/1 /julia/0/0/1/1", "a second link", "give one"},
        Mistake{"/julia/0/0/1/1 --snapshot a.png --view 0,0,1,1", "--view and the link", "one of them"},
        Mistake{"/julia/0/0/1/1 --fly 1 --type julia", "--type and the link", "one of them"},
        Mistake{"/julia/0/0/1/1 --new --snapshot a.png", "--new opens a window", "one of them"},
        Mistake{"--verbose=yes", "takes no value", "leave out 'yes'"},
        Mistake{"--size", "--size needs a value", "--size 1280x720"},
        Mistake{"--size --verbose", "--size needs a value", "--size 1280x720"},
        Mistake{"--size=", "--size needs a value", "--size 1280x720"},
        Mistake{"--snapshot ''", "--snapshot needs a value", "--snapshot picture.png"},
        Mistake{"--defaults", "--defaults needs a value", "settings.json"},
        Mistake{"--size 5x5 --size 6x6", "--size is given twice", "once"},
        Mistake{"--size 1280", "no size", "WxH"}, Mistake{"--size 1280x", "no size", "WxH"},
        Mistake{"--size x720", "no size", "WxH"}, Mistake{"--size 12.5x7", "no size", "WxH"},
        Mistake{"--size 1280x720x3", "no size", "WxH"}, Mistake{"--size 1280X720", "no size", "WxH"},
        Mistake{"--size 99999999999999999999x1", "no size", "WxH"},
        Mistake{"--size 0x720", "empty", "start at 1"}, Mistake{"--size 1280x-720", "empty", "start at 1"},
        Mistake{"--size 16385x1", "too large", "at most 16384"},
        Mistake{"--size 9223372036854775807x1", "too large", "at most 16384"},
        Mistake{"--size 8193x1 --scale 2", "too large", "at most 16384"},
        Mistake{"--scale 4 --size 10x5000", "too large", "at most 16384"},
        Mistake{"--scale 0", "no scale", "0.5 to 4"}, Mistake{"--scale 4.01", "no scale", "0.5 to 4"},
        Mistake{"--scale nan", "no scale", "0.5 to 4"}, Mistake{"--scale 2x", "no scale", "0.5 to 4"},
        Mistake{"--scale -1", "no scale", "0.5 to 4"},
        Mistake{"--snapshot a.gif", "no known ending", ".png, .jpg or .jpeg"},
        Mistake{"--snapshot png", "no known ending", ".png, .jpg or .jpeg"},
        Mistake{"--screen", "--screen goes with a picture", "--snapshot FILE"},
        Mistake{"--type julia", "--type goes with a picture", "--snapshot FILE"},
        Mistake{"--palette 1", "--palette goes with a picture", "--snapshot FILE"},
        Mistake{"--view 0,0,1,1", "--view goes with a picture", "--snapshot FILE"},
        Mistake{"--fps 30", "--fps goes with a flight", "--fly SECONDS"},
        Mistake{"--snapshot a.png --cycling 1", "--cycling goes with a flight", "--fly SECONDS"},
        Mistake{"--frames film", "--frames goes with a flight", "--fly SECONDS"},
        Mistake{"--fly 60 --screen", "--screen goes with a picture", "--snapshot FILE"},
        Mistake{"--palette 1", "a picture or a flight", "--fly SECONDS"},
        Mistake{"--fly 60 --snapshot a.png", "--snapshot draws one picture", "one of them"},
        Mistake{"--fly 60 --fullscreen", "--fullscreen opens a window and --fly", "one of them"},
        Mistake{"--fly", "--fly needs a value", "--fly 60"}, Mistake{"--fly 0", "no length", "--fly 60"},
        Mistake{"--fly -1", "no length", "above 0"}, Mistake{"--fly nan", "no length", "above 0"},
        Mistake{"--fly 1000001", "no length", "up to 1000000"}, Mistake{"--fly 1m", "no length", "seconds"},
        Mistake{"--fly 1 --fps 0", "no rate", "1 to 240"},
        Mistake{"--fly 1 --fps 241", "no rate", "1 to 240"},
        Mistake{"--fly 1 --fps 29.97", "no rate", "1 to 240"},
        Mistake{"--fly 1 --cycling 2", "unknown", "0 (off), 1 or 4"},
        Mistake{"--fly 1 --cycling 04", "unknown", "0 (off), 1 or 4"},
        Mistake{"--snapshot a.png --fullscreen", "--fullscreen opens a window", "one of them"},
        Mistake{"--snapshot a.png --type Julia", "unknown", "mandelbrot or julia"},
        Mistake{"--snapshot a.png --palette 11", "unknown", "0 to 10"},
        Mistake{"--snapshot a.png --palette -1", "unknown", "0 to 10"},
        Mistake{"--snapshot a.png --palette red", "unknown", "0 to 10"},
        Mistake{"--snapshot a.png --seed -1", "no seed", "from 0 up"},
        Mistake{"--snapshot a.png --seed 1.5", "no seed", "from 0 up"}));

INSTANTIATE_TEST_SUITE_P(
    Views, CommandLineMistakes,
    testing::Values(Mistake{"--snapshot a.png --view 0,0,1", "no view", "x1,y1,x2,y2"},
                    Mistake{"--snapshot a.png --view 0,0,1,1,1", "no view", "x1,y1,x2,y2"},
                    Mistake{"--snapshot a.png --view 0,,1,1", "no view", "x1,y1,x2,y2"},
                    Mistake{"--snapshot a.png --view 0,0,1,nan", "no view", "x1,y1,x2,y2"},
                    Mistake{"--snapshot a.png --view -inf,0,1,1", "no view", "x1,y1,x2,y2"},
                    Mistake{"--snapshot a.png --view 0,0,1e39,1", "no view", "x1,y1,x2,y2"},
                    Mistake{"--snapshot a.png --view 0,0,0,1", "empty", "x1 < x2"},
                    Mistake{"--snapshot a.png --view 0,1,1,1", "empty", "y1 < y2"},
                    Mistake{"--snapshot a.png --view 1,0,1.00000001,1", "empty in single precision",
                            "x1 < x2"},
                    Mistake{"--snapshot a.png --view 1,0,0,1", "reversed", "x1 < x2"},
                    Mistake{"--snapshot a.png --view 0,1,1,0", "reversed", "y1 < y2"},
                    Mistake{"--snapshot a.png --view 0,0,10,1", "too large", "less than 10"},
                    Mistake{"--snapshot a.png --view 0,-5,1,5", "too large", "less than 10"},
                    Mistake{"--snapshot a.png --view -3e38,0,3e38,1", "too large", "less than 10"}));

}  // namespace
