// What a change of the tour's mark costs the main thread, frame by frame: painting hole and caption, and
// handing the pixels to the GPU, besides the fractal's draw. Against the same frames at rest, so that the
// draw and the composition cancel out; by the clock, which a busy machine stretches, and by what the main
// thread itself worked.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

#include "app/ios_app_delegate.h"
#include "hosts/headless/headless_host.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"

namespace {

constexpr int kChanges = 30;
/// The caption's fade, the longest of a change's movements, at 60 frames a second.
constexpr int kFramesOfAChange = 18;
constexpr double kBudget = 8;  // ms

/// Milliseconds, each frame's.
struct Times {
    std::vector<double> clock;
    std::vector<double> worked;
};

double workedByThisThread() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

void stepInto(Times& times, HeadlessHost& host) {
    const auto start = std::chrono::steady_clock::now();
    const double worked = workedByThisThread();
    host.step();
    times.worked.push_back(workedByThisThread() - worked);
    times.clock.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
}

double at(std::vector<double> values, double share) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void report(const char* name, const std::vector<double>& resting, const std::vector<double>& moving) {
    const double cost = at(moving, 0.5) - at(resting, 0.5);
    std::printf("%s: at rest %.2f ms, while a mark changes %.2f ms (worst tenth %.2f)\n", name,
                at(resting, 0.5), at(moving, 0.5), at(moving, 0.9));
    std::printf("    a mark's change costs %.2f ms a frame (budget %.0f): %s\n", cost, kBudget,
                cost <= kBudget ? "within" : "OVER");
}

}  // namespace

int main() {
    NSLogSetSink([](std::string_view) {});
    auto delegate = std::make_shared<iOSAppDelegate>();
    HeadlessHost host({{1280, 720}, 1, nullptr, ZENTARO_RESOURCES_DIR}, [&] { return delegate; });
    if (!host.launch()) return 1;
    auto& screen = dynamic_cast<GameViewController&>(*delegate->window()->rootViewController());
    host.play(2);
    Times moving;
    Times resting;
    for (int change = 0; change < kChanges; ++change) {
        screen.coachMarksView->goToCoachMarkIndexed(1 + static_cast<uint32_t>(change) % 5);
        for (int i = 0; i < kFramesOfAChange; ++i)
            stepInto(moving, host);
        host.play(0.2);
        for (int i = 0; i < kFramesOfAChange; ++i)
            stepInto(resting, host);
    }
    report("by the clock", resting.clock, moving.clock);
    report("main thread", resting.worked, moving.worked);
    return 0;
}
