// What a ride of many flights was like: how often it went home and why, and how deep it came.
// Pure, so that the command line and the benchmark count alike.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "main_screen/game_view_controller.h"

class FlightStatistics {
  public:
    void add(const GameViewController::Flight& flight);
    /// The flights that follow are another app's: the trip so far ends without having returned.
    void startAnew() { _deepestOfTrip = 0; }

    int64_t flights() const { return _flights; }
    int64_t bouncesWithoutTargets() const { return _withoutTargets; }
    int64_t bouncesWithoutGoodTargets() const { return _withoutGoodTargets; }
    /// Of all flights, those that went home because nothing was busy.
    double shareWithoutTargets() const;
    /// Width of the smallest view reached so far, plane units.
    double deepestWidth() const { return _deepest; }
    /// Of the smallest widths before each return; that of the way since the last one if there was none yet.
    double medianDeepestWidth() const;
    /// Two lines.
    std::string summary() const;

  private:
    void visit(double width);

    int64_t _flights = 0;
    int64_t _withoutTargets = 0;
    int64_t _withoutGoodTargets = 0;
    double _deepest = 0;
    /// Since the last return; 0 for none.
    double _deepestOfTrip = 0;
    std::vector<double> _deepestOfTrips;
};

/// "" for a flight that goes on.
const char* reasonOf(GameViewController::Bounce bounce);
