// The options of the command line: how each is written, read and explained, one row for each.
// Apart from the parser, so that a new option is one reader and one row.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_line.h"

/// The options under way, with which of them were given.
struct CommandLineReading {
    CommandLineOptions options;
    SnapshotOptions snapshot;
    FlightOptions flight;
    std::vector<std::string_view> given;

    bool has(std::string_view name) const {
        for (const auto& one : given) {
            if (one == name) return true;
        }
        return false;
    }
};

/// What an option is of use to; the help lists them in this order.
enum class OptionUse { anything, pictureOrFlight, picture, flight };

struct CommandLineOption {
    /// Empty for success, else the mistake.
    using Reader = std::string (*)(CommandLineReading&, std::string_view value);

    std::string_view name;
    std::string_view value;  ///< how the help writes the value; empty for a switch
    std::string_view example;
    OptionUse use;
    Reader read;
    std::string_view help;
};

/// By its ending: .png, .jpg or .jpeg in any case.
bool namesPicture(std::string_view file);

/// In the order of the help.
std::span<const CommandLineOption> commandLineOptions();
