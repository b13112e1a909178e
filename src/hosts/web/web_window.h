// What the app may ask of its window, asked of the page.
// Pages may not look into the clipboard unasked: pasted links arrive as events instead.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "hosts/web/web_page.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/host/window_control.h"

class WebWindow : public WindowControl {
  public:
    bool isFullscreen() const override { return WebPage::isFullscreen(); }
    void setFullscreen(bool fullscreen) override { WebPage::setFullscreen(fullscreen); }
    void setIdleTimerDisabled(bool disabled) override { WebPage::keepAwake(disabled); }
    std::string clipboardText() override { return {}; }
    void setClipboardText(const std::string& text) override { WebPage::setClipboardText(text); }
    /// In a new tab, which knows nothing of this one; within the user's tap, as browsers want it.
    void openURL(const std::string& url, std::function<void(bool opened)> opened) override {
        DispatchQueue::mainQueue().async(
            [opened = std::move(opened), opens = WebPage::openURL(url)] { opened(opens); });
    }
    /// The user closes the tab; a page cannot.
    void requestQuit() override {}
};
