// What a frame costs beyond the fractal's draw call: events, uniforms, composition of an unchanged overlay,
// presenting. Measured on the app as it runs, at 1280x720, on the headless host and in a window.
// The calls at the borders of these parts are intercepted here at link time, and time stamps are taken.
#include <GLES2/gl2.h>
#include <SDL.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ios_app_delegate.h"
#include "bench/counted_allocations.h"
#include "hosts/desktop/desktop_host.h"
#include "hosts/headless/headless_host.h"
#include "hosts/native/native_services.h"
#include "platform/foundation/ns_log.h"
#include "tests/support/seen_tour.h"
#include "tests/support/virtual_display.h"

namespace {

constexpr int kWarmUp = 120;  // beyond the first overlay, and every spring of the start
constexpr int kFrames = 400;
constexpr double kBudget = 0.02 * 1000 / 60;  // milliseconds

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

/// The stations of the frame under way.
struct Stations {
    Clock::time_point begun;
    Clock::time_point cleared;
    Clock::time_point drawCalled;
    Clock::time_point drawn;
    Clock::time_point composed;
    bool inFrame = false;
    bool fractalDrawn = false;
    int64_t allocationsAtBegin = 0;
};

struct FrameCost {
    double before = 0;  ///< events, queues, update
    double uniforms = 0;
    double draw = 0;
    double composition = 0;
    double present = 0;
    int64_t allocated = 0;
    double overhead() const { return before + uniforms + composition + present; }
};

Stations stations;
std::vector<FrameCost> costs;

void beginFrame() {
    stations = {};
    stations.inFrame = true;
    stations.allocationsAtBegin = allocations;
    stations.begun = Clock::now();
}

void endFrame() {
    const Clock::time_point end = Clock::now();
    if (!stations.inFrame || !stations.fractalDrawn) return;
    stations.inFrame = false;
    const int64_t allocated = allocations - stations.allocationsAtBegin;
    if (costs.size() == costs.capacity()) return;
    costs.push_back(
        {milliseconds(stations.begun, stations.cleared), milliseconds(stations.cleared, stations.drawCalled),
         milliseconds(stations.drawCalled, stations.drawn), milliseconds(stations.drawn, stations.composed),
         milliseconds(stations.composed, end), allocated});
}

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// Intercepted: every caller in this program comes by here, then goes on to the library.

extern "C" {

void glClear(GLbitfield mask) {
    static auto* real = next<void(GLbitfield)>("glClear");
    if (stations.inFrame && !stations.fractalDrawn) stations.cleared = Clock::now();
    real(mask);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    static auto* real = next<void(GLenum, GLint, GLsizei)>("glDrawArrays");
    if (stations.inFrame && !stations.fractalDrawn) stations.drawCalled = Clock::now();
    real(mode, first, count);
}

void glFinish() {
    static auto* real = next<void()>("glFinish");
    real();
    if (!stations.inFrame) return;
    if (stations.fractalDrawn) {
        stations.composed = Clock::now();
    } else {
        stations.fractalDrawn = true;
        stations.drawn = Clock::now();
    }
}

/// The rasteriser composes late, in the swap; here it is made to before, so that the two are told apart.
void SDL_GL_SwapWindow(SDL_Window* window) {
    static auto* real = next<void(SDL_Window*)>("SDL_GL_SwapWindow");
    glFinish();
    real(window);
    endFrame();
}

int SDL_PollEvent(SDL_Event* event) {
    static auto* real = next<int(SDL_Event*)>("SDL_PollEvent");
    if (!stations.inFrame) {
        beginFrame();
        if (costs.size() == costs.capacity()) {
            SDL_Event quit{};
            quit.type = SDL_QUIT;
            SDL_PushEvent(&quit);
        }
    }
    return real(event);
}
}

namespace {

double median(double FrameCost::*part) {
    std::vector<double> values;
    for (auto cost = costs.begin() + kWarmUp; cost != costs.end(); ++cost)
        values.push_back((*cost).*part);
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void report(const char* host) {
    if (costs.size() < kWarmUp + kFrames) {
        std::printf("%-9s only %zu frames were shown\n", host, costs.size());
        return;
    }
    std::vector<double> overheads;
    int64_t allocated = 0;
    for (auto cost = costs.begin() + kWarmUp; cost != costs.end(); ++cost) {
        overheads.push_back(cost->overhead());
        allocated += cost->allocated;
    }
    std::ranges::sort(overheads);
    std::printf(
        "%-9s draw %7.3f ms | overhead %6.3f ms (budget %.3f): events and update %.3f, uniforms %.3f, "
        "composition %.3f, present %.3f | %.2f allocations a frame\n",
        host, median(&FrameCost::draw), overheads[overheads.size() / 2], kBudget, median(&FrameCost::before),
        median(&FrameCost::uniforms), median(&FrameCost::composition), median(&FrameCost::present),
        static_cast<double>(allocated) / kFrames);
}

void startOver() {
    costs.clear();
    costs.reserve(kWarmUp + kFrames);
    stations = {};
}

void measureHeadless() {
    startOver();
    HeadlessHost host({{1280, 720}, 1, nullptr, ZENTARO_RESOURCES_DIR},
                      [] { return std::make_shared<iOSAppDelegate>(); });
    countTourAsSeen();
    host.launch();
    for (int i = 0; i < kWarmUp + kFrames; ++i) {
        beginFrame();
        host.step();
        endFrame();
    }
    report("headless");
}

void measureWindow() {
    startOver();
    const NativeServices services(nullptr, ZENTARO_RESOURCES_DIR);
    countTourAsSeen();
    const DesktopResult result = runDesktop({}, [] { return std::make_shared<iOSAppDelegate>(); });
    if (result.end != DesktopEnd::closed) std::printf("window    %s\n", result.why.c_str());
    report("window");
}

void measureBareSwap(const std::string& folder, const std::string& display) {
    ChildProcess minimal({folder + "/minimal_window", "swaps", std::to_string(kFrames)},
                         {{"DISPLAY", display}});
    minimal.wait(60);
    std::printf("minimal   a bare swap takes %s", minimal.out().c_str());
}

}  // namespace

int main() {
    NSLogSetSink([](std::string_view) {});
    const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    measureHeadless();
    std::optional<VirtualDisplay> display;
    if (std::getenv("DISPLAY") == nullptr) {
        display.emplace();
        if (!display->isAvailable()) {
            std::puts("no display, and no Xvfb to make one: the window is not measured");
            return 0;
        }
        setenv("DISPLAY", display->name().c_str(), 1);
    }
    measureWindow();
    measureBareSwap(folder, std::getenv("DISPLAY"));
    return 0;
}
