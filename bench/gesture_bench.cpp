// What a touch event costs on its way from the host to the fractal's rectangle: through the app, the window,
// the recognisers of the real main screen and its actions, against the bare arithmetic of a drag.
// Medians of interleaved runs in one process; a move must allocate nothing.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "app/ios_app_delegate.h"
#include "bench/counted_allocations.h"
#include "hosts/headless/headless_host.h"
#include "platform/foundation/ns_log.h"
#include "tests/support/seen_tour.h"

namespace {

constexpr int kRuns = 15;
constexpr int kEvents = 100000;
constexpr double kFrameNanoseconds = 1e9 / 60;
/// What ten fingers do in a frame on a screen that reports each 240 times a second.
constexpr int kEventsAFrame = 40;
constexpr double kMostOfAFrame = 2e-3;

template <typename Event>
double timeOf(const Event& event) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kEvents; ++i)
        event(i);
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
    return took.count() / kEvents;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Fingers side by side on the app's main screen.
class Fingers {
  public:
    Fingers(UIApplication& application, int count) : _application(application), _count(count) {
        for (int finger = 0; finger < count; ++finger)
            send(UITouchPhase::began, finger, 0);
    }
    ~Fingers() {
        for (int finger = 0; finger < _count; ++finger)
            send(UITouchPhase::ended, finger, 0);
    }
    Fingers(const Fingers&) = delete;
    Fingers& operator=(const Fingers&) = delete;

    /// One of them goes far enough for a gesture to begin.
    void begin() {
        for (const CGFloat way : {20, 30, 20, 0})
            send(UITouchPhase::moved, 0, way);
    }
    /// One after the other, to and fro by a point.
    void move(int i) { send(UITouchPhase::moved, i % _count, static_cast<CGFloat>(i / _count % 2)); }

  private:
    void send(UITouchPhase phase, int finger, CGFloat way) {
        _time += 0.002;
        _application.handle(
            HostTouch{phase, finger, {200 + 150 * static_cast<CGFloat>(finger) + way, 300}, _time});
    }

    UIApplication& _application;
    int _count;
    double _time = 0;
};

struct Bare {
    CGRect bounds{{-3, -1.5}, {4, 3}};
    CGPoint last;
};

void dragBarely(Bare& bare, int i) {
    const CGPoint place{40 + static_cast<CGFloat>(i % 2), 300};
    bare.bounds.origin.x -=
        static_cast<double>(static_cast<float>((place.x - bare.last.x) / 1280)) * bare.bounds.size.width;
    bare.bounds.origin.y -=
        static_cast<double>(static_cast<float>((place.y - bare.last.y) / 720)) * bare.bounds.size.height;
    bare.last = place;
    // As in the app, the next event finds its rectangle in memory.
    asm volatile("" : : "r"(&bare) : "memory");
}

struct Kind {
    const char* name;
    int fingers;
    bool begins;
    std::vector<double> times = {};
    int64_t allocated = 0;
};

void measure(UIApplication& application, Kind& kind) {
    Fingers fingers(application, kind.fingers);
    if (kind.begins) fingers.begin();
    const int64_t before = allocations;
    const double time = timeOf([&](int i) { fingers.move(i); });
    kind.allocated += allocations - before;
    kind.times.push_back(time);
}

/// NO if it costs too much.
bool report(const Kind& kind, double bare) {
    const double event = median(kind.times);
    const double share = event * kEventsAFrame / kFrameNanoseconds;
    std::printf(
        "%-16s %6.1f ns an event, ratio to the bare arithmetic %5.1f | %d events: %.3f %% of a frame "
        "(at most %g %%), %lld allocations in %d events\n",
        kind.name, event, event / bare, kEventsAFrame, share * 100, kMostOfAFrame * 100,
        static_cast<long long>(kind.allocated), kRuns * kEvents);
    return kind.allocated == 0 && share <= kMostOfAFrame;
}

}  // namespace

int main() {
    NSLogSetSink([](std::string_view) {});
    HeadlessHost host({{1280, 720}, 1, nullptr, ZENTARO_RESOURCES_DIR},
                      [] { return std::make_shared<iOSAppDelegate>(); });
    countTourAsSeen();
    host.launch();
    host.step();
    host.step();
    Kind kinds[] = {{"finger at rest", 1, false},
                    {"pan, 1 finger", 1, true},
                    {"pinch, 2 fingers", 2, true},
                    {"pinch, 5 fingers", 5, true}};
    Bare bare;
    std::vector<double> bareTimes;
    for (int run = 0; run < kRuns; ++run) {
        bareTimes.push_back(timeOf([&](int i) { dragBarely(bare, i); }));
        for (Kind& kind : kinds) {
            measure(host.application(), kind);
            // The glide ends.
            host.step(1);
        }
    }
    const double bareTime = median(bareTimes);
    std::printf("bare arithmetic  %6.1f ns\n", bareTime);
    bool fine = true;
    for (const Kind& kind : kinds)
        fine = report(kind, bareTime) && fine;
    return fine ? 0 : 1;
}
