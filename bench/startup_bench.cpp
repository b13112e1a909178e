// How long the explorer takes from its start to its first frame, against a program that does the least.
// Both are started in turns on one virtual display, with Mesa's shader cache warm and without it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/virtual_display.h"

namespace {

constexpr int kRuns = 21;

/// Milliseconds until the program says that its first frame is shown.
double timeToFirstFrame(const std::vector<std::string>& command,
                        const std::vector<ChildProcess::Variable>& environment) {
    const auto begun = std::chrono::steady_clock::now();
    ChildProcess program(command, environment);
    if (!program.waitForText("first frame", 30)) {
        std::fprintf(stderr, "%s shows nothing:\n%s%s", command[0].c_str(), program.out().c_str(),
                     program.err().c_str());
        std::exit(1);
    }
    const auto took = std::chrono::steady_clock::now() - begun;
    program.signal(SIGTERM);
    program.wait(10);
    return std::chrono::duration<double, std::milli>(took).count();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void compare(const char* title, double most, const std::vector<ChildProcess::Variable>& environment,
             const std::vector<std::string>& minimal, const std::vector<std::string>& explorer) {
    std::vector<double> least;
    std::vector<double> ours;
    timeToFirstFrame(minimal, environment);  // both find their libraries and shaders in the caches
    timeToFirstFrame(explorer, environment);
    for (int i = 0; i < kRuns; ++i) {
        least.push_back(timeToFirstFrame(minimal, environment));
        ours.push_back(timeToFirstFrame(explorer, environment));
    }
    const double ratio = median(ours) / median(least);
    std::printf("%-22s minimal %6.1f ms   explorer %6.1f ms   ratio %.2f (at most %.1f)\n", title,
                median(least), median(ours), ratio, most);
}

}  // namespace

/// Expects `minimal_window` beside itself and the explorer as its argument, else one folder up.
int main(int argc, char** argv) {
    const auto here = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::string explorer = argc > 1 ? argv[1] : (here.parent_path() / "zentaro").string();
    std::optional<VirtualDisplay> display;
    std::vector<ChildProcess::Variable> environment{{"MESA_SHADER_CACHE_DISABLE", std::nullopt}};
    if (std::getenv("DISPLAY") == nullptr) {
        display.emplace();
        if (!display->isAvailable()) {
            std::fputs("startup_bench needs a display, or Xvfb to make one\n", stderr);
            return 1;
        }
        environment.emplace_back("DISPLAY", display->name());
    }
    // Settings of its own: the user's stay untouched.
    const auto settings = std::filesystem::temp_directory_path() / "zentaro-startup-bench.json";
    const std::vector<std::string> minimalCommand{(here / "minimal_window").string()};
    const std::vector<std::string> explorerCommand{explorer, "--verbose", "--defaults", settings.string()};
    compare("shader cache warm", 1.4, environment, minimalCommand, explorerCommand);
    environment[0].second = "true";
    compare("without shader cache", 1.8, environment, minimalCommand, explorerCommand);
    std::filesystem::remove(settings);
    return 0;
}
