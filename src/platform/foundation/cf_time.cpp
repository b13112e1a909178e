// Reads the wall clock, or the one that the host put in its place.
// A virtual clock makes a scripted run the same every time.
#include "platform/foundation/cf_time.h"

#include <chrono>
#include <cstdint>
#include <utility>

namespace {

std::function<CFAbsoluteTime()>& replacedClock() {
    static std::function<CFAbsoluteTime()> clock;
    return clock;
}

/// From the Unix epoch to 2001-01-01, where this clock starts; fewer seconds leave finer fractions.
constexpr CFAbsoluteTime epoch = 978307200;

}  // namespace

CFAbsoluteTime CFAbsoluteTimeGetCurrent() {
    if (const auto& clock = replacedClock()) return clock();
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<CFAbsoluteTime>(now - std::chrono::seconds(static_cast<int64_t>(epoch)))
        .count();
}

void CFAbsoluteTimeSetClock(std::function<CFAbsoluteTime()> clock) {
    replacedClock() = std::move(clock);
}
