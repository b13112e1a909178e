// Host contract: what the app may ask of the window it lives in.
// Everything else about the window is the host's own business.
#pragma once

#include <functional>
#include <string>

class WindowControl {
  public:
    virtual ~WindowControl() = default;
    virtual bool isFullscreen() const = 0;
    virtual void setFullscreen(bool fullscreen) = 0;
    /// While disabled the machine neither dims nor locks the screen.
    virtual void setIdleTimerDisabled(bool disabled) = 0;
    /// What was copied last, here or elsewhere; empty where there is no text, or the host may not look.
    virtual std::string clipboardText() = 0;
    virtual void setClipboardText(const std::string& text) = 0;
    /// Hands a link to the program that the system has for it, without waiting. opened: called once, on the
    /// main thread, with a later frame.
    virtual void openURL(const std::string& url, std::function<void(bool opened)> opened) = 0;
    /// Ends the app after the current frame.
    virtual void requestQuit() = 0;
};
