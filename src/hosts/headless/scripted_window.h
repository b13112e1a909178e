// What the headless host's app may ask of its window: nothing happens, and everything is remembered.
// So tests see what the app asked for.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/dispatch_queue.h"
#include "platform/host/window_control.h"

class ScriptedWindow : public WindowControl {
  public:
    bool isFullscreen() const override { return _fullscreen; }
    void setFullscreen(bool fullscreen) override { _fullscreen = fullscreen; }
    void setIdleTimerDisabled(bool disabled) override { _idleTimerDisabled = disabled; }
    std::string clipboardText() override { return _clipboard; }
    void setClipboardText(const std::string& text) override { _clipboard = text; }
    void openURL(const std::string& url, std::function<void(bool opened)> opened) override {
        _openedURLs.push_back(url);
        DispatchQueue::mainQueue().async([opened = std::move(opened), opens = _opensURLs] { opened(opens); });
    }
    void requestQuit() override { _quitRequested = true; }

    bool isIdleTimerDisabled() const { return _idleTimerDisabled; }
    bool quitRequested() const { return _quitRequested; }
    const std::vector<std::string>& openedURLs() const { return _openedURLs; }
    /// NO for a machine where nothing opens links.
    void setOpensURLs(bool opens) { _opensURLs = opens; }

  private:
    bool _fullscreen = false;
    bool _idleTimerDisabled = false;
    std::string _clipboard;
    bool _quitRequested = false;
    std::vector<std::string> _openedURLs;
    bool _opensURLs = true;
};
