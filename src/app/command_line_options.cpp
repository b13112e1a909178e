// The readers, one for each kind of value, and the table.
// Written by hand because every mistake has its own line that says what would be right, and because numbers
// must be read whole, finite and independent of the locale.
#include "app/command_line_options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "platform/foundation/ascii_text.h"
#include "platform/foundation/decimal_text.h"
#include "platform/foundation/quoted_text.h"

namespace {

template <typename Integer>
std::optional<Integer> wholeText(std::string_view text) {
    Integer number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

template <>
std::optional<double> wholeText(std::string_view text) {
    const auto number = takeDecimal(text);
    return text.empty() ? number : std::nullopt;
}

std::string readSize(CommandLineReading& reading, std::string_view value) {
    const auto cross = value.find('x');
    const auto wrong = [&] {
        return "--size " + quoted(value) + " is no size; give WxH in points, such as --size 1280x720";
    };
    if (cross == std::string_view::npos) return wrong();
    const auto width = wholeText<int64_t>(value.substr(0, cross));
    const auto height = wholeText<int64_t>(value.substr(cross + 1));
    if (!width || !height) return wrong();
    if (*width <= 0 || *height <= 0) {
        return "--size " + quoted(value) + " is empty; width and height start at 1, such as --size 1280x720";
    }
    reading.options.size = {static_cast<CGFloat>(*width), static_cast<CGFloat>(*height)};
    return {};
}

std::string readScale(CommandLineReading& reading, std::string_view value) {
    const auto scale = wholeText<double>(value);
    // Written so that NaN is refused too.
    if (!scale || !(*scale >= 0.5 && *scale <= 4)) {
        return "--scale " + quoted(value) + " is no scale; give pixels per point from 0.5 to 4, such as " +
               "--scale 2";
    }
    reading.options.scale = *scale;
    return {};
}

std::string readFullscreen(CommandLineReading& reading, std::string_view) {
    reading.options.fullscreen = true;
    return {};
}

std::string readNew(CommandLineReading& reading, std::string_view) {
    reading.options.startsAnother = true;
    return {};
}

std::string readDefaults(CommandLineReading& reading, std::string_view value) {
    reading.options.defaultsFile = value;
    return {};
}

std::string readVerbose(CommandLineReading& reading, std::string_view) {
    reading.options.verbose = true;
    return {};
}

std::string readSnapshot(CommandLineReading& reading, std::string_view value) {
    reading.snapshot.file = value;
    if (namesPicture(value)) return {};
    return "--snapshot " + quoted(value) + " has no known ending; name a .png, .jpg or .jpeg file";
}

std::string readScreen(CommandLineReading& reading, std::string_view) {
    reading.snapshot.screen = true;
    return {};
}

std::string readType(CommandLineReading& reading, std::string_view value) {
    if (value != "mandelbrot" && value != "julia") {
        return "--type " + quoted(value) + " is unknown; give mandelbrot or julia";
    }
    reading.snapshot.fractalType = value == "julia" ? 2 : 1;
    reading.flight.fractalType = reading.snapshot.fractalType;
    return {};
}

std::string readPalette(CommandLineReading& reading, std::string_view value) {
    const auto palette = wholeText<int32_t>(value);
    if (!palette || *palette < 0 || *palette > 10) {
        return "--palette " + quoted(value) + " is unknown; give a number from 0 to 10";
    }
    reading.snapshot.palette = *palette;
    reading.flight.palette = *palette;
    return {};
}

std::optional<std::array<float, 4>> fourNumbers(std::string_view value) {
    std::array<float, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const bool last = i + 1 == numbers.size();
        const auto comma = value.find(',');
        if ((comma == std::string_view::npos) != last) return std::nullopt;
        const auto number = wholeText<float>(value.substr(0, comma));
        if (!number || !std::isfinite(*number)) return std::nullopt;
        numbers[i] = *number;
        if (!last) value.remove_prefix(comma + 1);
    }
    return numbers;
}

std::string readView(CommandLineReading& reading, std::string_view value) {
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

std::string readSeed(CommandLineReading& reading, std::string_view value) {
    const auto seed = wholeText<uint64_t>(value);
    if (!seed) return "--seed " + quoted(value) + " is no seed; give a whole number from 0 up";
    reading.options.seed = *seed;
    return {};
}

std::string readFly(CommandLineReading& reading, std::string_view value) {
    const auto seconds = wholeText<double>(value);
    if (!seconds || !(*seconds > 0 && *seconds <= kLongestFlight)) {
        return "--fly " + quoted(value) + " is no length; give seconds above 0 and up to 1000000, such as " +
               "--fly 60";
    }
    reading.flight.seconds = *seconds;
    return {};
}

std::string readFps(CommandLineReading& reading, std::string_view value) {
    const auto fps = wholeText<int32_t>(value);
    if (!fps || *fps < 1 || *fps > 240) {
        return "--fps " + quoted(value) + " is no rate; give whole frames a second from 1 to 240";
    }
    reading.flight.fps = *fps;
    return {};
}

std::string readCycling(CommandLineReading& reading, std::string_view value) {
    if (value != "0" && value != "1" && value != "4") {
        return "--cycling " + quoted(value) + " is unknown; give 0 (off), 1 or 4";
    }
    reading.flight.cycling = value[0] - '0';
    return {};
}

std::string readFrames(CommandLineReading& reading, std::string_view value) {
    reading.flight.framesFolder = value;
    return {};
}

std::string readRecord(CommandLineReading& reading, std::string_view value) {
    reading.flight.filmFile = value;
    if (asciiLowercase(value).ends_with(".mp4")) return {};
    return "--record " + quoted(value) + " has no known ending; name a .mp4 file";
}

using enum OptionUse;

constexpr std::array<CommandLineOption, 17> kOptions{{
    {"--size", "WxH", "1280x720", anything, readSize, "size of the window or picture in points (1280x720)"},
    {"--scale", "S", "2", anything, readScale, "pixels per point, 0.5 to 4 (the display's own)"},
    {"--fullscreen", "", "", anything, readFullscreen, "start in full screen"},
    {"--new", "", "", anything, readNew, "open in a new window, not in the one that is there"},
    {"--defaults", "FILE", "settings.json", anything, readDefaults,
     "use this settings file; a picture or a flight only reads it"},
    {"--seed", "N", "1", anything, readSeed, "start of the random numbers: the same, the same flights"},
    {"--verbose", "", "", anything, readVerbose, "log events with their times to the error output"},
    {"--snapshot", "FILE", "picture.png", anything, readSnapshot,
     "draw a .png or .jpg picture without a display, and end"},
    {"--fly", "SECONDS", "60", anything, readFly,
     "fly the autopilot without a display, as fast as it goes, and end"},
    {"--type", "mandelbrot|julia", "julia", pictureOrFlight, readType, "the fractal"},
    {"--palette", "N", "3", pictureOrFlight, readPalette, "the palette, 0 to 10"},
    {"--screen", "", "", picture, readScreen, "the whole screen with its toolbar"},
    {"--view", "x1,y1,x2,y2", "-2,-1.2,1,1.2", picture, readView,
     "the view's edges, less than 10 apart; the width is fitted to the picture"},
    {"--fps", "N", "30", flight, readFps, "frames a second of the flight's clock, 1 to 240 (60)"},
    {"--cycling", "0|1|4", "1", flight, readCycling, "speed at which the palette moves (0)"},
    {"--frames", "DIR", "film", flight, readFrames, "write every frame to DIR: frame_00001.png and so on"},
    {"--record", "FILE", "flight.mp4", flight, readRecord, "film every frame into a .mp4 file"},
}};

}  // namespace

bool namesPicture(std::string_view file) {
    const std::string name = asciiLowercase(file);
    return name.ends_with(".png") || name.ends_with(".jpg") || name.ends_with(".jpeg");
}

std::span<const CommandLineOption> commandLineOptions() {
    return kOptions;
}
