// The screen's root: holds the root controller's view, routes touches and knows when the overlay must be
// repainted.
#pragma once

#include <map>
#include <memory>

#include "platform/ui/ui_view.h"

class UIViewController;

class UIWindow : public UIView {
  public:
    using UIView::UIView;

    const std::shared_ptr<UIViewController>& rootViewController() const { return _root; }
    void setRootViewController(std::shared_ptr<UIViewController> controller);
    UIWindow* window() override { return this; }

    /// Takes a finger's event to its view and to the recognisers of the views above it. Unknown ids, repeated
    /// landings and events out of order are dropped with a log line.
    void sendTouch(const HostTouch& touch);
    /// Ends every touch as cancelled (the window was hidden or lost its input).
    void cancelTouches();

    void overlayNeedsDisplay() { _overlayDirty = true; }
    /// Answers whether anything changed since the last call.
    bool takeOverlayDirty();

  private:
    std::shared_ptr<UIViewController> _root;
    std::map<int64_t, std::shared_ptr<UITouch>> _touches;
    bool _overlayDirty = true;
};
