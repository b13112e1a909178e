// The wheel of a mouse and the pinch of a trackpad: steps that enlarge or shrink what lies under the pointer.
// A pointer has one place, unlike the fingers of a pinch on a screen: each step is a gesture of its own.
#pragma once

#include "platform/ui/ui_gesture_recognizer.h"
#include "platform/ui/ui_view.h"

class UIMagnificationGestureRecognizer : public UIGestureRecognizer {
  public:
    explicit UIMagnificationGestureRecognizer(std::function<void(UIMagnificationGestureRecognizer&)> action);

    /// Of the last step.
    CGFloat factor() const { return _step.factor; }
    bool isInNotches() const { return _step.inNotches; }
    /// Of a wheel, away from the user positive; 0 for a pinch.
    double notches() const { return _step.notches; }
    CGPoint locationInView(const UIView& view) const { return view.convertPointFromWindow(_step.location); }

    void takeMagnification(const UIMagnification& step) override;

  protected:
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}
    void touchesCancelled(const UITouches&, const UIEvent&) override {}

  private:
    UIMagnification _step;
};
