// Touch routing and the screens of the window.
// A finger belongs to the view on which it landed until it lifts.
#include "platform/ui/ui_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_gesture_recognizer.h"
#include "platform/ui/ui_view_controller.h"

namespace {

using Recognizers = std::vector<std::shared_ptr<UIGestureRecognizer>>;

/// Those of the hit view and of the views above it, nearest first, up to the first view that swallows
/// touches.
Recognizers recognizersFor(const UIView* hit) {
    Recognizers found;
    for (const UIView* view = hit; view; view = view->superview()) {
        found.insert(found.end(), view->gestureRecognizers().begin(), view->gestureRecognizers().end());
        if (view->swallowsTouches()) break;
    }
    return found;
}

/// The responder's and the recogniser's four methods have the same names.
template <typename Receiver>
void send(Receiver& receiver, UITouchPhase phase, const UITouches& touches, const UIEvent& event) {
    switch (phase) {
        case UITouchPhase::began:
            return receiver.touchesBegan(touches, event);
        case UITouchPhase::moved:
            return receiver.touchesMoved(touches, event);
        case UITouchPhase::ended:
            return receiver.touchesEnded(touches, event);
        case UITouchPhase::cancelled:
            return receiver.touchesCancelled(touches, event);
    }
}

bool isFinite(CGPoint p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

bool isLift(UITouchPhase phase) {
    return phase == UITouchPhase::ended || phase == UITouchPhase::cancelled;
}

}  // namespace

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> controller) {
    if (controller == _root) return;
    const std::shared_ptr<UIViewController> former = std::exchange(_root, std::move(controller));
    if (!_shown) return;
    if (former) {
        former->dismissViewController(false);
        former->viewWillDisappear(false);
        former->view()->removeFromSuperview();
        former->viewDidDisappear(false);
    }
    rootAppears();
}

std::shared_ptr<UIViewController> UIWindow::topViewController() const {
    std::shared_ptr<UIViewController> top = _root;
    while (top && top->presentedViewController())
        top = top->presentedViewController();
    return top;
}

void UIWindow::makeKeyAndVisible() {
    if (std::exchange(_shown, true)) return;
    rootAppears();
}

void UIWindow::rootAppears() {
    if (!_root) return;
    const std::shared_ptr<UIView> view = _root->view();
    insertSubviewAtIndex(view, 0);
    _root->viewWillAppear(false);
    layoutScreens();
    _root->viewDidAppear(false);
}

CGRect UIWindow::landscapeBounds() const {
    const CGSize size = bounds().size;
    const CGFloat spare = std::max(0.0, size.height - size.width);
    return CGRectMake(0, spare / 2, size.width, size.height - spare);
}

/// The root's view and those presented over it fill what is landscape of the window.
void UIWindow::layoutSubviews() {
    for (std::shared_ptr<UIViewController> controller = _root; controller;
         controller = controller->presentedViewController()) {
        if (controller->isViewLoaded()) controller->view()->setFrame(landscapeBounds());
    }
}

void UIWindow::layoutScreens() {
    layoutItselfIfNeeded();
    for (std::shared_ptr<UIViewController> controller = _root; controller;
         controller = controller->presentedViewController()) {
        if (controller->isViewLoaded()) controller->view()->layoutItselfIfNeeded();
    }
}

bool UIWindow::takeOverlayDirty() {
    return std::exchange(_overlayDirty, false);
}

void UIWindow::sendTouch(const HostTouch& touch) {
    if (touch.phase != UITouchPhase::began && _cancelled.contains(touch.id)) {
        if (isLift(touch.phase)) _cancelled.erase(touch.id);
        return;
    }
    if (!accepts(touch)) {
        NSLog("touch %lld out of order: dropped", static_cast<long long>(touch.id));
        return;
    }
    if (touch.phase == UITouchPhase::began) return begin(touch);

    const Finger finger = _fingers.at(touch.id);
    finger.touch->phase = touch.phase;
    finger.touch->previousLocation = finger.touch->location;
    if (isFinite(touch.location)) finger.touch->location = touch.location;
    finger.touch->timestamp = std::max(touch.time, finger.touch->timestamp);
    if (isLift(touch.phase)) _fingers.erase(touch.id);
    deliver(finger);
}

/// A lift is never refused for its time or place: the finger would stay down for ever.
bool UIWindow::accepts(const HostTouch& touch) const {
    const auto known = _fingers.find(touch.id);
    if (touch.phase == UITouchPhase::began) return known == _fingers.end() && isFinite(touch.location);
    if (known == _fingers.end()) return false;
    if (isLift(touch.phase)) return true;
    return isFinite(touch.location) && touch.time >= known->second.touch->timestamp;
}

void UIWindow::begin(const HostTouch& touch) {
    _cancelled.erase(touch.id);
    const std::shared_ptr<UIView> hit = hitTest(touch.location);
    Finger finger{std::make_shared<UITouch>(), recognizersFor(hit.get())};
    *finger.touch = {touch.id, touch.phase, touch.location, touch.location, touch.time, hit};
    _fingers[touch.id] = finger;
    deliver(finger);
}

/// The finger's copy keeps touch and recognisers alive whatever they do to the window.
void UIWindow::deliver(const Finger& finger) {
    UIEvent event{finger.touch->timestamp, {}};
    for (const auto& [id, other] : _fingers)
        event.allTouches.push_back(other.touch);
    if (isLift(finger.touch->phase)) event.allTouches.push_back(finger.touch);

    const UITouches touches{finger.touch};
    UITouchPhase phase = finger.touch->phase;
    for (const auto& recognizer : finger.recognizers) {
        if (!recognizer->view()) continue;
        send(*recognizer, phase, touches, event);
        if (recognizer->takeRecognition()) phase = UITouchPhase::cancelled;
    }
    if (const auto view = finger.touch->view.lock()) send(*view, finger.touch->phase, touches, event);
}

void UIWindow::cancelTouches() {
    const std::map<int64_t, Finger> fingers = std::exchange(_fingers, {});
    for (const auto& [id, finger] : fingers) {
        _cancelled.insert(id);
        finger.touch->phase = UITouchPhase::cancelled;
        deliver(finger);
    }
}
