// A window on something higher than itself: it is drawn with the finger and thrown, moved by wheel and keys.
// Up and down only; what is scrolled lies on the content view.
#pragma once

#include <memory>
#include <optional>

#include "platform/ui/scroll_motion.h"
#include "platform/ui/ui_view.h"

class UIPanGestureRecognizer;
class UIMagnificationGestureRecognizer;

class UIScrollView : public UIView {
  public:
    UIScrollView() : UIScrollView(CGRectZero) {}
    explicit UIScrollView(CGRect frame);
    ~UIScrollView() override;

    /// Holds what is scrolled, in its own coordinates; as wide as the view, as high as the content.
    const std::shared_ptr<UIView>& contentView() const { return _content; }
    CGSize contentSize() const { return _content->frame().size; }
    /// Points; the width is the view's own.
    void setContentHeight(CGFloat height);
    /// The place of the content that lies at the view's upper edge. Beyond the edges while it is drawn there.
    CGPoint contentOffset() const { return {0, _offset}; }
    /// Not beyond the edges.
    void setContentOffset(CGPoint offset, bool animated);
    /// Moves as little as shows the rectangle (of the content); its beginning, if it is higher than the view.
    void scrollRectToVisible(CGRect rect, bool animated);
    /// Whether it moves by itself.
    bool isDecelerating() const { return _motion.has_value(); }
    /// Space at the right for the bar that tells the place, which keeps clear of covered edges.
    void setIndicatorInset(CGFloat inset);

    /// Up, down, page up, page down, home, end. YES if it was one of these.
    virtual bool keyPressed(const HostKeyPress& press);
    bool clipsToBounds() const override { return true; }
    bool drawsContent() const override { return false; }
    bool swallowsTouches() const override { return true; }
    void layoutSubviews() override;
    // A finger on what moves holds it.
    void touchesBegan(const UITouches& touches, const UIEvent& event) override;
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override;
    void touchesCancelled(const UITouches&, const UIEvent&) override;

  protected:
    /// A finger that lay on the content began to draw it: nothing below it is tapped any more.
    virtual void willBeginDragging() {}
    /// Whether the finger that has just landed stopped a motion.
    bool hasCaughtMotion() const { return _hasCaught; }

  private:
    void pan(UIPanGestureRecognizer& pan);
    void wheel(UIMagnificationGestureRecognizer& wheel);
    void drawTo(CGFloat pulled);
    void comeToRest(double velocity);
    void scrollBy(CGFloat distance);
    void start(const ScrollMotion& motion);
    void step(double time);
    void stop();
    void moveTo(CGFloat offset);
    void showIndicator();
    void fadeIndicator();
    CGFloat lastOffset() const;
    CGFloat clamped(CGFloat offset) const;
    CGFloat goal() const { return _motion ? static_cast<CGFloat>(_motion->rest()) : _offset; }

    std::shared_ptr<UIView> _content = std::make_shared<UIView>();
    std::shared_ptr<UIView> _indicator = std::make_shared<UIView>();
    CGFloat _offset = 0;
    CGFloat _indicatorInset = 0;
    bool _isDragging = false;
    bool _hasCaught = false;
    /// Where the content would be without edges, when the finger began to draw it.
    CGFloat _dragOrigin = 0;
    std::optional<ScrollMotion> _motion;
    double _motionStart = 0;  ///< seconds of the app's time
    int _frameCallback = 0;   ///< 0 for none
};
