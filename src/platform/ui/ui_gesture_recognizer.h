// Gestures made of touches. A recogniser hangs on a view and sees every touch that begins on it or below it,
// unless a view further down swallows it (UIView::swallowsTouches).
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

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

    virtual void touchesBegan(const UITouches& touches, const UIEvent& event) = 0;
    virtual void touchesMoved(const UITouches& touches, const UIEvent& event) = 0;
    virtual void touchesEnded(const UITouches& touches, const UIEvent& event) = 0;
    virtual void touchesCancelled(const UITouches& touches, const UIEvent& event) = 0;

    /// Answers whether a gesture without a middle (a tap) was recognised since the last call. The window then
    /// takes the touch away from the recognisers of the views above.
    bool takeRecognition() { return std::exchange(_recognized, false); }

  protected:
    /// Calls the action for began, changed, ended and cancelled. After the last three a recogniser goes back
    /// to possible by itself once it is ready for the next gesture.
    void setState(UIGestureRecognizerState state);

  private:
    Action _action;
    UIView* _view = nullptr;
    UIGestureRecognizerState _state = UIGestureRecognizerState::possible;
    bool _recognized = false;
};

/// One short touch of one finger that hardly moves: within 10 points and 0.75 s.
class UITapGestureRecognizer : public UIGestureRecognizer {
  public:
    using UIGestureRecognizer::UIGestureRecognizer;
    void touchesBegan(const UITouches& touches, const UIEvent& event) override;
    void touchesMoved(const UITouches& touches, const UIEvent& event) override;
    void touchesEnded(const UITouches& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouches& touches, const UIEvent& event) override;

  private:
    void forgetFingers(const UITouches& touches);

    std::vector<int64_t> _fingers;
    CGPoint _start;
    HostTime _startTime = 0;
};
