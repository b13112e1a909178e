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

/// No screen is larger, in points; farther off, sums and speeds would leave the numbers.
constexpr CGFloat farthestPlace = 1e6;
/// The sides of a view shrink to this with one notch of a wheel.
constexpr double notchShrinking = 0.9;
constexpr double mostNotches = 20;
constexpr double largestStep = 10;

/// Those of the hit view and of the views above it, nearest first, up to the first view that swallows
/// touches.
std::vector<std::shared_ptr<UIGestureRecognizer>> recognizersFor(const UIView* hit) {
    std::vector<std::shared_ptr<UIGestureRecognizer>> found;
    for (const UIView* view = hit; view; view = view->superview()) {
        found.insert(found.end(), view->gestureRecognizers().begin(), view->gestureRecognizers().end());
        if (view->swallowsTouches()) break;
    }
    return found;
}

void sendToView(UIView& view, const UITouches& touches, const UIEvent& event) {
    switch (touches.front()->phase) {
        case UITouchPhase::began:
            return view.touchesBegan(touches, event);
        case UITouchPhase::moved:
            return view.touchesMoved(touches, event);
        case UITouchPhase::ended:
            return view.touchesEnded(touches, event);
        case UITouchPhase::cancelled:
            return view.touchesCancelled(touches, event);
    }
}

bool isPlace(CGPoint p) {
    return std::abs(p.x) <= farthestPlace && std::abs(p.y) <= farthestPlace;
}

}  // namespace

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> controller) {
    if (controller == _root) return;
    const std::shared_ptr<UIViewController> former = std::exchange(_root, std::move(controller));
    if (!_shown) return;
    if (former) {
        if (former->presentedViewController()) former->dismissViewControllerAnimated(false);
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

void UIWindow::setSafeAreaInsets(UIEdgeInsets insets) {
    const auto areInsets = [](CGFloat before, CGFloat behind, CGFloat length) {
        return before >= 0 && behind >= 0 && before + behind < length;
    };
    const CGSize size = bounds().size;
    if (!areInsets(insets.top, insets.bottom, size.height) ||
        !areInsets(insets.left, insets.right, size.width)) {
        NSLog("impossible safe area %g %g %g %g: ignored", insets.top, insets.right, insets.bottom,
              insets.left);
        return;
    }
    if (insets == _insets) return;
    _insets = insets;
    for (std::shared_ptr<UIViewController> controller = _root; controller;
         controller = controller->presentedViewController()) {
        if (controller->isViewLoaded()) controller->view()->setNeedsLayout();
    }
    setNeedsLayout();
}

CGRect UIWindow::landscapeBounds() const {
    const CGSize size = bounds().size;
    const CGFloat spare = std::max(0.0, size.height - size.width);
    return CGRectMake(0, spare / 2, size.width, size.height - spare);
}

CGRect UIWindow::safeLandscapeBounds() const {
    return CGRectIntersection(landscapeBounds(), UIEdgeInsetsInsetRect(bounds(), _insets));
}

/// The root's view fills what is landscape of the window; those presented over it lie there as their styles
/// say.
void UIWindow::layoutSubviews() {
    for (std::shared_ptr<UIViewController> controller = _root; controller;
         controller = controller->presentedViewController()) {
        if (!controller->isViewLoaded()) continue;
        controller->view()->setFrame(
            controller == _root ? landscapeBounds()
                                : controller->presentedFrame(landscapeBounds(), safeLandscapeBounds()));
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

    const std::shared_ptr<const Finger> finger = _fingers.at(touch.id);
    const UITouch& known = *finger->touch.front();
    const CGPoint location = isPlace(touch.location) ? touch.location : known.location;
    const HostTime time = touch.time > known.timestamp ? touch.time : known.timestamp;
    // Whoever follows moves has seen them all when the finger lifts.
    if (!isLift(touch.phase) || location != known.location) move(finger, location, time);
    if (!isLift(touch.phase)) return;
    finger->touch.front()->timestamp = time;
    lift(finger, touch.phase);
}

/// A lift is never refused for its time or place: the finger would stay down for ever.
bool UIWindow::accepts(const HostTouch& touch) const {
    const auto known = _fingers.find(touch.id);
    const bool isSane = isPlace(touch.location) && std::isfinite(touch.time);
    if (touch.phase == UITouchPhase::began) return known == _fingers.end() && isSane;
    if (known == _fingers.end()) return false;
    if (isLift(touch.phase)) return true;
    return isSane && touch.time >= known->second->touch.front()->timestamp;
}

/// A gesture that is under way already takes the finger in, alone.
void UIWindow::begin(const HostTouch& touch) {
    _cancelled.erase(touch.id);
    const std::shared_ptr<UIView> hit = hitTest(touch.location);
    const auto newest = std::make_shared<UITouch>(
        UITouch{touch.id, touch.phase, touch.location, touch.location, touch.time, hit});
    const auto finger = std::make_shared<const Finger>(Finger{{newest}, recognizersFor(hit.get())});
    _fingers[touch.id] = finger;
    _event.allTouches.push_back(newest);
    deliver(*finger);
    for (const auto& recognizer : finger->recognizers) {
        if (recognizer->isActive()) letWin(*recognizer, *finger);
    }
}

void UIWindow::move(const std::shared_ptr<const Finger>& finger, CGPoint location, HostTime time) {
    UITouch& touch = *finger->touch.front();
    touch.phase = UITouchPhase::moved;
    touch.previousLocation = touch.location;
    touch.location = location;
    touch.timestamp = time;
    deliver(*finger);
}

void UIWindow::lift(const std::shared_ptr<const Finger>& finger, UITouchPhase phase) {
    UITouch& touch = *finger->touch.front();
    // A move to the place of the lift may have had the window cancel everything.
    const auto known = _fingers.find(touch.id);
    if (known == _fingers.end() || known->second != finger) return;
    _fingers.erase(known);
    touch.phase = phase;
    touch.previousLocation = touch.location;
    deliver(*finger);
    std::erase(_event.allTouches, finger->touch.front());
}

/// The caller keeps touch and recognisers alive whatever they do to the window.
void UIWindow::deliver(const Finger& finger) {
    _event.timestamp = finger.touch.front()->timestamp;
    for (const auto& recognizer : finger.recognizers) {
        if (!recognizer->view()) continue;
        recognizer->takeTouches(finger.touch, _event);
        if (recognizer->takeRecognition()) letWin(*recognizer, finger);
    }
    if (const auto view = finger.touch.front()->view.lock()) sendToView(*view, finger.touch, _event);
}

void UIWindow::letWin(const UIGestureRecognizer& winner, const Finger& finger) {
    const auto yieldOthers = [&winner](const Finger& one) {
        const auto isWinner = [&winner](const auto& recognizer) { return recognizer.get() == &winner; };
        if (std::none_of(one.recognizers.begin(), one.recognizers.end(), isWinner)) return;
        for (const auto& recognizer : one.recognizers) {
            if (!isWinner(recognizer)) recognizer->yield();
        }
    };
    yieldOthers(finger);
    for (const auto& [id, one] : _fingers)
        yieldOthers(*one);
}

void UIWindow::cancelTouches() {
    while (!_fingers.empty()) {
        const auto [id, finger] = *_fingers.begin();
        lift(finger, UITouchPhase::cancelled);
        _cancelled.insert(id);
    }
}

void UIWindow::sendWheel(const HostWheel& wheel) {
    const double notches = std::clamp(wheel.steps, -mostNotches, mostNotches);
    magnify({wheel.location, std::pow(notchShrinking, -notches), true, notches});
}

void UIWindow::sendMagnification(const HostMagnify& step) {
    magnify({step.location, step.factor, false, 0});
}

void UIWindow::magnify(const UIMagnification& step) {
    if (!isPlace(step.location) || !std::isfinite(step.factor) || step.factor <= 0) {
        NSLog("magnification by %g at %s: dropped", step.factor, NSStringFromCGPoint(step.location).c_str());
        return;
    }
    UIMagnification sane = step;
    sane.factor = std::clamp(step.factor, 1 / largestStep, largestStep);
    const std::shared_ptr<UIView> hit = hitTest(step.location);
    for (const auto& recognizer : recognizersFor(hit.get())) {
        if (recognizer->view()) recognizer->takeMagnification(sane);
    }
}
