// The bar, the place below it, and the slide from screen to screen.
// Screens are children of the controller: what they present goes over the bar as well.
#include "platform/ui/ui_navigation_controller.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/ns_bundle.h"
#include "platform/ui/ui_layout_direction.h"

namespace {

constexpr CGFloat barHeight = 52;
constexpr CGFloat buttonSide = 44;
constexpr CGFloat buttonMargin = 8;
constexpr CGFloat hairline = 0.5;
constexpr double titleSize = 18;
constexpr double slideSeconds = 0.3;
constexpr UIColor groundColor{0.055, 0.063, 0.094, 1};
constexpr UIColor lineColor = UIColor::white(1, 0.14);
constexpr UIColor buttonColor = UIColor::white(0.85);

UIImageRef strokes(const char* path) {
    VectorGlyph glyph;
    glyph.size = {24, 24};
    if (auto parsed = UIBezierPath::pathWithSVGData(path))
        glyph.shapes.push_back({std::move(*parsed), true, 2, FillRule::nonZero});
    return UIImage::imageWithGlyph(std::move(glyph), {24, 24});
}

bool isRightToLeft() {
    return userInterfaceLayoutDirection() == UIUserInterfaceLayoutDirection::rightToLeft;
}

}  // namespace

/// Ground, bar and what is below the bar.
class NavigationView : public UIView {
  public:
    explicit NavigationView(const std::function<void()>& back) {
        setBackgroundColor(groundColor);
        _title->setFont(UIFont::boldSystemFontOfSize(titleSize));
        _title->setTextAlignment(NSTextAlignment::center);
        addSubview(_title);
        const char* const chevron =
            isRightToLeft() ? "M9 4.500l7.500 7.500L9 19.500" : "M15 4.500L7.500 12l7.500 7.500";
        dressButton(*_close, "Close", "M6 6l12 12M18 6 6 18", back);
        dressButton(*_back, "Back", chevron, back);
        addSubview(_close);
        addSubview(_back);
        addSubview(_room);
    }

    const std::shared_ptr<UIView>& room() const { return _room; }

    /// Two buttons in one place: who comes back finds the one that was there before.
    void dress(const std::string& title, bool closes) {
        _title->setText(title);
        _close->setHidden(!closes);
        _back->setHidden(closes);
    }

    void layoutSubviews() override {
        const UIEdgeInsets insets = safeAreaInsets();
        const CGSize size = bounds().size;
        const CGFloat side = std::max(insets.left, insets.right) + buttonMargin + buttonSide;
        _title->setFrame(CGRectMake(side, insets.top, std::max(size.width - 2 * side, 1.0), barHeight));
        const CGFloat x = isRightToLeft() ? size.width - insets.right - buttonMargin - buttonSide
                                          : insets.left + buttonMargin;
        for (const auto& button : {_close, _back})
            button->setFrame(
                CGRectMake(x, insets.top + (barHeight - buttonSide) / 2, buttonSide, buttonSide));
        const CGFloat top = insets.top + barHeight;
        _room->setFrame(CGRectMake(0, top, size.width, std::max(size.height - top, 1.0)));
        for (const auto& screen : _room->subviews()) {
            screen->setFrame(_room->bounds());
            screen->setNeedsLayout();
        }
    }

    void drawRect(Canvas& canvas, CGRect bounds) override {
        canvas.fillRect(CGRectMake(0, _room->frame().origin.y - hairline, bounds.size.width, hairline),
                        lineColor);
    }
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}

  private:
    static void dressButton(UIButton& button, const std::string& name, const char* path,
                            const std::function<void()>& action) {
        button.setTintColor(buttonColor);
        button.setAction(action);
        button.setAccessibilityLabel(NSBundle::mainBundle().localizedStringForKey(name, name));
        button.setImage(strokes(path));
    }

    std::shared_ptr<UILabel> _title = std::make_shared<UILabel>();
    std::shared_ptr<UIButton> _close = std::make_shared<UIButton>();
    std::shared_ptr<UIButton> _back = std::make_shared<UIButton>();
    std::shared_ptr<UIView> _room = std::make_shared<UIView>();
};

std::shared_ptr<UINavigationController> UINavigationController::of(const UIViewController& controller) {
    return std::dynamic_pointer_cast<UINavigationController>(controller.parentViewController());
}

void UINavigationController::setRootViewController(const std::shared_ptr<UIViewController>& controller) {
    addChildViewController(controller);
    _stack = {controller};
}

void UINavigationController::loadView() {
    _navigationView = std::make_shared<NavigationView>([this] { goBack(); });
    setView(_navigationView);
    if (const auto first = topScreen()) _navigationView->room()->addSubview(first->view());
    dressBar();
}

void UINavigationController::dressBar() {
    if (const auto top = topScreen()) _navigationView->dress(top->title(), _stack.size() == 1);
}

void UINavigationController::viewWillAppear(bool animated) {
    if (const auto top = topScreen()) top->viewWillAppear(animated);
}

void UINavigationController::viewDidAppear(bool animated) {
    if (const auto top = topScreen()) top->viewDidAppear(animated);
}

void UINavigationController::viewWillDisappear(bool animated) {
    if (const auto top = topScreen()) top->viewWillDisappear(animated);
}

void UINavigationController::viewDidDisappear(bool animated) {
    if (const auto top = topScreen()) top->viewDidDisappear(animated);
}

void UINavigationController::didReceiveMemoryWarning() {
    for (const auto& controller : std::vector(_stack))
        controller->didReceiveMemoryWarning();
}

void UINavigationController::pushViewController(const std::shared_ptr<UIViewController>& controller,
                                                bool animated) {
    const auto from = topScreen();
    addChildViewController(controller);
    _stack.push_back(controller);
    if (isViewLoaded() && from) show(from, controller, true, animated);
}

void UINavigationController::popViewController(bool animated) {
    if (_stack.size() < 2) return;
    const auto from = _stack.back();
    _stack.pop_back();
    removeChildViewController(from);
    if (isViewLoaded()) show(from, topScreen(), false, animated);
}

void UINavigationController::show(const std::shared_ptr<UIViewController>& from,
                                  const std::shared_ptr<UIViewController>& to, bool forward, bool animated) {
    const std::shared_ptr<UIView> room = _navigationView->room();
    const CGRect place = room->bounds();
    const CGFloat way = forward == isRightToLeft() ? -place.size.width : place.size.width;
    from->viewWillDisappear(animated);
    to->viewWillAppear(animated);
    const std::shared_ptr<UIView> leaving = from->view();
    const std::shared_ptr<UIView> coming = to->view();
    leaving->setUserInteractionEnabled(false);
    leaving->setHidden(!animated);
    coming->setUserInteractionEnabled(true);
    coming->setHidden(false);
    // Laid out where it will be: what covers the screen's edges counts there.
    coming->setFrame(place);
    room->addSubview(coming);
    room->layoutIfNeeded();
    if (animated) coming->setFrame(CGRectOffset(place, way, 0));
    dressBar();
    const auto arrived = [from, to, leaving, coming, animated](bool) {
        // Either may be on its way back meanwhile.
        if (!leaving->isUserInteractionEnabled()) {
            leaving->removeFromSuperview();
            from->viewDidDisappear(animated);
        }
        if (coming->isUserInteractionEnabled()) to->viewDidAppear(animated);
    };
    const auto slide = [leaving, coming, place, way] {
        coming->setFrame(place);
        leaving->setFrame(CGRectOffset(place, -way, 0));
    };
    if (animated) return UIView::animateWithDuration(slideSeconds, 0, 0, slide, arrived);
    slide();
    arrived(true);
}

void UINavigationController::goBack() {
    if (_stack.size() > 1) return popViewController(true);
    dismissViewControllerAnimated(true);
}

bool UINavigationController::keyPressed(const HostKeyPress& press) {
    if (press.key == HostKey::escape || press.key == HostKey::back) {
        if (!press.repeated) goBack();
        return true;
    }
    const auto top = topScreen();
    return top && top->keyPressed(press);
}
