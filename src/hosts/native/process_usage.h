// What this process holds of the machine.
// Long flights are watched with it: what grows is a leak.
#pragma once

#include <cstdint>

/// 0 where the system does not tell.
struct ProcessUsage {
    int64_t residentBytes = 0;
    int64_t openFiles = 0;
};

ProcessUsage currentProcessUsage();
