// How many heap allocations the program has made: the global operators of a benchmark that asks count them.
// A frame, a tween's step and a touch are to make none.
#pragma once

#include <atomic>
#include <cstdint>

extern std::atomic<int64_t> allocations;
