// The life of a screen: loading, presenting, going.
// A view is loaded at its first use, so that screens that are never shown cost nothing.
#include "platform/ui/ui_view_controller.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_window.h"

namespace {

constexpr double fadeDuration = 0.25;

}  // namespace

UIViewController::~UIViewController() {
    if (_view) _view->setOwningController(nullptr);
}

std::shared_ptr<UIView> UIViewController::view() {
    if (!_loaded) {
        _loaded = true;
        if (!_view) loadView();
        viewDidLoad();
    }
    return _view;
}

void UIViewController::setView(std::shared_ptr<UIView> view) {
    if (view == _view) return;
    const std::shared_ptr<UIView> former = std::exchange(_view, std::move(view));
    if (_view) _view->setOwningController(this);
    // Dropped to save memory: loaded anew when it is asked for again.
    if (!_view) _loaded = false;
    if (!former) return;
    former->setOwningController(nullptr);
    UIView* const container = former->superview();
    if (!container) return;
    const auto& siblings = container->subviews();
    const auto place = std::find(siblings.begin(), siblings.end(), former) - siblings.begin();
    former->removeFromSuperview();
    container->insertSubviewAtIndex(_view, static_cast<std::size_t>(place));
}

void UIViewController::loadView() {
    if (!_view) setView(std::make_shared<UIView>());
}

UIResponder* UIViewController::nextResponder() {
    return _view ? _view->superview() : nullptr;
}

void UIViewController::presentViewController(const std::shared_ptr<UIViewController>& controller,
                                             bool animated) {
    UIWindow* const window = isViewLoaded() ? _view->window() : nullptr;
    if (!window || _presented || !controller || controller.get() == this) {
        NSLog("UIViewController: cannot present a screen here");
        return;
    }
    _presented = controller;
    const std::shared_ptr<UIView> front = controller->view();
    front->setFrame(window->landscapeBounds());
    window->addSubview(front);
    viewWillDisappear(animated);
    controller->viewWillAppear(animated);
    window->layoutIfNeeded();
    const auto appeared = [self = shared_from_this(), controller, animated](bool) {
        controller->viewDidAppear(animated);
        self->viewDidDisappear(animated);
    };
    front->setAlpha(animated ? 0 : 1);
    if (!animated) return appeared(true);
    UIView::animateWithDuration(
        fadeDuration, 0, UIViewAnimationOptionNone, [&] { front->setAlpha(1); }, appeared);
}

void UIViewController::dismissViewController(bool animated) {
    if (!_presented) return;
    _presented->dismissViewController(false);
    const std::shared_ptr<UIViewController> leaving = std::exchange(_presented, nullptr);
    const std::shared_ptr<UIView> front = leaving->view();
    leaving->viewWillDisappear(animated);
    viewWillAppear(animated);
    const auto gone = [self = shared_from_this(), leaving, front, animated](bool) {
        if (self->_presented != leaving) front->removeFromSuperview();
        leaving->viewDidDisappear(animated);
        self->viewDidAppear(animated);
    };
    if (!animated) return gone(true);
    UIView::animateWithDuration(
        fadeDuration, 0, UIViewAnimationOptionBeginFromCurrentState, [&] { front->setAlpha(0); }, gone);
}
