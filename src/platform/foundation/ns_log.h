// The system log: fixed English lines for developers, one call a line.
// Where lines go is the host's choice; tests listen in.
#pragma once

#include <cstdarg>
#include <functional>
#include <string>
#include <string_view>

/// printf-style; appends the line end itself. "%@" of the platform's texts is written "%s" here.
[[gnu::format(printf, 1, 2)]] void NSLog(const char* format, ...);

/// Receives every line (without its end). Lines logged from several threads arrive one after another.
using NSLogSink = std::function<void(std::string_view line)>;

/// Replaces the sink and answers the former one; an empty sink means stderr.
NSLogSink NSLogSetSink(NSLogSink sink);
