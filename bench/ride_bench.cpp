// How good the autopilot's rides are: 200 flights from the top view with fixed seeds, for each palette and
// for Julia, on the virtual clock. A ride that goes home for lack of targets is a dull one; the limits are
// held.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "app/flight_statistics.h"
#include "app/ios_app_delegate.h"
#include "hosts/headless/headless_host.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/foundation/random_source.h"
#include "tests/support/seen_tour.h"

namespace {

constexpr int64_t kFlights = 200;
constexpr uint64_t kSeeds = 4;  // each flies its share
constexpr double kDeepEnough = 1e-4;

struct Look {
    int32_t type;
    int32_t palette;
    double mostWithoutTargets;  ///< share of the flights
};

constexpr Look kLooks[] = {{1, 0, 0.05}, {1, 1, 0.1}, {1, 2, 0.1}, {1, 3, 0.1}, {1, 4, 0.1}, {1, 5, 0.1},
                           {2, 0, 0.1},  {2, 1, 0.1}, {2, 2, 0.1}, {2, 3, 0.1}, {2, 4, 0.1}, {2, 5, 0.1}};

/// Adds the flights of one seed.
void fly(const Look& look, uint64_t seed, FlightStatistics& statistics) {
    RandomSource::shared().seed(seed);
    HeadlessHost host({{1280, 720}, 1, nullptr, ZENTARO_RESOURCES_DIR, false},
                      [] { return std::make_shared<iOSAppDelegate>(); });
    NSUserDefaults::standardUserDefaults().setInteger(look.type, "fractalType");
    NSUserDefaults::standardUserDefaults().setInteger(look.palette, "fractalColoring");
    countTourAsSeen();
    host.launch();
    const auto window = host.application().delegate()->window();
    const auto screen = std::dynamic_pointer_cast<GameViewController>(window->rootViewController());
    screen->hideMenu(false);
    statistics.startAnew();
    int64_t left = kFlights / static_cast<int64_t>(kSeeds);
    screen->setFlightObserver([&](const auto& flight) {
        statistics.add(flight);
        --left;
    });
    while (left > 0)
        host.step();
    screen->setFlightObserver({});
}

bool ride(const Look& look) {
    FlightStatistics statistics;
    for (uint64_t seed = 1; seed <= kSeeds; ++seed)
        fly(look, seed, statistics);
    const bool good = statistics.shareWithoutTargets() <= look.mostWithoutTargets &&
                      statistics.medianDeepestWidth() <= kDeepEnough;
    std::printf(
        "%-10s palette %d: %lld of %lld without targets (at most %.0f %%), %lld home from the depth, "
        "median of the deepest widths %.3g%s\n",
        look.type == 2 ? "julia" : "mandelbrot", look.palette,
        static_cast<long long>(statistics.bouncesWithoutTargets()),
        static_cast<long long>(statistics.flights()), 100 * look.mostWithoutTargets,
        static_cast<long long>(statistics.bouncesWithoutGoodTargets()), statistics.medianDeepestWidth(),
        good ? "" : "  TOO DULL");
    std::fflush(stdout);
    return good;
}

}  // namespace

int main() {
    NSLogSetSink([](std::string_view) {});
    bool allGood = true;
    for (const Look& look : kLooks)
        allGood = ride(look) && allGood;
    return allGood ? EXIT_SUCCESS : EXIT_FAILURE;
}
