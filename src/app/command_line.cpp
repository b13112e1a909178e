// The command line's rules: one table of options, one reader for each kind of value.
// Written by hand because every mistake has its own line that says what would be right, and because numbers
// must be read whole, finite and independent of the locale.
#include "app/command_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

namespace {

/// The options under way, with which of them were given.
struct Reading {
    CommandLineOptions options;
    SnapshotOptions snapshot;
    std::vector<std::string_view> given;

    bool has(std::string_view name) const {
        for (const auto& one : given) {
            if (one == name) return true;
        }
        return false;
    }
};

/// Empty for success, else the mistake.
using Reader = std::string (*)(Reading&, std::string_view value);

struct Option {
    std::string_view name;
    std::string_view value;  ///< how the help writes the value; empty for a switch
    std::string_view example;
    bool snapshotOnly;
    Reader read;
    std::string_view help;
};

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::string quoted(std::string_view text) {
    std::string result(1, '\'');
    result.append(text).push_back('\'');
    return result;
}

std::string readSize(Reading& reading, std::string_view value) {
    const auto cross = value.find('x');
    const auto wrong = [&] {
        return "--size " + quoted(value) + " is no size; give WxH in points, such as --size 1280x720";
    };
    if (cross == std::string_view::npos) return wrong();
    const auto width = wholeNumber<int64_t>(value.substr(0, cross));
    const auto height = wholeNumber<int64_t>(value.substr(cross + 1));
    if (!width || !height) return wrong();
    if (*width <= 0 || *height <= 0) {
        return "--size " + quoted(value) + " is empty; width and height start at 1, such as --size 1280x720";
    }
    reading.options.size = {static_cast<CGFloat>(*width), static_cast<CGFloat>(*height)};
    return {};
}

std::string readScale(Reading& reading, std::string_view value) {
    const auto scale = wholeNumber<double>(value);
    // Written so that NaN is refused too.
    if (!scale || !(*scale >= 0.5 && *scale <= 4)) {
        return "--scale " + quoted(value) + " is no scale; give pixels per point from 0.5 to 4, such as " +
               "--scale 2";
    }
    reading.options.scale = *scale;
    return {};
}

std::string readFullscreen(Reading& reading, std::string_view) {
    reading.options.fullscreen = true;
    return {};
}

std::string readDefaults(Reading& reading, std::string_view value) {
    reading.options.defaultsFile = value;
    return {};
}

std::string readVerbose(Reading& reading, std::string_view) {
    reading.options.verbose = true;
    return {};
}

bool endsWithIgnoringCase(std::string_view text, std::string_view ending) {
    if (text.size() < ending.size()) return false;
    const auto tail = text.substr(text.size() - ending.size());
    for (std::size_t i = 0; i < ending.size(); ++i) {
        const char c = tail[i];
        const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        if (lower != ending[i]) return false;
    }
    return true;
}

std::string readSnapshot(Reading& reading, std::string_view value) {
    reading.snapshot.file = value;
    for (const auto ending : {".png", ".jpg", ".jpeg"}) {
        if (endsWithIgnoringCase(value, ending)) return {};
    }
    return "--snapshot " + quoted(value) + " has no known ending; name a .png, .jpg or .jpeg file";
}

std::string readScreen(Reading& reading, std::string_view) {
    reading.snapshot.screen = true;
    return {};
}

std::string readType(Reading& reading, std::string_view value) {
    if (value != "mandelbrot" && value != "julia") {
        return "--type " + quoted(value) + " is unknown; give mandelbrot or julia";
    }
    reading.snapshot.fractalType = value == "julia" ? 2 : 1;
    return {};
}

std::string readPalette(Reading& reading, std::string_view value) {
    const auto palette = wholeNumber<int32_t>(value);
    if (!palette || *palette < 0 || *palette > 10) {
        return "--palette " + quoted(value) + " is unknown; give a number from 0 to 10";
    }
    reading.snapshot.palette = *palette;
    return {};
}

std::optional<std::array<float, 4>> fourNumbers(std::string_view value) {
    std::array<float, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const bool last = i + 1 == numbers.size();
        const auto comma = value.find(',');
        if ((comma == std::string_view::npos) != last) return std::nullopt;
        const auto number = wholeNumber<float>(value.substr(0, comma));
        if (!number || !std::isfinite(*number)) return std::nullopt;
        numbers[i] = *number;
        if (!last) value.remove_prefix(comma + 1);
    }
    return numbers;
}

std::string readView(Reading& reading, std::string_view value) {
    const std::string about = "--view " + quoted(value);
    const auto numbers = fourNumbers(value);
    if (!numbers) {
        return about + " is no view; give four numbers x1,y1,x2,y2, such as --view -2,-1.2,1,1.2";
    }
    const auto [x1, y1, x2, y2] = *numbers;
    // Single precision as in links and jumps: what is refused there is refused here, with the reason.
    const float width = x2 - x1;
    const float height = y2 - y1;
    if (width == 0 || height == 0) {
        return about + " is empty in single precision; its edges must differ: x1 < x2 and y1 < y2";
    }
    if (width < 0 || height < 0) {
        return about + " is reversed; give the smaller edges first: x1 < x2 and y1 < y2";
    }
    if (!(width < 10 && height < 10)) {
        return about + " is too large; it must be less than 10 wide and less than 10 tall";
    }
    reading.snapshot.view = ViewCorners{x1, y1, x2, y2};
    return {};
}

std::string readSeed(Reading& reading, std::string_view value) {
    const auto seed = wholeNumber<uint64_t>(value);
    if (!seed) return "--seed " + quoted(value) + " is no seed; give a whole number from 0 up";
    reading.snapshot.seed = *seed;
    return {};
}

constexpr std::array<Option, 11> kOptions{{
    {"--size", "WxH", "1280x720", false, readSize, "size of the window or picture in points (1280x720)"},
    {"--scale", "S", "2", false, readScale, "pixels per point, 0.5 to 4 (the display's own)"},
    {"--fullscreen", "", "", false, readFullscreen, "start in full screen"},
    {"--defaults", "FILE", "settings.json", false, readDefaults,
     "use this settings file; a picture only reads it"},
    {"--verbose", "", "", false, readVerbose, "log events with their times to the error output"},
    {"--snapshot", "FILE", "picture.png", false, readSnapshot,
     "draw a .png or .jpg picture without a display, and end"},
    {"--screen", "", "", true, readScreen, "the whole screen with its toolbar"},
    {"--type", "mandelbrot|julia", "julia", true, readType, "the fractal"},
    {"--palette", "N", "3", true, readPalette, "the palette, 0 to 10"},
    {"--view", "x1,y1,x2,y2", "-2,-1.2,1,1.2", true, readView,
     "the view's edges, less than 10 apart; the width is fitted to the picture"},
    {"--seed", "N", "1", true, readSeed, "start of the random numbers"},
}};

const Option* findOption(std::string_view name) {
    for (const auto& option : kOptions) {
        if (option.name == name) return &option;
    }
    return nullptr;
}

std::string helpText() {
    std::string text =
        "Zentaro, a full-screen fractal explorer.\n\n"
        "usage: zentaro [OPTIONS]\n";
    bool snapshotOnly = false;
    for (const auto& option : kOptions) {
        if (option.snapshotOnly && !snapshotOnly) text += "with --snapshot:\n";
        snapshotOnly = option.snapshotOnly;
        std::string left(2, ' ');
        left.append(option.name).append(1, ' ').append(option.value);
        left.resize(std::max<std::size_t>(left.size() + 2, 28), ' ');
        text += left + std::string(option.help) + "\n";
    }
    return text + "  --version                 print the version, and end\n" +
           "  --help                    print this, and end\n";
}

std::string conflictIn(const Reading& reading) {
    const bool snapshot = reading.has("--snapshot");
    for (const auto name : reading.given) {
        if (findOption(name)->snapshotOnly && !snapshot) {
            return std::string(name) + " goes with a picture; add --snapshot FILE";
        }
    }
    if (snapshot && reading.options.fullscreen) {
        return "--fullscreen opens a window and --snapshot needs none; give one of them";
    }
    const double scale = reading.options.scale.value_or(1);
    const auto side = [&](CGFloat points) { return std::round(points * scale); };
    const CGSize size = reading.options.size;
    if (side(size.width) > kLargestPictureSide || side(size.height) > kLargestPictureSide) {
        return "--size times --scale is too large; a side has at most " +
               std::to_string(kLargestPictureSide) + " pixels";
    }
    if (side(size.width) < 1 || side(size.height) < 1) {
        return "--size times --scale is too small; a side has at least 1 pixel";
    }
    return {};
}

/// "--name=value" and "--name value" mean the same.
std::pair<std::string_view, std::optional<std::string_view>> splitArgument(std::string_view argument) {
    const auto equals = argument.find('=');
    if (!argument.starts_with("--") || equals == std::string_view::npos) return {argument, std::nullopt};
    return {argument.substr(0, equals), argument.substr(equals + 1)};
}

std::string unknownArgument(std::string_view argument) {
    if (argument.starts_with("-") && argument.size() > 1) {
        return "unknown option " + quoted(argument) + "; zentaro --help lists them all";
    }
    return "unexpected argument " + quoted(argument) + "; options start with --, see zentaro --help";
}

/// Reads the option at the front of the arguments and takes it off them.
std::string readNext(Reading& reading, std::span<const std::string_view>& rest) {
    auto [name, value] = splitArgument(rest.front());
    const Option* option = findOption(name);
    if (option == nullptr) return unknownArgument(rest.front());
    rest = rest.subspan(1);
    if (reading.has(option->name)) return std::string(name) + " is given twice; give it once";
    reading.given.push_back(option->name);
    const bool takesValue = !option->value.empty();
    if (!takesValue && value) return std::string(name) + " takes no value; leave out " + quoted(*value);
    if (takesValue && !value && !rest.empty() && !rest.front().starts_with("--")) {
        value = rest.front();
        rest = rest.subspan(1);
    }
    if (takesValue && (!value || value->empty())) {
        return std::string(name) + " needs a value, such as " + std::string(name) + " " +
               std::string(option->example);
    }
    return option->read(reading, value.value_or(std::string_view()));
}

}  // namespace

CommandLine parseCommandLine(std::span<const std::string_view> arguments) {
    Reading reading;
    reading.options.plainStart = arguments.empty();
    while (!arguments.empty()) {
        if (arguments.front() == "--help") return CommandLineAnswer{helpText()};
        if (arguments.front() == "--version") return CommandLineAnswer{"zentaro " ZENTARO_VERSION "\n"};
        if (auto mistake = readNext(reading, arguments); !mistake.empty()) return CommandLineMistake{mistake};
    }
    if (auto mistake = conflictIn(reading); !mistake.empty()) return CommandLineMistake{mistake};
    if (reading.has("--snapshot")) reading.options.snapshot = reading.snapshot;
    return reading.options;
}

int32_t pixelsForPoints(CGFloat points, double scale) {
    return static_cast<int32_t>(std::lround(points * scale));
}
