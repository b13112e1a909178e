// The screen's root: holds the root controller's view, routes touches and knows when the overlay must be
// repainted.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "platform/ui/ui_view.h"

class UIViewController;

class UIWindow : public UIView {
  public:
    using UIView::UIView;

    const std::shared_ptr<UIViewController>& rootViewController() const { return _root; }
    void setRootViewController(std::shared_ptr<UIViewController> controller);
    UIWindow* window() override { return this; }
    /// The screen in front: the root controller, or what it presents.
    std::shared_ptr<UIViewController> topViewController() const;
    /// Loads the root's view and lets it appear; a root set later appears at once. Once is enough.
    void makeKeyAndVisible();

    /// Takes a finger's event to its view and to the recognisers of the views above it. Unknown ids, repeated
    /// landings and events out of order are dropped with a log line.
    void sendTouch(const HostTouch& touch);
    /// Ends every touch as cancelled (the window was hidden or lost its input).
    void cancelTouches();

    void overlayNeedsDisplay() { _overlayDirty = true; }
    /// Answers whether anything changed since the last call.
    bool takeOverlayDirty();

    void layoutSubviews() override;
    /// The screens take their places; the views on them follow with the next frame.
    void layoutScreens();
    /// The whole window, or the square in the middle of one that is higher than wide: screens are held in
    /// landscape.
    CGRect landscapeBounds() const;
    bool drawsContent() const override { return false; }

  private:
    /// A finger on the window and who follows it from its landing on.
    struct Finger {
        std::shared_ptr<UITouch> touch;
        std::vector<std::shared_ptr<UIGestureRecognizer>> recognizers;
    };

    void rootAppears();
    bool accepts(const HostTouch& touch) const;
    void begin(const HostTouch& touch);
    void deliver(const Finger& finger);

    std::shared_ptr<UIViewController> _root;
    std::map<int64_t, Finger> _fingers;
    /// Fingers that were cancelled while they still lay on the glass: the rest of them is dropped quietly.
    std::set<int64_t> _cancelled;
    bool _shown = false;
    bool _overlayDirty = true;
};
