// A rectangle of the overlay: it has a place, an opacity and children, paints itself on a Canvas and answers
// touches. Its values are the ones last set; while an animation runs, what is painted lies between (the
// presentation values).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/graphics/canvas.h"
#include "platform/ui/ui_responder.h"

class UIGestureRecognizer;
class UIViewController;
class UIWindow;

/// Which margins and sides give way when the superview's size changes; bits may be combined.
enum UIViewAutoresizing : uint32_t {
    UIViewAutoresizingNone = 0,
    UIViewAutoresizingFlexibleLeftMargin = 1,
    UIViewAutoresizingFlexibleWidth = 2,
    UIViewAutoresizingFlexibleRightMargin = 4,
    UIViewAutoresizingFlexibleTopMargin = 8,
    UIViewAutoresizingFlexibleHeight = 16,
    UIViewAutoresizingFlexibleBottomMargin = 32,
};

/// Animation options; bits may be combined.
enum UIViewAnimationOptions : uint32_t {
    UIViewAnimationOptionNone = 0,
    /// Start from what is on screen at this moment instead of from the values last set.
    UIViewAnimationOptionBeginFromCurrentState = 4,
};

/// What screen readers take a view for; none for one that only has others in it.
enum UIAccessibilityTraits : uint32_t {
    UIAccessibilityTraitNone = 0,
    UIAccessibilityTraitButton = 1,
    UIAccessibilityTraitStaticText = 64,
};

class UIView : public UIResponder, public std::enable_shared_from_this<UIView> {
  public:
    using Completion = std::function<void(bool finished)>;

    UIView() = default;
    explicit UIView(CGRect frame) : _frame(frame) {}
    ~UIView() override;
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;

    CGRect frame() const { return _frame; }
    void setFrame(CGRect frame);
    CGRect bounds() const { return {CGPointZero, _frame.size}; }
    double alpha() const { return _alpha; }
    /// Below this opacity a view answers no touches.
    static constexpr double minimumTouchableAlpha = 0.01;
    /// 0 to 1. Inside an animation block the change is animated; outside, a running animation of it ends
    /// unfinished.
    void setAlpha(double alpha);
    bool isHidden() const { return _hidden; }
    void setHidden(bool hidden);
    UIColor backgroundColor() const { return _backgroundColor; }
    void setBackgroundColor(UIColor color);
    double cornerRadius() const { return _cornerRadius; }
    /// Rounds the background's corners; points.
    void setCornerRadius(double radius);
    bool isUserInteractionEnabled() const { return _userInteractionEnabled; }
    void setUserInteractionEnabled(bool enabled) { _userInteractionEnabled = enabled; }
    /// Whether a touch on this view or below it stays hidden from the gesture recognisers of the views above
    /// it. Controls and bars answer YES, so that pressing them moves nothing behind them.
    virtual bool swallowsTouches() const { return false; }
    /// Whether the subviews show within the bounds alone, as what is scrolled through does.
    virtual bool clipsToBounds() const { return false; }
    void setAutoresizingMask(uint32_t mask) { _autoresizingMask = mask; }
    /// Empty for a view that screen readers pass over.
    virtual const std::string& accessibilityLabel() const { return _accessibilityLabel; }
    void setAccessibilityLabel(std::string label);
    virtual UIAccessibilityTraits accessibilityTraits() const { return UIAccessibilityTraitNone; }
    /// Does what a tap on the view does. NO if that is nothing.
    virtual bool accessibilityActivate() { return false; }
    /// YES: while this view shows, screen readers pass over the views beside it.
    virtual bool accessibilityViewIsModal() const { return false; }
    /// The keyboard or a screen reader has come to the view.
    /// YES: one thing to screen readers, whatever lies in it.
    virtual bool isAccessibilityElement() const { return false; }
    virtual void accessibilityElementDidBecomeFocused() {}
    virtual void accessibilityElementDidLoseFocus() {}
    /// Whether the keyboard is here, and the view shows it.
    virtual bool isFocused() const { return false; }

    /// The opacity on screen now, animations included.
    double presentationAlpha() const;
    CGRect presentationFrame() const;
    /// How far notches, rounded corners and system bars reach into the view from each side, in points.
    UIEdgeInsets safeAreaInsets();

    UIView* superview() const { return _superview; }
    const std::vector<std::shared_ptr<UIView>>& subviews() const { return _subviews; }
    void addSubview(const std::shared_ptr<UIView>& view);
    void insertSubviewAtIndex(const std::shared_ptr<UIView>& view, std::size_t index);
    void removeFromSuperview();
    virtual UIWindow* window() { return _superview ? _superview->window() : nullptr; }

    /// Asks for layoutSubviews with the next frame.
    void setNeedsLayout();
    void layoutIfNeeded();
    /// This view's part of it alone: what lies deeper waits.
    void layoutItselfIfNeeded();
    virtual void layoutSubviews() {}
    /// Marks the window's overlay for repainting.
    void setNeedsDisplay();
    /// Paints the view itself; the background is painted already, the subviews follow.
    virtual void drawRect(Canvas&, CGRect /*bounds*/) {}
    /// A view whose picture comes through OpenGL (drawn below the overlay) paints nothing on the Canvas.
    virtual bool drawsThroughGL() const { return false; }
    /// NO if drawRect paints nothing at present. A subclass is taken to paint, a plain UIView not.
    virtual bool drawsContent() const;
    /// Paints the whole tree from here on at the presentation values, in the superview's coordinates.
    void paint(Canvas& canvas);
    /// What the tree paints now, in the superview's coordinates; CGRectNull for nothing.
    CGRect paintedFrame() const;

    /// Between the view's own coordinates and the window's, at the values last set (not the presentation).
    CGPoint convertPointToWindow(CGPoint p) const;
    CGPoint convertPointFromWindow(CGPoint p) const;
    CGRect convertRectToWindow(CGRect r) const;
    virtual bool pointInside(CGPoint p) const { return CGRectContainsPoint(bounds(), p); }
    /// The front-most view under p (own coordinates); hidden, nearly transparent (model alpha < 0.01) and
    /// disabled views are passed over.
    virtual std::shared_ptr<UIView> hitTest(CGPoint p);

    void addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> recognizer);
    const std::vector<std::shared_ptr<UIGestureRecognizer>>& gestureRecognizers() const {
        return _recognizers;
    }
    UIResponder* nextResponder() override;
    void setOwningController(UIViewController* controller) { _controller = controller; }

    /// Ease-in-out over duration seconds. The block runs at once; completion follows with finished = true
    /// when time is up, or with false as soon as every change of the block was replaced by others.
    static void animateWithDuration(double duration, double delay, uint32_t options,
                                    const std::function<void()>& animations, Completion completion = {});
    /// A damped spring that settles within the duration: ratio 1 is critical, above it creeps, below it
    /// swings. The initial velocity is in whole distances per second.
    static void animateWithSpring(double duration, double delay, double dampingRatio, double initialVelocity,
                                  uint32_t options, const std::function<void()>& animations,
                                  Completion completion = {});
    /// NO: the changes of animation blocks that come are on screen at once, for who is made dizzy by motion.
    static void setAnimationsEnabled(bool enabled);

  protected:
    KeyValueTable makeKeyValueTable() override;
    /// What the background colour fills, given the bounds on screen.
    virtual CGRect backgroundArea(CGRect bounds) const { return bounds; }

  private:
    void resizeSubviews(CGSize from, CGSize to);
    void paintContents(Canvas& canvas, CGSize size);

    CGRect _frame;
    double _alpha = 1;
    double _cornerRadius = 0;
    bool _hidden = false;
    bool _userInteractionEnabled = true;
    bool _needsLayout = true;
    uint32_t _autoresizingMask = UIViewAutoresizingNone;
    UIColor _backgroundColor = UIColor::clear();
    std::string _accessibilityLabel;
    UIView* _superview = nullptr;
    UIViewController* _controller = nullptr;
    std::vector<std::shared_ptr<UIView>> _subviews;
    std::vector<std::shared_ptr<UIGestureRecognizer>> _recognizers;
};
