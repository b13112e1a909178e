// Assertions on programming errors: they stop the program in every build, with the condition and
// where it stands as the text.
// A broken promise of the code itself must not go on to damage what the user keeps.
#pragma once

#include <cstdlib>

#include "platform/foundation/ns_log.h"

/// file: the name of the source file without its ending.
#define NSCAssert(condition, file)              \
    do {                                        \
        if (!(condition)) {                     \
            NSLog("%s (%s)", #condition, file); \
            std::abort();                       \
        }                                       \
    } while (false)
