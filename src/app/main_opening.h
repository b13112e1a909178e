// What a start opens first, read before anything is started.
// So that a picture that names no view ends in one line and changes nothing.
#pragma once

#include <optional>
#include <string>

#include "app/command_line.h"
#include "app/main_starts.h"
#include "platform/host/host_event.h"

/// The options' link, or their picture, which names a view; nothing for neither.
OrMistake<std::optional<HostEvent>> openingOf(const CommandLineOptions& options);

/// The same in one line, for an app that runs already; empty for neither.
std::string handedOverText(const CommandLineOptions& options);
