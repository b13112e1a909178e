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
    /// landings, events out of order and impossible places are dropped with a log line. Moves allocate
    /// nothing.
    void sendTouch(const HostTouch& touch);
    /// Take a wheel's turn or a step of a trackpad's pinch to the recognisers of the view under the pointer
    /// and of those above it. Impossible ones are dropped with a log line.
    void sendWheel(const HostWheel& wheel);
    void sendMagnification(const HostMagnify& step);
    /// Ends every touch as cancelled (the window was hidden or lost its input).
    void cancelTouches();

    /// Screens are laid out anew. Insets that leave nothing of the window, or are no insets, are dropped with
    /// a log line.
    void setSafeAreaInsets(UIEdgeInsets insets);
    /// Those last set; any view's own are its safeAreaInsets().
    UIEdgeInsets windowInsets() const { return _insets; }

    void overlayNeedsDisplay() { _overlayDirty = true; }
    /// Answers whether anything changed since the last call.
    bool takeOverlayDirty();

    void layoutSubviews() override;
    /// The screens take their places; the views on them follow with the next frame.
    void layoutScreens();
    /// The whole window, or the square in the middle of one that is higher than wide: screens are held in
    /// landscape.
    CGRect landscapeBounds() const;
    /// What of them nothing covers.
    CGRect safeLandscapeBounds() const;
    bool drawsContent() const override { return false; }

  private:
    using Recognizers = std::vector<std::shared_ptr<UIGestureRecognizer>>;

    /// A finger on the window and who follows it from its landing on.
    struct Finger {
        UITouches touch;  ///< the one
        Recognizers recognizers;
    };

    void rootAppears();
    bool accepts(const HostTouch& touch) const;
    void begin(const HostTouch& touch);
    void move(const std::shared_ptr<const Finger>& finger, CGPoint location, HostTime time);
    void lift(const std::shared_ptr<const Finger>& finger, UITouchPhase phase);
    void deliver(const Finger& finger);
    void letWin(const UIGestureRecognizer& winner, const Finger& finger);
    void magnify(const UIMagnification& step);

    std::shared_ptr<UIViewController> _root;
    std::map<int64_t, std::shared_ptr<const Finger>> _fingers;
    /// Used again for every event.
    UIEvent _event;
    /// Fingers that were cancelled while they still lay on the glass: the rest of them is dropped quietly.
    std::set<int64_t> _cancelled;
    UIEdgeInsets _insets;
    bool _shown = false;
    bool _overlayDirty = true;
};
