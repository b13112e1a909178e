// An X server without a screen, on a display number that is free: each test and benchmark has its own.
// It ends with the object, whatever the test did.
#pragma once

#include <string>

#include "tests/support/child_process.h"

class VirtualDisplay {
  public:
    /// 24 bits of colour, large enough for any window that is tested.
    VirtualDisplay()
        : _server(
              {"Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset"}) {
        if (const auto number = _server.firstLine(20)) _name = ":" + *number;
    }

    /// NO where Xvfb is not installed.
    bool isAvailable() const { return !_name.empty(); }
    /// For the environment variable DISPLAY.
    const std::string& name() const { return _name; }

  private:
    ChildProcess _server;
    std::string _name;
};
