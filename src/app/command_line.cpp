// The parser: takes the arguments apart, has each option read by its own reader, and finds what contradicts.
// Every mistake has its own line that says what would be right.
#include "app/command_line.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "app/command_line_options.h"
#include "app/shared_link.h"
#include "main_screen/link_host.h"
#include "platform/foundation/file_url.h"
#include "platform/foundation/quoted_text.h"

namespace {

const CommandLineOption* findOption(std::string_view name) {
    for (const auto& option : commandLineOptions()) {
        if (option.name == name) return &option;
    }
    return nullptr;
}

/// As the help and mistakes name it.
std::string_view neededFor(OptionUse use) {
    switch (use) {
        case OptionUse::anything:
            break;
        case OptionUse::pictureOrFlight:
            return "--snapshot FILE or --fly SECONDS";
        case OptionUse::picture:
            return "--snapshot FILE";
        case OptionUse::flight:
            return "--fly SECONDS";
    }
    return {};
}

std::string helpText() {
    std::string text =
        "Zentaro, a full-screen fractal explorer.\n\n"
        "usage: zentaro [OPTIONS] [LINK | PICTURE]\n"
        "  LINK                      open this view: http://" +
        linkHost() +
        "/TYPE/x1/y1/x2/y2,\n"
        "                            " ZENTARO_URL_SCHEME
        "://TYPE/x1/y1/x2/y2, or only /TYPE/x1/y1/x2/y2\n"
        "  PICTURE                   open the view of this .png or .jpg file that Zentaro saved\n";
    OptionUse use = OptionUse::anything;
    for (const auto& option : commandLineOptions()) {
        if (option.use != use) text.append("with ").append(neededFor(option.use)).append(":\n");
        use = option.use;
        std::string left(2, ' ');
        left.append(option.name).append(1, ' ').append(option.value);
        left.resize(std::max<std::size_t>(left.size() + 2, 28), ' ');
        text += left + std::string(option.help) + "\n";
    }
    return text + "  --version                 print the version, and end\n" +
           "  --help                    print this, and end\n";
}

std::string useless(const CommandLineReading& reading) {
    const bool picture = reading.has("--snapshot");
    const bool flight = reading.has("--fly");
    for (const auto name : reading.given) {
        std::string_view with;
        switch (findOption(name)->use) {
            case OptionUse::anything:
                continue;
            case OptionUse::pictureOrFlight:
                if (!picture && !flight) with = "a picture or a flight";
                break;
            case OptionUse::picture:
                if (!picture) with = "a picture";
                break;
            case OptionUse::flight:
                if (!flight) with = "a flight";
                break;
        }
        if (!with.empty()) {
            return std::string(name) + " goes with " + std::string(with) + "; add " +
                   std::string(neededFor(findOption(name)->use));
        }
    }
    return {};
}

bool opensSomething(const CommandLineReading& reading) {
    return !reading.options.link.empty() || !reading.options.picture.empty();
}

std::string conflictIn(const CommandLineReading& reading) {
    if (auto mistake = useless(reading); !mistake.empty()) return mistake;
    const bool picture = reading.has("--snapshot");
    const bool flight = reading.has("--fly");
    if (picture && flight) return "--snapshot draws one picture and --fly flies; give one of them";
    for (const std::string_view opensWindow : {"--fullscreen", "--new"}) {
        if ((picture || flight) && reading.has(opensWindow)) {
            return std::string(opensWindow) + " opens a window and " + (picture ? "--snapshot" : "--fly") +
                   " needs none; give one of them";
        }
    }
    for (const std::string_view alsoThere : {"--view", "--type"}) {
        if (opensSomething(reading) && reading.has(alsoThere)) {
            return std::string(alsoThere) + " and the " +
                   (reading.options.link.empty() ? "picture" : "link") +
                   " both say what to show; give one of them";
        }
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
    if (reading.has("--record") && (side(size.width) < 2 || side(size.height) < 2))
        return "--size times --scale is too small; a side of a film has at least 2 pixels";
    return {};
}

/// "--name=value" and "--name value" mean the same.
std::pair<std::string_view, std::optional<std::string_view>> splitArgument(std::string_view argument) {
    const auto equals = argument.find('=');
    if (!argument.starts_with("--") || equals == std::string_view::npos) return {argument, std::nullopt};
    return {argument.substr(0, equals), argument.substr(equals + 1)};
}

std::string readLinkOrPicture(CommandLineReading& reading, std::string_view argument) {
    if (opensSomething(reading))
        return "there is a second link or picture " + quoted(argument) + "; give one";
    if (auto path = pathOfFileURL(argument)) {
        reading.options.picture = *std::move(path);
        return {};
    }
    if (namesPicture(argument) && argument.find("://") == std::string_view::npos) {
        reading.options.picture = argument;
        return {};
    }
    const auto link = readSharedLink(argument);
    if (const auto* mistake = std::get_if<LinkMistake>(&link)) return mistake->line;
    reading.options.link = std::get<NSURL>(link).absoluteString();
    return {};
}

/// Reads the option, link or picture at the front of the arguments and takes it off them.
std::string readNext(CommandLineReading& reading, std::span<const std::string_view>& rest) {
    const std::string_view argument = rest.front();
    rest = rest.subspan(1);
    if (!argument.starts_with("-")) return readLinkOrPicture(reading, argument);
    auto [name, value] = splitArgument(argument);
    const CommandLineOption* option = findOption(name);
    if (option == nullptr) return "unknown option " + quoted(argument) + "; zentaro --help lists them all";
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
    CommandLineReading reading;
    reading.options.plainStart = arguments.empty();
    while (!arguments.empty()) {
        if (arguments.front() == "--help") return CommandLineAnswer{helpText()};
        if (arguments.front() == "--version") return CommandLineAnswer{"zentaro " ZENTARO_VERSION "\n"};
        if (auto mistake = readNext(reading, arguments); !mistake.empty()) return CommandLineMistake{mistake};
    }
    if (auto mistake = conflictIn(reading); !mistake.empty()) return CommandLineMistake{mistake};
    for (const std::string_view window : {"--size", "--scale", "--fullscreen", "--defaults", "--seed"})
        reading.options.startsAnother |= reading.has(window);
    if (reading.has("--snapshot")) reading.options.snapshot = reading.snapshot;
    if (reading.has("--fly")) reading.options.flight = reading.flight;
    return reading.options;
}

int32_t pixelsForPoints(CGFloat points, double scale) {
    return static_cast<int32_t>(std::lround(points * scale));
}
