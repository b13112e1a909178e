// A moment, by the wall clock that the host may put in place of the machine's own.
// What is reckoned in days and weeks uses it; everything on the screen is handed its time instead.
#pragma once

#include "platform/foundation/cf_time.h"

inline constexpr double secondsInADay = 86400;

class NSDate {
  public:
    /// Seconds since 2001-01-01 00:00 UTC.
    explicit NSDate(CFAbsoluteTime timeIntervalSinceReferenceDate) : _time(timeIntervalSinceReferenceDate) {}
    /// Now.
    static NSDate date() { return NSDate(CFAbsoluteTimeGetCurrent()); }

    CFAbsoluteTime timeIntervalSinceReferenceDate() const { return _time; }
    /// Seconds; negative where the other one is later.
    double timeIntervalSinceDate(NSDate other) const { return _time - other._time; }
    NSDate dateByAddingTimeInterval(double seconds) const { return NSDate(_time + seconds); }

    friend bool operator==(NSDate, NSDate) = default;

  private:
    CFAbsoluteTime _time;
};
