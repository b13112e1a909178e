// What the autopilot's look at a frame costs between two flights, at 1280x720: drawing, reading back, scaling
// to grey, 50,000 probes; and what it allocates after its first run. It must pass unseen: all but the drawing
// stays under two frames' time. The calls at the borders of these parts are intercepted here at link time,
// and time stamps are taken.
#include <GLES2/gl2.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <vector>

#include "app/ios_app_delegate.h"
#include "bench/counted_allocations.h"
#include "hosts/headless/headless_host.h"
#include "main_screen/game_view_controller.h"
#include "main_screen/target_search.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/foundation/random_source.h"
#include "tests/support/seen_tour.h"

namespace {

constexpr int32_t kWidth = 1280;
constexpr int32_t kHeight = 720;
constexpr int kRuns = 40;
constexpr double kBudget = 2 * 1000.0 / 60;  // milliseconds

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

/// The last glFinish and the last glReadPixels that ended.
Clock::time_point drawn;
Clock::time_point readBack;

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

void glFinish() {
    static auto* real = next<void()>("glFinish");
    real();
    drawn = Clock::now();
}

void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type, void* pixels) {
    static auto* real = next<void(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*)>("glReadPixels");
    real(x, y, width, height, format, type, pixels);
    readBack = Clock::now();
}
}

namespace {

struct Cost {
    double draw = 0;
    double read = 0;  ///< the turning upright included
    double grey = 0;
    double probes = 0;
    double step = 0;  ///< the whole of it in the app's own update, the drawing taken off
    int64_t allocated = 0;
};

double median(const std::vector<Cost>& costs, double Cost::*part) {
    std::vector<double> values;
    for (const Cost& cost : costs)
        values.push_back(cost.*part);
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

/// The parts one by one, with the very calls of the app. The probes are those of a frame without a hit, which
/// takes all of them.
Cost measureParts(GameViewController& screen, std::vector<uint8_t>& grey) {
    Cost cost;
    const Clock::time_point begun = Clock::now();
    const UIImageRef frame = screen.glkView()->snapshot();
    const Clock::time_point upright = Clock::now();
    CGBitmapContext(grey.data(), kWidth, kHeight, kWidth, CGColorSpace::deviceGray)
        .drawImage(CGRectMake(0, 0, kWidth, kHeight), *frame->image());
    const Clock::time_point scaled = Clock::now();
    // Two columns in three alike: the tests come far, and none says yes.
    for (std::size_t i = 0; i < grey.size(); ++i) {
        if (i % 3 != 0) grey[i] = grey[i - i % 3];
    }
    const Clock::time_point readied = Clock::now();
    for (int target = 0; target < 10; ++target) {
        if (findInterestingPixel({grey.data(), kWidth, kHeight}, RandomSource::shared())) std::abort();
    }
    cost.probes = milliseconds(readied, Clock::now());
    cost.draw = milliseconds(begun, drawn);
    cost.read = milliseconds(drawn, upright);
    cost.grey = milliseconds(upright, scaled);
    return cost;
}

/// The pilot's own step, from the end of its drawing to its choice.
void measureStep(GameViewController& screen, Cost& cost) {
    int64_t before = 0;
    screen.setFlightObserver([&](const auto&) {
        cost.step = milliseconds(drawn, Clock::now());
        cost.allocated = allocations - before;
    });
    screen.resetScreen(nullptr);
    before = allocations;
    screen.update();
    screen.setFlightObserver({});
}

bool measure(const char* name, int32_t type, int32_t palette) {
    RandomSource::shared().seed(1);
    HeadlessHost host({{kWidth, kHeight}, 1, nullptr, ZENTARO_RESOURCES_DIR, false},
                      [] { return std::make_shared<iOSAppDelegate>(); });
    NSUserDefaults::standardUserDefaults().setInteger(type, "fractalType");
    NSUserDefaults::standardUserDefaults().setInteger(palette, "fractalColoring");
    countTourAsSeen();
    host.launch();
    const auto window = host.application().delegate()->window();
    const auto screen = std::dynamic_pointer_cast<GameViewController>(window->rootViewController());
    screen->hideMenu(false);
    host.step();
    std::vector<uint8_t> grey(std::size_t{kWidth} * kHeight);
    std::vector<Cost> costs;
    for (int run = 0; run < kRuns; ++run) {
        costs.push_back(measureParts(*screen, grey));
        measureStep(*screen, costs.back());
    }
    int64_t allocated = 0;
    for (auto cost = costs.begin() + 1; cost != costs.end(); ++cost)
        allocated = std::max(allocated, cost->allocated);
    const double step = median(costs, &Cost::step);
    const bool good = step <= kBudget && allocated == 0;
    std::printf(
        "%-21s draw %6.2f ms | read back %5.2f, grey %5.2f, 50,000 probes %5.2f ms | the pilot's step "
        "beside drawing %5.2f ms (budget %.1f), %lld allocations%s\n",
        name, median(costs, &Cost::draw), median(costs, &Cost::read), median(costs, &Cost::grey),
        median(costs, &Cost::probes), step, kBudget, static_cast<long long>(allocated),
        good ? "" : "  TOO MUCH");
    return good;
}

}  // namespace

int main() {
    NSLogSetSink([](std::string_view) {});
    bool good = measure("mandelbrot, palette 0", 1, 0);
    good = measure("mandelbrot, palette 3", 1, 3) && good;
    good = measure("julia, palette 0", 2, 0) && good;
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
