// The program's entry: reads the command line and starts what it asks for.
// The last line of every failure is here or in the starts: one line on stderr, status 2.
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/command_line.h"
#include "app/main_starts.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/random_source.h"

namespace {

using Clock = std::chrono::steady_clock;

void logWithTimes(Clock::time_point begun) {
    NSLogSetSink([begun](std::string_view line) {
        const double seconds = std::chrono::duration<double>(Clock::now() - begun).count();
        std::fprintf(stderr, "[%9.3f] %.*s\n", seconds, static_cast<int>(line.size()), line.data());
    });
}

int start(const CommandLineOptions& options, Clock::time_point begun) {
    if (options.verbose) logWithTimes(begun);
    if (options.seed) RandomSource::shared().seed(*options.seed);
    if (options.snapshot) return startSnapshot(options);
    if (options.flight) return startFlight(options);
    return startDesktop(options, begun);
}

}  // namespace

int main(int argc, char** argv) {
    const Clock::time_point begun = Clock::now();
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const CommandLine line = parseCommandLine(arguments);
    if (const auto* mistake = std::get_if<CommandLineMistake>(&line)) return failStart(mistake->line);
    if (const auto* answer = std::get_if<CommandLineAnswer>(&line)) {
        std::fputs(answer->text.c_str(), stdout);
        return 0;
    }
    return start(std::get<CommandLineOptions>(line), begun);
}
