// What the system log says while this lives, kept from stderr.
// Tests hold the lines against what they expect.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/ns_log.h"

class LogCapture {
  public:
    LogCapture() : _former(NSLogSetSink([this](std::string_view line) { lines.emplace_back(line); })) {}
    ~LogCapture() { NSLogSetSink(_former); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> lines;

  private:
    NSLogSink _former;
};
