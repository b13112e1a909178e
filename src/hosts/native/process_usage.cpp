// Reads the process's own entries of /proc.
// Systems without it answer zeros.
#include "hosts/native/process_usage.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

ProcessUsage currentProcessUsage() {
    ProcessUsage usage;
    int64_t total = 0;
    int64_t resident = 0;
    if (std::ifstream("/proc/self/statm") >> total >> resident) {
        usage.residentBytes = resident * sysconf(_SC_PAGESIZE);
    }
    std::error_code none;
    for (std::filesystem::directory_iterator file("/proc/self/fd", none), end; !none && file != end;
         file.increment(none)) {
        ++usage.openFiles;
    }
    // The listing's own.
    if (usage.openFiles > 0) --usage.openFiles;
    return usage;
}
