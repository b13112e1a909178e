// The wall clock, for the one measurement that needs it (a frame's cost).
// All other code below the hosts is handed its time as an argument.
#pragma once

#include <functional>

using CFAbsoluteTime = double;

/// Seconds on the host's wall clock. The headless host's stands still while a frame is drawn.
CFAbsoluteTime CFAbsoluteTimeGetCurrent();

/// Replaces the clock; an empty function restores the machine's own.
void CFAbsoluteTimeSetClock(std::function<CFAbsoluteTime()> clock);
