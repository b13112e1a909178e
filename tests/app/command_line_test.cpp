// The command line, row by row: what is understood, and what each mistake is told.
// Every mistake is one line and writes nothing.
#include "app/command_line.h"

#include <gmock/gmock.h>
#include <sstream>

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

TEST(CommandLine, Links) {
    const CommandLineOptions options = understood("--new zentaro://julia/0/0/1/1 --verbose");
    EXPECT_EQ(options.link, "zentaro://julia/0/0/1/1");
    EXPECT_TRUE(options.startsAnother && options.verbose && !options.plainStart);
    EXPECT_FALSE(understood("/julia/0/0/1/1 --verbose").startsAnother);
    EXPECT_TRUE(understood("/julia/0/0/1/1 --size 640x360").startsAnother);
    EXPECT_EQ(understood("--snapshot a.png /julia/0/0/1/1 --palette 2").link, "/julia/0/0/1/1");
}

TEST(CommandLine, Pictures) {
    for (const auto& [argument, picture] :
         std::vector<std::pair<std::string, std::string>>{{"a.png", "a.png"},
                                                          {"/julia/b.JPEG", "/julia/b.JPEG"},
                                                          {"file:///a%20b", "/a b"},
                                                          {"FILE://localhost/a.jpg", "/a.jpg"}}) {
        const CommandLineOptions options = understood(argument + " --snapshot c.png --palette 2");
        EXPECT_EQ(options.picture, picture);
        EXPECT_EQ(options.link, "");
    }
    EXPECT_EQ(understood("zentaro://julia/0/0/1/1.png").picture, "");
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

TEST(CommandLine, MistakesAreOneLineThatSaysWhatWouldBeRight) {
    const struct {
        const char* says;   ///< what is wrong
        const char* right;  ///< what would be right
        std::vector<const char*> lines;
    } mistakes[] = {
        {"unknown option '--colour'", "--help", {"--colour"}},
        {"unknown option '-v'", "--help", {"-v"}},
        {"unknown option '--'", "--help", {"--"}},
        {"'b.gif' is no link", "http://zentaro.example/", {"--snapshot a.png b.gif"}},
        {"'' is no link", "http://zentaro.example/", {"''"}},
        {"another site", "http://zentaro.example/", {"http://other.example/julia/0/0/1/1"}},
        {"a second link", "give one", {"/julia/0/0/1/1 /julia/0/0/1/1", "a.png /julia/0/0/1/1"}},
        {"a second link or picture 'a.png'", "give one", {"/julia/0/0/1/1 a.png"}},
        {"another program", "http://zentaro.example/", {"file://other/a.png", "file:///a%00.png"}},
        {"--view and the picture", "one of them", {"b.png --snapshot a.png --view 0,0,1,1"}},
        {"--view and the link", "one of them", {"/julia/0/0/1/1 --snapshot a.png --view 0,0,1,1"}},
        {"--type and the link", "one of them", {"/julia/0/0/1/1 --fly 1 --type julia"}},
        {"--new opens a window", "one of them", {"/julia/0/0/1/1 --new --snapshot a.png"}},
        {"takes no value", "leave out 'yes'", {"--verbose=yes"}},
        {"--size needs a value", "--size 1280x720", {"--size", "--size --verbose", "--size="}},
        {"--snapshot needs a value", "--snapshot picture.png", {"--snapshot ''"}},
        {"--defaults needs a value", "settings.json", {"--defaults"}},
        {"--size is given twice", "once", {"--size 5x5 --size 6x6"}},
        {"no size",
         "WxH",
         {"--size 1280", "--size 1280x", "--size x720", "--size 12.5x7", "--size 1280x720x3",
          "--size 1280X720", "--size 99999999999999999999x1"}},
        {"empty", "start at 1", {"--size 0x720", "--size 1280x-720"}},
        {"too large",
         "at most 16384",
         {"--size 16385x1", "--size 9223372036854775807x1", "--size 8193x1 --scale 2",
          "--scale 4 --size 10x5000"}},
        {"no scale", "0.5 to 4", {"--scale 0", "--scale 4.01", "--scale nan", "--scale 2x", "--scale -1"}},
        {"no known ending", ".png, .jpg or .jpeg", {"--snapshot a.gif", "--snapshot png"}},
        {"--screen goes with a picture", "--snapshot FILE", {"--screen", "--fly 60 --screen"}},
        {"--type goes with a picture", "--snapshot FILE", {"--type julia"}},
        {"--palette goes with a picture", "--snapshot FILE", {"--palette 1"}},
        {"--view goes with a picture", "--snapshot FILE", {"--view 0,0,1,1"}},
        {"--fps goes with a flight", "--fly SECONDS", {"--fps 30"}},
        {"--cycling goes with a flight", "--fly SECONDS", {"--snapshot a.png --cycling 1"}},
        {"--frames goes with a flight", "--fly SECONDS", {"--frames film"}},
        {"a picture or a flight", "--fly SECONDS", {"--palette 1"}},
        {"--snapshot draws one picture", "one of them", {"--fly 60 --snapshot a.png"}},
        {"--fullscreen opens a window and --fly", "one of them", {"--fly 60 --fullscreen"}},
        {"--fly needs a value", "--fly 60", {"--fly"}},
        {"no length", "--fly 60", {"--fly 0"}},
        {"no length", "above 0", {"--fly -1", "--fly nan"}},
        {"no length", "up to 1000000", {"--fly 1000001"}},
        {"no length", "seconds", {"--fly 1m"}},
        {"no rate", "1 to 240", {"--fly 1 --fps 0", "--fly 1 --fps 241", "--fly 1 --fps 29.97"}},
        {"unknown", "0 (off), 1 or 4", {"--fly 1 --cycling 2", "--fly 1 --cycling 04"}},
        {"--fullscreen opens a window", "one of them", {"--snapshot a.png --fullscreen"}},
        {"unknown", "mandelbrot or julia", {"--snapshot a.png --type Julia"}},
        {"unknown",
         "0 to 10",
         {"--snapshot a.png --palette 11", "--snapshot a.png --palette -1",
          "--snapshot a.png --palette red"}},
        {"no seed", "from 0 up", {"--snapshot a.png --seed -1", "--snapshot a.png --seed 1.5"}},
        {"no view",
         "x1,y1,x2,y2",
         {"--snapshot a.png --view 0,0,1", "--snapshot a.png --view 0,0,1,1,1",
          "--snapshot a.png --view 0,,1,1", "--snapshot a.png --view 0,0,1,nan",
          "--snapshot a.png --view -inf,0,1,1", "--snapshot a.png --view 0,0,1e39,1"}},
        {"empty", "x1 < x2", {"--snapshot a.png --view 0,0,0,1"}},
        {"empty", "y1 < y2", {"--snapshot a.png --view 0,1,1,1"}},
        {"empty in single precision", "x1 < x2", {"--snapshot a.png --view 1,0,1.00000001,1"}},
        {"reversed", "x1 < x2", {"--snapshot a.png --view 1,0,0,1"}},
        {"reversed", "y1 < y2", {"--snapshot a.png --view 0,1,1,0"}},
        {"too large",
         "less than 10",
         {"--snapshot a.png --view 0,0,10,1", "--snapshot a.png --view 0,-5,1,5",
          "--snapshot a.png --view -3e38,0,3e38,1"}}};
    for (const auto& [says, right, lines] : mistakes) {
        for (const char* line : lines) {
            const CommandLine result = parse(line);
            ASSERT_TRUE(std::holds_alternative<CommandLineMistake>(result)) << line;
            const std::string& said = std::get<CommandLineMistake>(result).line;
            EXPECT_THAT(said, testing::HasSubstr(says)) << line;
            EXPECT_THAT(said, testing::HasSubstr(right)) << line;
            EXPECT_THAT(said, testing::Not(testing::HasSubstr("\n")));
        }
    }
}

}  // namespace
