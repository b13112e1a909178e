// What the headless host's app may ask of its window: nothing happens, and everything is remembered.
// So tests see what the app asked for.
#pragma once

#include <string>

#include "platform/host/window_control.h"

class ScriptedWindow : public WindowControl {
  public:
    bool isFullscreen() const override { return _fullscreen; }
    void setFullscreen(bool fullscreen) override { _fullscreen = fullscreen; }
    void setIdleTimerDisabled(bool disabled) override { _idleTimerDisabled = disabled; }
    std::string clipboardText() override { return _clipboard; }
    void setClipboardText(const std::string& text) override { _clipboard = text; }
    void requestQuit() override { _quitRequested = true; }

    bool isIdleTimerDisabled() const { return _idleTimerDisabled; }
    bool quitRequested() const { return _quitRequested; }

  private:
    bool _fullscreen = false;
    bool _idleTimerDisabled = false;
    std::string _clipboard;
    bool _quitRequested = false;
};
