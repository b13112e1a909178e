// The life of a screen: loading and its view; presenting is in ui_view_controller_presentation.cpp.
// A view is loaded at its first use, so that screens that are never shown cost nothing.
#include "platform/ui/ui_view_controller.h"

#include <algorithm>
#include <utility>

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
