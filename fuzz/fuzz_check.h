// What a fuzz target holds to be true; a breach stops the run, and libFuzzer keeps the input.
// Not NSCAssert, which logs: a run makes millions of checks, and one line is enough.
#pragma once

#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                        \
    do {                                                             \
        if (!(condition)) {                                          \
            std::fprintf(stderr, "does not hold: %s\n", #condition); \
            std::abort();                                            \
        }                                                            \
    } while (false)
