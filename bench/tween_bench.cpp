// What a tween's step costs: a rectangle moved by name through the key-value interface, against the bare
// interpolation of a rectangle. Medians of interleaved runs in one process; a step must allocate nothing.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/counted_allocations.h"
#include "platform/foundation/ca_display_link.h"
#include "platform/foundation/geometry.h"
#include "platform/foundation/key_value.h"
#include "tween/easing.h"
#include "tween/gs_tween.h"

namespace {

constexpr int kRuns = 21;
constexpr int kSteps = 200000;
constexpr double kFrameNanoseconds = 1e9 / 60;
constexpr double kMostOfAFrame = 1e-4;

class Plane : public KeyValueCoding {
  public:
    CGRect fractalBounds{{-3, -1.5}, {4, 3}};

  protected:
    KeyValueTable makeKeyValueTable() override {
        return {{"fractalBounds", KeyValueAccess<CGRect>{[this] { return fractalBounds; },
                                                         [this](const CGRect& r) { fractalBounds = r; }}}};
    }
};

const CGRect kEnd = CGRectMake(-0.75, 0.1, 0.4, 0.3);

/// Nanoseconds of one step.
template <typename Step>
double timeOf(const Step& step) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kSteps; ++i)
        step(i);
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
    return took.count() / kSteps;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

CGRect interpolated(const CGRect& from, const CGRect& change, double e) {
    return {
        {std::fma(change.origin.x, e, from.origin.x), std::fma(change.origin.y, e, from.origin.y)},
        {std::fma(change.size.width, e, from.size.width), std::fma(change.size.height, e, from.size.height)}};
}

/// The plain one: same curve, same clock, same arithmetic, no names.
void stepPlainly(Plane& plane, int i) {
    static const CGRect from = plane.fractalBounds;
    static const CGRect change = {{kEnd.origin.x - from.origin.x, kEnd.origin.y - from.origin.y},
                                  {kEnd.size.width - from.size.width, kEnd.size.height - from.size.height}};
    plane.fractalBounds = interpolated(from, change, std::sin(i * (1.5707963267948966 / kSteps)));
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

}  // namespace

int main() {
    const auto moved = std::make_shared<Plane>();
    Plane plain;
    NSRunLoop& loop = NSRunLoop::currentRunLoop();
    const double length = kRuns * kSteps * loop.refreshInterval() * 2;
    const auto tween = GSTween::tweenWithTarget(moved, length, Sine::easeOut(),
                                                {{"fractalBounds", NSStringFromCGRect(kEnd)}});
    std::vector<double> tweens;
    std::vector<double> plains;
    tweens.reserve(kRuns);
    plains.reserve(kRuns);
    int64_t allocated = 0;
    for (int run = 0; run < kRuns; ++run) {
        plains.push_back(timeOf([&](int i) { stepPlainly(plain, i); }));
        const int64_t before = allocations;
        tweens.push_back(timeOf([&](int i) { loop.fireDisplayLinks(i); }));
        allocated += allocations - before;
    }
    tween->stop();
    const double step = median(tweens);
    const double share = step / kFrameNanoseconds;
    std::printf(
        "tween step %.1f ns, plain interpolation %.1f ns, ratio %.2f | %.5f %% of a frame (at most %g %%), "
        "%lld allocations in %d steps\n",
        step, median(plains), step / median(plains), share * 100, kMostOfAFrame * 100,
        static_cast<long long>(allocated), kRuns * kSteps);
    return allocated == 0 && share <= kMostOfAFrame ? 0 : 1;
}
