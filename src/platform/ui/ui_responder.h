// Touches and the objects that answer them.
// A touch goes to the view that it hit; what that view does not want goes up its chain of responders.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/foundation/geometry.h"
#include "platform/foundation/key_value.h"
#include "platform/host/host_event.h"

class UIView;

/// One finger from landing to lift.
struct UITouch {
    int64_t id = 0;
    UITouchPhase phase = UITouchPhase::began;
    CGPoint location;          ///< points in the window
    CGPoint previousLocation;  ///< points in the window
    HostTime timestamp = 0;
    std::weak_ptr<UIView> view;  ///< the view that it began on

    CGPoint locationInView(const UIView& view) const;
};

using UITouches = std::vector<std::shared_ptr<UITouch>>;

/// Lives as long as the call that it is handed to.
struct UIEvent {
    HostTime timestamp = 0;
    /// Every finger on the window, those of other views included, and the one that lifts.
    UITouches allTouches;
};

/// A turn of a wheel or a step of a trackpad's pinch. There is nothing between steps: each stands for itself.
struct UIMagnification {
    CGPoint location;    ///< of the pointer, points in the window
    CGFloat factor = 1;  ///< finite and above 0; above 1 for larger
    /// A wheel goes in notches, between which the hand gives no direction; a trackpad follows the fingers.
    bool inNotches = false;
    /// Of a wheel, away from the user positive: for views that move instead of growing.
    double notches = 0;
};

class UIResponder : public KeyValueCoding {
  public:
    virtual UIResponder* nextResponder() { return nullptr; }
    /// Each of these hands the touches to the next responder unless overridden.
    virtual void touchesBegan(const UITouches& touches, const UIEvent& event);
    virtual void touchesMoved(const UITouches& touches, const UIEvent& event);
    virtual void touchesEnded(const UITouches& touches, const UIEvent& event);
    virtual void touchesCancelled(const UITouches& touches, const UIEvent& event);
};
