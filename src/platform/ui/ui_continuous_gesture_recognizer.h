// What a pan and a pinch share: they begin once their fingers have gone far enough, change with every move,
// and end when too few fingers are left. Fingers may come and go meanwhile. Fingers that move together report
// one after the other, so a gesture judges them by rounds in which each has had its say; else two fingers
// side by side would pinch for a moment at each step of a drag.
#pragma once

#include "platform/ui/ui_gesture_recognizer.h"

class UIContinuousGestureRecognizer : public UIGestureRecognizer {
  protected:
    UIContinuousGestureRecognizer(Action action, std::size_t minimumNumberOfTouches)
        : UIGestureRecognizer(std::move(action)), _minimumNumberOfTouches(minimumNumberOfTouches) {}

    /// A finger came or went: what is measured goes on from the fingers' places as they are.
    virtual void fingersChanged(HostTime time) = 0;
    /// One finger moved.
    virtual void follow(const UITouch& touch) = 0;
    /// Whether the fingers went far enough, measured since the first enough of them landed.
    virtual bool isPastHysteresis() const = 0;
    /// The gesture is about to begin: what led up to here does not count.
    virtual void startMeasuring() = 0;

    void touchesBegan(const UITouches& touches, const UIEvent& event) final;
    void touchesMoved(const UITouches& touches, const UIEvent& event) final;
    void touchesEnded(const UITouches& touches, const UIEvent& event) final;
    void touchesCancelled(const UITouches& touches, const UIEvent& event) final;

  private:
    void endRound();
    void lift(HostTime time, UIGestureRecognizerState end);

    std::size_t _minimumNumberOfTouches;
    /// The fingers that have moved in this round.
    std::vector<int64_t> _moved;
};
