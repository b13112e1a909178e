// Screens over screens: how one comes, lies over the one below and goes.
// The backdrop takes every touch beside a sheet, so that what lies below rests.
#include <algorithm>
#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_view_controller.h"
#include "platform/ui/ui_window.h"

namespace {

constexpr double slideSeconds = 0.35;
constexpr double dimming = 0.4;

bool isSheet(UIModalPresentationStyle style) {
    return style == UIModalPresentationStyle::pageSheet || style == UIModalPresentationStyle::formSheet;
}

class ModalBackdrop : public UIView {
  public:
    ModalBackdrop(CGRect frame, std::function<void()> tapped) : UIView(frame), _tapped(std::move(tapped)) {
        setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    }
    bool drawsContent() const override { return false; }
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {
        const auto tapped = _tapped;
        tapped();
    }

  private:
    std::function<void()> _tapped;
};

void move(bool animated, const std::function<void()>& changes, UIView::Completion done) {
    if (animated) {
        UIView::animateWithDuration(slideSeconds, 0, UIViewAnimationOptionBeginFromCurrentState, changes,
                                    std::move(done));
        return;
    }
    changes();
    done(true);
}

void callIfSet(const std::function<void()>& block) {
    if (block) block();
}

}  // namespace

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& child) {
    child->_parent = weak_from_this();
    _children.push_back(child);
}

void UIViewController::removeChildViewController(const std::shared_ptr<UIViewController>& child) {
    child->_parent.reset();
    std::erase(_children, child);
}

std::shared_ptr<UIViewController> UIViewController::presentingViewController() const {
    const auto parent = _parent.lock();
    return parent ? parent->presentingViewController() : _presenting.lock();
}

CGRect UIViewController::presentedFrame(CGRect screen, CGRect safe) const {
    if (!isSheet(_presentationStyle) || _preferredContentSize == CGSizeZero) return screen;
    const CGFloat width = std::min(_preferredContentSize.width, safe.size.width);
    const CGFloat height = std::min(_preferredContentSize.height, safe.size.height);
    const CGFloat x = std::clamp(CGRectGetMidX(screen) - width / 2, CGRectGetMinX(safe),
                                 std::max(CGRectGetMaxX(safe) - width, CGRectGetMinX(safe)));
    if (UIDevice::currentDevice().userInterfaceIdiom() != UIUserInterfaceIdiom::phone)
        return CGRectMake(x, CGRectGetMidY(safe) - height / 2, width, height);
    const CGFloat top = CGRectGetMaxY(safe) - height;
    return CGRectMake(x, top, width, CGRectGetMaxY(screen) - top);
}

void UIViewController::setPreferredContentSize(CGSize size) {
    _preferredContentSize = size;
    UIWindow* const window = isViewLoaded() ? _view->window() : nullptr;
    if (!window) return;
    if (isSheet(_presentationStyle) && !_presenting.expired())
        _view->setFrame(presentedFrame(window->landscapeBounds(), window->safeLandscapeBounds()));
    if (_view->superview()) _view->superview()->setNeedsLayout();
}

CGRect UIViewController::frameBelowScreen() const {
    CGRect frame = _view->frame();
    frame.origin.y = CGRectGetMaxY(_view->superview()->bounds());
    return frame;
}

void UIViewController::presentViewController(const std::shared_ptr<UIViewController>& controller,
                                             bool animated, std::function<void()> completion) {
    UIWindow* const window = isViewLoaded() ? _view->window() : nullptr;
    const bool isFree = controller && controller.get() != this && !controller->presentingViewController();
    if (!window || _presented || !isFree) {
        NSLog("UIViewController: cannot present a screen here");
        return;
    }
    if (controller->presentsItself([life = weak_from_this(), controller, animated, completion] {
            if (const auto self = life.lock()) self->presentViewController(controller, animated, completion);
        })) {
        return;
    }
    window->cancelTouches();
    _presented = controller;
    controller->_presenting = weak_from_this();
    const std::shared_ptr<UIView> front = controller->view();
    const auto tapped = [life = std::weak_ptr(controller)] {
        const auto shown = life.lock();
        if (shown && !shown->isModalInPresentation()) shown->dismissViewControllerAnimated(true);
    };
    controller->_backdrop = std::make_shared<ModalBackdrop>(window->bounds(), tapped);
    if (isSheet(controller->_presentationStyle))
        controller->_backdrop->setBackgroundColor(UIColor::black().withAlpha(dimming));
    window->addSubview(controller->_backdrop);
    front->setFrame(controller->presentedFrame(window->landscapeBounds(), window->safeLandscapeBounds()));
    front->setUserInteractionEnabled(true);
    window->addSubview(front);

    const bool covers = controller->covers();
    if (covers) viewWillDisappear(animated);
    controller->viewWillAppear(animated);
    window->layoutIfNeeded();
    // Dismissed on its way, it has arrived nowhere, and covered nobody.
    const auto arrived = [self = shared_from_this(), controller, backdrop = controller->_backdrop, animated,
                          covers, done = std::move(completion)] {
        const bool stays = controller->_backdrop == backdrop;
        if (stays) controller->viewDidAppear(animated);
        if (stays && covers) self->viewDidDisappear(animated);
        callIfSet(done);
    };
    controller->appear(animated, arrived);
}

/// From below the screen, or out of nothing, to its place.
void UIViewController::appear(bool animated, std::function<void()> appeared) {
    const bool slides = _transitionStyle == UIModalTransitionStyle::coverVertical;
    const CGRect place = _view->frame();
    if (animated) {
        _backdrop->setAlpha(0);
        if (slides) _view->setFrame(frameBelowScreen());
    }
    _view->setAlpha(animated && !slides ? 0 : 1);
    const auto arrive = [view = _view, backdrop = _backdrop, place] {
        backdrop->setAlpha(1);
        view->setAlpha(1);
        view->setFrame(place);
    };
    move(animated, arrive, [done = std::move(appeared)](bool) { done(); });
}

void UIViewController::dismissViewControllerAnimated(bool animated, std::function<void()> completion) {
    if (!_presented) {
        const auto presenting = presentingViewController();
        if (presenting) presenting->dismissViewControllerAnimated(animated, std::move(completion));
        return;
    }
    if (_presented->_presented) _presented->dismissViewControllerAnimated(false);
    const std::shared_ptr<UIViewController> leaving = std::exchange(_presented, nullptr);
    leaving->_presenting.reset();
    const bool covers = leaving->covers();
    leaving->viewWillDisappear(animated);
    if (covers) viewWillAppear(animated);
    const auto left = [self = shared_from_this(), leaving, animated, covers, done = std::move(completion)] {
        if (!leaving->_backdrop) leaving->viewDidDisappear(animated);
        const bool isCoveredAnew = self->_presented && self->_presented->covers();
        if (covers && !isCoveredAnew) self->viewDidAppear(animated);
        callIfSet(done);
    };
    leaving->disappear(animated, left);
}

/// The screen below answers at once. The view stays if it was presented again meanwhile.
void UIViewController::disappear(bool animated, std::function<void()> gone) {
    const std::shared_ptr<UIView> backdrop = std::exchange(_backdrop, nullptr);
    UIWindow* const window = _view->window();
    if (window) window->cancelTouches();
    _view->setUserInteractionEnabled(false);
    backdrop->setUserInteractionEnabled(false);
    const bool slides = window && _transitionStyle == UIModalTransitionStyle::coverVertical;
    const auto leave = [view = _view, backdrop, slides, below = slides ? frameBelowScreen() : CGRectZero] {
        backdrop->setAlpha(0);
        if (slides) {
            view->setFrame(below);
        } else {
            view->setAlpha(0);
        }
    };
    move(animated, leave, [this, life = shared_from_this(), backdrop, done = std::move(gone)](bool) {
        backdrop->removeFromSuperview();
        if (!_backdrop) _view->removeFromSuperview();
        done();
    });
}

std::size_t UIViewController::stepsBack() const {
    return presentingViewController() && !_modalInPresentation ? 1 : 0;
}

bool UIViewController::keyPressed(const HostKeyPress& press) {
    const bool leadsBack = press.key == HostKey::escape || press.key == HostKey::back;
    if (!leadsBack || !presentingViewController() || _modalInPresentation) return false;
    dismissViewControllerAnimated(true);
    return true;
}
