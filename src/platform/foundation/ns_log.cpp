// Formats log lines and hands them to the sink, one at a time.
// The state is never destroyed: objects that die at exit may still log.
#include "platform/foundation/ns_log.h"

#include <cstdio>
#include <mutex>
#include <utility>

#include "platform/foundation/ns_string.h"

namespace {

struct LogState {
    /// Recursive, so that a sink may log about its own trouble.
    std::recursive_mutex mutex;
    NSLogSink sink;
};

LogState& state() {
    static auto* instance = new LogState;
    return *instance;
}

void emit(std::string& line) {
    LogState& log = state();
    const std::lock_guard lock(log.mutex);
    if (log.sink) {
        const NSLogSink sink = log.sink;
        sink(line);
        return;
    }
    // One write per line, so that lines of several processes do not mix.
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

void NSLog(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string line = NSString_stringWithFormatArguments(format, arguments);
    va_end(arguments);
    emit(line);
}

NSLogSink NSLogSetSink(NSLogSink sink) {
    LogState& log = state();
    const std::lock_guard lock(log.mutex);
    return std::exchange(log.sink, std::move(sink));
}
