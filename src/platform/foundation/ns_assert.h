// Assertions on programming errors: they stop the program in every build, with the condition as the text.
// A broken promise of the code itself must not go on to damage what the user keeps.
#pragma once

#include <cstdlib>

#include "platform/foundation/ns_log.h"

#define NSCAssert(condition)         \
    do {                             \
        if (!(condition)) {          \
            NSLog("%s", #condition); \
            std::abort();            \
        }                            \
    } while (false)
