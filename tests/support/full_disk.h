// While it lives, files cannot grow beyond a size: writes stop midway, as they do on a full disk.
// For the tests that nothing half-written is left behind.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : _formerHandler(::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &_former), 0);
        const rlimit small{bytes, _former.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~FullDisk() {
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &_former), 0);
        ::signal(SIGXFSZ, _formerHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    sighandler_t _formerHandler;
    rlimit _former{};
};
