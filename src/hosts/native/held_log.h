// Keeps the log back while the app starts.
// A start that fails says one line of its own, and one that succeeds loses nothing.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/ns_log.h"

class HeldLog {
  public:
    /// hold: false lets every line pass.
    explicit HeldLog(bool hold) : _holding(hold) {
        if (hold) _former = NSLogSetSink([this](std::string_view line) { _lines.emplace_back(line); });
    }
    /// What was not released is forgotten.
    ~HeldLog() {
        if (_holding) NSLogSetSink(std::move(_former));
    }
    HeldLog(const HeldLog&) = delete;
    HeldLog& operator=(const HeldLog&) = delete;

    /// Logs what was held, and holds no more.
    void release() {
        if (!std::exchange(_holding, false)) return;
        NSLogSetSink(std::move(_former));
        for (const std::string& line : _lines)
            NSLog("%s", line.c_str());
    }

    /// The beginning of what was held, up to its first line end; "" for nothing.
    std::string firstLine() const {
        return _lines.empty() ? std::string() : _lines.front().substr(0, _lines.front().find('\n'));
    }

  private:
    bool _holding;
    NSLogSink _former;
    std::vector<std::string> _lines;
};

/// Why an app that refused to launch did.
inline std::string damagedResources(const HeldLog& log) {
    return "the app's resources are damaged; install it anew (" + log.firstLine() + ")";
}

/// Why an app that has no context cannot draw.
inline std::string withoutOpenGL(const std::string& reason) {
    return "Failed to create ES context: " + reason;
}
