// What the user asked for on the command line, checked before anything is started.
// Pure: it prints nothing, opens nothing and knows no host, so that every rule of it is tested in a table.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/geometry.h"

/// The corners of a view as the app takes them: finite, x1 < x2, y1 < y2, less than 10 wide and tall.
struct ViewCorners {
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    friend bool operator==(const ViewCorners&, const ViewCorners&) = default;
};

/// A picture to draw without a display. What is absent is as in the settings, or the app's own start.
struct SnapshotOptions {
    std::string file;     ///< ends in .png, .jpg or .jpeg
    bool screen = false;  ///< the whole screen with the toolbar instead of the fractal alone
    std::optional<int32_t> fractalType;
    std::optional<int32_t> palette;
    std::optional<ViewCorners> view;
};

/// A flight of the autopilot without a display. What is absent is as in the settings.
struct FlightOptions {
    double seconds = 0;  ///< above 0, at most kLongestFlight
    int32_t fps = 60;    ///< frames a second of the flight's clock
    std::optional<int32_t> fractalType;
    std::optional<int32_t> palette;
    std::optional<int32_t> cycling;
    std::string framesFolder;  ///< empty: no pictures
    std::string filmFile;      ///< ends in .mp4; empty: no film
};

struct CommandLineOptions {
    CGSize size{1280, 720};  ///< points, whole numbers
    /// Pixels per point; absent: the display's own in a window, 1 in a picture.
    std::optional<double> scale;
    bool fullscreen = false;
    std::string defaultsFile;  ///< empty: the user's own
    bool verbose = false;
    /// Where to start: one of the app's own links, see readSharedLink; empty for the app's own start.
    std::string link;
    /// Or a picture that says which view it shows; empty for none.
    std::string picture;
    /// A window of its own, even where a running app could open these: asked for, or because other options
    /// say what the window is to be like.
    bool startsAnother = false;
    /// Absent: other random numbers at every start.
    std::optional<uint64_t> seed;
    /// At most one of the two; neither: a window.
    std::optional<SnapshotOptions> snapshot;
    std::optional<FlightOptions> flight;
    /// Nothing at all was asked for: the friendliest thing possible may be done.
    bool plainStart = true;
};

/// The text asked for with --help or --version.
struct CommandLineAnswer {
    std::string text;
};
/// One line without its end: what is wrong and what would be right.
struct CommandLineMistake {
    std::string line;
};

using CommandLine = std::variant<CommandLineOptions, CommandLineAnswer, CommandLineMistake>;

/// Reads the arguments that follow the program's name. --help and --version end the reading.
CommandLine parseCommandLine(std::span<const std::string_view> arguments);

/// The largest side of a picture or window in pixels.
inline constexpr int32_t kLargestPictureSide = 16384;

/// Seconds.
inline constexpr double kLongestFlight = 1e6;

/// Pixels for that many points, rounded to whole ones.
int32_t pixelsForPoints(CGFloat points, double scale);
