// Where a find goes from a desktop: clipboard, picture files, mail, posts on the web, the browser.
// What takes time happens on threads of its own; the main thread only hears of the end.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/desktop/x11_clipboard.h"
#include "hosts/native/background_work.h"
#include "platform/host/share_destinations.h"
#include "platform/host/window_control.h"

class DesktopShare : public ShareDestinations {
  public:
    /// The window outlives it. clipboard: null where only the window's own, for text alone, is at hand.
    DesktopShare(WindowControl& window, std::unique_ptr<X11Clipboard> clipboard)
        : _window(window), _clipboard(std::move(clipboard)) {}

    /// Those whose programs and folders are there.
    std::vector<ShareDestination> destinations() override;
    void share(const ShareDestination& destination, const SharedContent& content, Answer answer) override;

  private:
    using Work = std::function<ShareOutcome(const std::stop_token&)>;

    void copy(const SharedContent& content, const Answer& answer);
    void inBackground(Work work, const Answer& answer);

    WindowControl& _window;
    std::unique_ptr<X11Clipboard> _clipboard;
    /// Ends before the clipboard that it uses goes.
    BackgroundWork _background;
};
