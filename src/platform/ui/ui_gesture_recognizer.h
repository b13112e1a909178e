// Gestures made of touches. A recogniser hangs on a view and sees every touch that begins on it or below it,
// unless a view further down swallows it (UIView::swallowsTouches).
// The first recogniser to recognise its gesture wins the fingers that it follows: those of the others that
// have not begun yet fail, and wait until all their fingers are lifted.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/ui/ui_responder.h"

enum class UIGestureRecognizerState : int32_t {
    possible = 0,
    began = 1,
    changed = 2,
    ended = 3,
    cancelled = 4,
    failed = 5
};

class UIGestureRecognizer {
  public:
    using Action = std::function<void(UIGestureRecognizer&)>;

    explicit UIGestureRecognizer(Action action) : _action(std::move(action)) {}
    virtual ~UIGestureRecognizer() = default;

    UIGestureRecognizerState state() const { return _state; }
    UIView* view() const { return _view; }
    void attachToView(UIView* view) { _view = view; }
    std::size_t numberOfTouches() const { return _touches.size(); }
    /// Whether a gesture is under way.
    bool isActive() const {
        return _state == UIGestureRecognizerState::began || _state == UIGestureRecognizerState::changed;
    }

    /// From the window: the fingers' phase says what happened to them.
    void takeTouches(const UITouches& touches, const UIEvent& event);
    /// From the window: a turn of a wheel or a step of a trackpad's pinch over the view.
    virtual void takeMagnification(const UIMagnification&) {}
    /// Answers whether the gesture was recognised since the last call.
    bool takeRecognition() { return std::exchange(_recognized, false); }
    /// Another recogniser has won a finger of this one. Nothing for a gesture that is under way.
    void yield();

  protected:
    // Not called while the state is failed. numberOfTouches() counts the fingers that are down afterwards.
    virtual void touchesBegan(const UITouches& touches, const UIEvent& event) = 0;
    virtual void touchesMoved(const UITouches& touches, const UIEvent& event) = 0;
    virtual void touchesEnded(const UITouches& touches, const UIEvent& event) = 0;
    virtual void touchesCancelled(const UITouches& touches, const UIEvent& event) = 0;
    /// All fingers are gone, and the state is possible again.
    virtual void reset() {}

    /// Calls the action for began, changed, ended and cancelled.
    void setState(UIGestureRecognizerState state);
    /// The fingers that are down on the view.
    const UITouches& touches() const { return _touches; }

  private:
    Action _action;
    UIView* _view = nullptr;
    UIGestureRecognizerState _state = UIGestureRecognizerState::possible;
    UITouches _touches;
    bool _recognized = false;
};

/// One short touch of one finger that hardly moves: within 10 points and 0.75 s.
class UITapGestureRecognizer : public UIGestureRecognizer {
  public:
    using UIGestureRecognizer::UIGestureRecognizer;

  protected:
    void touchesBegan(const UITouches& touches, const UIEvent& event) override;
    void touchesMoved(const UITouches& touches, const UIEvent& event) override;
    void touchesEnded(const UITouches& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouches& touches, const UIEvent& event) override;

  private:
    bool isNearStart(const UITouch& touch) const;

    CGPoint _start;
    HostTime _startTime = 0;
};
