// The two ways to start: in a window, or for one picture without a display. Each answers the exit status.
// main itself only chooses between them, so that each includes no host but its own.
#pragma once

#include <chrono>
#include <string>

#include "app/command_line.h"

/// Until the user ends it. Without a display a start without arguments draws zentaro.png instead.
int startDesktop(const CommandLineOptions& options, std::chrono::steady_clock::time_point begun);

/// Draws the options' picture into its file and prints one line about it.
int startSnapshot(const CommandLineOptions& options);

/// One line on stderr; answers 2, the exit status of every failure.
int failStart(const std::string& line);
