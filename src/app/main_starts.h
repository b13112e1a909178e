// The ways to start: in a window, or without a display for one picture or for a flight. Each answers the exit
// status. main itself only chooses between them, so that each includes no host but its own.
#pragma once

#include <chrono>
#include <string>

#include "app/command_line.h"

/// One of the two; a mistake is one line.
template <typename Value>
struct OrMistake {
    Value value{};
    std::string mistake;
};

/// Until the user ends it. Without a display a start without arguments draws zentaro.png and films a
/// flight into zentaro.mp4 instead.
int startDesktop(const CommandLineOptions& options, std::chrono::steady_clock::time_point begun);

/// Draws the options' picture into its file and prints one line about it.
int startSnapshot(const CommandLineOptions& options);

/// Flies as the options say and prints each flight and a summary.
int startFlight(const CommandLineOptions& options);

/// One line on stderr; answers 2, the exit status of every failure.
int failStart(const std::string& line);
