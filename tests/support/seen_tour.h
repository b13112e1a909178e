// The settings of a user who has seen the tour: without it the first thing on a new screen.
// For tests and benchmarks of what lies below.
#pragma once

#include "platform/foundation/ns_user_defaults.h"

inline constexpr const char* seenTourSettings = R"({"MPCoachMarksShown": true})";

/// In the present settings, before the app is launched; written with the next change.
inline void countTourAsSeen() {
    NSUserDefaults::standardUserDefaults().setBool(true, "MPCoachMarksShown");
}
