// The popover as a screen of its own that fills the window: what is not bubble takes the tap that closes it.
// The bubble stands on the side of the button that has more room.
#include "platform/ui/ui_popover_controller.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_window.h"

namespace {

constexpr CGFloat arrowHeight = 11;
constexpr CGFloat arrowWidth = 24;
constexpr CGFloat bubbleRadius = 16;
constexpr CGFloat screenMargin = 10;
constexpr CGFloat gapToButton = 2;
constexpr UIColor bubbleColor{0.11, 0.12, 0.16, 0.98};
constexpr UIColor rimColor = UIColor::white(1, 0.14);

/// Where the bubble lies on a screen, its arrow included.
struct BubblePlace {
    CGRect frame;
    CGRect content;      ///< in the frame
    CGFloat arrowX = 0;  ///< of the arrow's tip, in the frame
    bool pointsDown = true;
};

BubblePlace placeBubble(CGSize wanted, CGRect anchor, CGRect screen, uint32_t directions) {
    const CGFloat above = CGRectGetMinY(anchor) - CGRectGetMinY(screen);
    const CGFloat below = CGRectGetMaxY(screen) - CGRectGetMaxY(anchor);
    const bool mayPointDown = (directions & UIPopoverArrowDirectionDown) != 0;
    const bool mayPointUp = (directions & UIPopoverArrowDirectionUp) != 0;
    BubblePlace place;
    place.pointsDown = mayPointDown && (above >= below || !mayPointUp);
    const CGFloat room = (place.pointsDown ? above : below) - gapToButton - screenMargin - arrowHeight;
    const CGFloat width = std::min(wanted.width, screen.size.width - 2 * screenMargin);
    const CGFloat height = std::min(wanted.height, std::max(room, 0.0));
    const CGFloat leftmost = CGRectGetMinX(screen) + screenMargin;
    const CGFloat rightmost = CGRectGetMaxX(screen) - screenMargin - width;
    const CGFloat x = std::clamp(CGRectGetMidX(anchor) - width / 2, leftmost, std::max(leftmost, rightmost));
    const CGFloat y = place.pointsDown ? CGRectGetMinY(anchor) - gapToButton - arrowHeight - height
                                       : CGRectGetMaxY(anchor) + gapToButton;
    place.frame = CGRectMake(x, y, width, height + arrowHeight);
    place.content = CGRectMake(0, place.pointsDown ? 0 : arrowHeight, width, height);
    const CGFloat nearest = bubbleRadius + arrowWidth / 2;
    place.arrowX = std::clamp(CGRectGetMidX(anchor) - x, nearest, std::max(nearest, width - nearest));
    return place;
}

class PopoverBubble : public UIView {
  public:
    void setPlace(const BubblePlace& place) {
        _place = place;
        setFrame(place.frame);
        setNeedsDisplay();
    }
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}

    void drawRect(Canvas& canvas, CGRect) override {
        const CGRect body = CGRectInset(_place.content, 0.5, 0.5);
        const UIBezierPath rim = UIBezierPath::bezierPathWithRoundedRect(body, bubbleRadius);
        canvas.fillPath(rim, FillRule::nonZero, bubbleColor);
        canvas.strokePath(rim, 1, rimColor);
        canvas.fillPath(arrow(), FillRule::nonZero, bubbleColor);
    }

  private:
    UIBezierPath arrow() const {
        const CGFloat root = _place.pointsDown ? CGRectGetMaxY(_place.content) - 1 : arrowHeight + 1;
        const CGFloat tip = _place.pointsDown ? _place.frame.size.height : 0;
        UIBezierPath path;
        path.moveToPoint({_place.arrowX - arrowWidth / 2, root});
        path.addLineToPoint({_place.arrowX, tip});
        path.addLineToPoint({_place.arrowX + arrowWidth / 2, root});
        path.closePath();
        return path;
    }

    BubblePlace _place;
};

class PopoverView : public UIView {
  public:
    std::function<void()> onLayout;
    std::function<void()> onTapBeside;

    bool drawsContent() const override { return false; }
    bool swallowsTouches() const override { return true; }
    void layoutSubviews() override { onLayout(); }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {
        const auto tapped = onTapBeside;
        tapped();
    }
};

class PopoverScreen : public UIViewController {
  public:
    PopoverScreen(std::weak_ptr<UIView> button, uint32_t directions)
        : _button(std::move(button)), _directions(directions) {
        setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
        setModalTransitionStyle(UIModalTransitionStyle::crossDissolve);
    }

    void loadView() override {
        const auto screen = std::make_shared<PopoverView>();
        screen->onLayout = [this] { placeContent(); };
        screen->onTapBeside = [this] {
            if (!content().isModalInPresentation()) dismissViewControllerAnimated(true);
        };
        setView(screen);
        _bubble->addSubview(content().view());
        screen->addSubview(_bubble);
    }
    void viewWillAppear(bool animated) override { content().viewWillAppear(animated); }
    void viewDidAppear(bool animated) override { content().viewDidAppear(animated); }
    void viewWillDisappear(bool animated) override { content().viewWillDisappear(animated); }
    void viewDidDisappear(bool animated) override { content().viewDidDisappear(animated); }
    bool keyPressed(const HostKeyPress& press) override { return content().keyPressed(press); }
    bool presentsItself(const std::function<void()>& presentView) override {
        return content().presentsItself(presentView);
    }

  private:
    UIViewController& content() const { return *childViewControllers().front(); }

    void placeContent() {
        if (const auto button = _button.lock()) {
            const CGRect inWindow = button->convertRectToWindow(button->bounds());
            _anchor = {view()->convertPointFromWindow(inWindow.origin), inWindow.size};
        }
        const CGRect safe = UIEdgeInsetsInsetRect(view()->bounds(), view()->safeAreaInsets());
        const BubblePlace place = placeBubble(content().preferredContentSize(), _anchor, safe, _directions);
        _bubble->setPlace(place);
        content().view()->setFrame(place.content);
    }

    std::weak_ptr<UIView> _button;
    uint32_t _directions;
    /// Where the button was seen last.
    CGRect _anchor;
    std::shared_ptr<PopoverBubble> _bubble = std::make_shared<PopoverBubble>();
};

}  // namespace

void UIPopoverController::presentPopoverFromBarButtonItem(const std::shared_ptr<UIBarButtonItem>& item,
                                                          uint32_t permittedArrowDirections, bool animated) {
    const auto button = item ? item->view() : nullptr;
    UIResponder* above = button.get();
    while (above && !dynamic_cast<UIViewController*>(above))
        above = above->nextResponder();
    auto* const presenting = dynamic_cast<UIViewController*>(above);
    if (!presenting) {
        NSLog("UIPopoverController: no button to point at");
        return;
    }
    const auto screen = std::make_shared<PopoverScreen>(button, permittedArrowDirections);
    screen->addChildViewController(_content);
    presenting->presentViewController(screen, animated);
}
