// What the app may ask of its window, asked of the page.
// Pages may not look into the clipboard unasked: pasted links arrive as events instead.
#pragma once

#include "hosts/web/web_page.h"
#include "platform/host/window_control.h"

class WebWindow : public WindowControl {
  public:
    bool isFullscreen() const override { return WebPage::isFullscreen(); }
    void setFullscreen(bool fullscreen) override { WebPage::setFullscreen(fullscreen); }
    void setIdleTimerDisabled(bool disabled) override { WebPage::keepAwake(disabled); }
    std::string clipboardText() override { return {}; }
    void setClipboardText(const std::string& text) override { WebPage::setClipboardText(text); }
    /// The user closes the tab; a page cannot.
    void requestQuit() override {}
};
