// The headless host's recorder: it films nothing, remembers what it was asked, and answers when it is told
// to. So tests play every way in which a recorder can behave.
#pragma once

#include <utility>

#include "platform/host/screen_capture.h"

class ScriptedCapture : public ScreenCapture {
  public:
    explicit ScriptedCapture(bool available) : _available(available) {}

    bool isAvailable() const override { return _available; }
    void start(Started handler) override {
        ++starts;
        started = std::move(handler);
    }
    void stop(Stopped handler) override {
        ++stops;
        stopped = std::move(handler);
    }
    void setInterruptionHandler(Stopped handler) override { interrupted = std::move(handler); }
    std::shared_ptr<CapturedClip> takeLeftClip() override { return std::exchange(leftClip, nullptr); }

    int starts = 0;
    int stops = 0;
    /// The handlers that wait for an answer.
    Started started;
    Stopped stopped;
    Stopped interrupted;
    std::shared_ptr<CapturedClip> leftClip;

  private:
    bool _available;
};
