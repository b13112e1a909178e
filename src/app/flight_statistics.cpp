// Counting flights.
// A trip lasts from the top view to the next return to it.
#include "app/flight_statistics.h"

#include <algorithm>
#include <cstdio>

using Bounce = GameViewController::Bounce;

void FlightStatistics::add(const GameViewController::Flight& flight) {
    ++_flights;
    visit(flight.from.size.width);
    if (flight.bounce == Bounce::noTargets) ++_withoutTargets;
    if (flight.bounce == Bounce::noGoodTargets) ++_withoutGoodTargets;
    if (flight.bounce == Bounce::none) return;
    _deepestOfTrips.push_back(_deepestOfTrip);
    _deepestOfTrip = 0;
}

void FlightStatistics::visit(double width) {
    if (_deepest == 0 || width < _deepest) _deepest = width;
    if (_deepestOfTrip == 0 || width < _deepestOfTrip) _deepestOfTrip = width;
}

double FlightStatistics::shareWithoutTargets() const {
    return _flights == 0 ? 0 : static_cast<double>(_withoutTargets) / static_cast<double>(_flights);
}

double FlightStatistics::medianDeepestWidth() const {
    if (_deepestOfTrips.empty()) return _deepestOfTrip;
    std::vector<double> widths = _deepestOfTrips;
    const auto middle = widths.begin() + static_cast<std::ptrdiff_t>(widths.size() / 2);
    std::nth_element(widths.begin(), middle, widths.end());
    return *middle;
}

std::string FlightStatistics::summary() const {
    char text[256];
    std::snprintf(text, sizeof text,
                  "%lld flights, %lld home without targets (%.1f %%), %lld home without good targets\n"
                  "deepest width %.3g, median of the deepest before each return %.3g\n",
                  static_cast<long long>(_flights), static_cast<long long>(_withoutTargets),
                  100 * shareWithoutTargets(), static_cast<long long>(_withoutGoodTargets), _deepest,
                  medianDeepestWidth());
    return text;
}

const char* reasonOf(Bounce bounce) {
    switch (bounce) {
        case Bounce::none:
            return "";
        case Bounce::noTargets:
            return "no targets, bouncing back to top";
        case Bounce::noGoodTargets:
            return "no GOOD targets for HERE, bouncing back to top";
    }
    return "";
}
