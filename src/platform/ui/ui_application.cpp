// The order of a frame and of the app's life. Nothing here draws or waits.
// One place decides it, so that every host's frames run alike.
#include "platform/ui/ui_application.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/foundation/ca_display_link.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_notification_center.h"
#include "platform/ui/ui_accessibility.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_screen.h"
#include "platform/ui/ui_view_controller.h"
#include "platform/ui/view_animator.h"

namespace {

/// Points, and pixels: no GPU draws more.
constexpr double longestSide = 32768;

UIApplication* sharedInstance = nullptr;

void post(const std::string& name) {
    NSNotificationCenter::defaultCenter().postNotificationName(name, sharedInstance);
}

}  // namespace

UIApplication::UIApplication(std::shared_ptr<UIApplicationDelegate> delegate, WindowControl* control,
                             std::unique_ptr<FramePresenter> presenter)
    : _delegate(std::move(delegate)), _control(control), _presenter(std::move(presenter)) {
    sharedInstance = this;
}

UIApplication::~UIApplication() {
    NSRunLoop::currentRunLoop().invalidateDisplayLinks();
    NSRunLoop::currentRunLoop().setRefreshesPerFrame(1);
    ViewAnimator::shared().reset();
    setReduceMotionEnabled(false);
    if (sharedInstance == this) sharedInstance = nullptr;
}

UIApplication* UIApplication::sharedApplication() {
    return sharedInstance;
}

std::shared_ptr<UIWindow> UIApplication::window() const {
    return _launched ? _delegate->window() : nullptr;
}

bool UIApplication::launch() {
    if (_launched) return true;
    if (!_delegate->applicationDidFinishLaunching()) return false;
    _launched = true;
    if (const auto shown = window()) {
        shown->setFrame(UIScreen::mainScreen().bounds());
        shown->makeKeyAndVisible();
    }
    becomeActive();
    return true;
}

void UIApplication::becomeActive() {
    if (!_launched || _active || _terminated || !_visible) return;
    _active = true;
    _delegate->applicationDidBecomeActive();
    post(UIApplicationDidBecomeActiveNotification);
}

void UIApplication::resignActive() {
    if (!_active) return;
    _active = false;
    if (const auto shown = window()) shown->cancelTouches();
    _delegate->applicationWillResignActive();
    post(UIApplicationWillResignActiveNotification);
}

void UIApplication::setVisible(bool visible) {
    if (visible == _visible || _terminated) return;
    if (!visible) {
        resignActive();
        if (const auto shown = window()) shown->cancelTouches();
        _visible = false;
        _lastFrame.reset();
        if (!_launched) return;
        _inBackground = true;
        _delegate->applicationDidEnterBackground();
        post(UIApplicationDidEnterBackgroundNotification);
        return;
    }
    _visible = true;
    if (!_launched) return;
    _delegate->applicationWillEnterForeground();
    post(UIApplicationWillEnterForegroundNotification);
    _inBackground = false;
    becomeActive();
    if (const auto shown = window()) shown->overlayNeedsDisplay();
}

UIApplicationState UIApplication::applicationState() const {
    if (_inBackground) return UIApplicationState::background;
    return _active ? UIApplicationState::active : UIApplicationState::inactive;
}

void UIApplication::terminate() {
    if (!_launched || _terminated) return;
    resignActive();
    _terminated = true;
    _delegate->applicationWillTerminate();
    post(UIApplicationWillTerminateNotification);
}

void UIApplication::resize(const HostResize& event) {
    const auto isSide = [scale = event.scale](double points) {
        return points > 0 && points <= longestSide && points * scale > 0 && points * scale <= longestSide;
    };
    if (!isSide(event.size.width) || !isSide(event.size.height)) {
        NSLog("impossible screen size %s at scale %g: ignored", NSStringFromCGSize(event.size).c_str(),
              event.scale);
        return;
    }
    UIScreen::mainScreen().setSizeAndScale(event.size, event.scale);
    const auto shown = window();
    if (!shown) return;
    shown->setFrame(UIScreen::mainScreen().bounds());
    shown->layoutScreens();
    shown->overlayNeedsDisplay();
}

bool UIApplication::pressKey(const HostKeyPress& press) {
    const auto shown = window();
    const auto top = shown ? shown->topViewController() : nullptr;
    if (!top || top->keyPressed(press)) return top != nullptr;
    for (auto below = top->presentingViewController(); below; below = below->presentingViewController()) {
        if (below->keyPressedAbove(press)) return true;
    }
    return false;
}

struct UIApplication::EventHandler {
    UIApplication& app;
    bool& used;

    void operator()(const HostTouch& touch) const {
        const auto shown = app.window();
        if (shown && app._visible) shown->sendTouch(touch);
    }
    void operator()(const HostKeyPress& press) const { used = app.pressKey(press); }
    void operator()(const HostWheel& wheel) const {
        const auto shown = app.window();
        if (shown && app._visible) shown->sendWheel(wheel);
    }
    void operator()(const HostMagnify& step) const {
        const auto shown = app.window();
        if (shown && app._visible) shown->sendMagnification(step);
    }
    void operator()(const HostResize& event) const { app.resize(event); }
    void operator()(const HostVisibility& event) const { app.setVisible(event.visible); }
    void operator()(const HostSafeArea& area) const {
        if (const auto shown = app.window()) shown->setSafeAreaInsets(area.insets);
    }
    void operator()(const HostReduceMotion& wish) const { setReduceMotionEnabled(wish.reduced); }
    void operator()(const HostOrientation& held) const {
        UIDevice::currentDevice().setOrientation(held.orientation);
    }
    void operator()(const HostOpenLink& link) const {
        if (app._launched && !app._terminated) app._delegate->applicationOpenLink(link.text);
    }
    void operator()(const HostOpenPicture& picture) const {
        if (app._launched && !app._terminated)
            app._delegate->applicationOpenPicture(picture.name, picture.texts);
    }
    void operator()(const HostLifecycle& event) const {
        switch (event) {
            case HostLifecycle::didBecomeActive:
                return app.becomeActive();
            case HostLifecycle::willResignActive:
                return app.resignActive();
            case HostLifecycle::willTerminate:
                return app.terminate();
            case HostLifecycle::memoryWarning:
                break;
        }
        post(UIApplicationDidReceiveMemoryWarningNotification);
        const auto shown = app.window();
        if (!shown) return;
        for (auto controller = shown->rootViewController(); controller;
             controller = controller->presentedViewController()) {
            controller->didReceiveMemoryWarning();
        }
    }
    void operator()(const HostContextLost&) const {
        const auto shown = app.window();
        if (!shown) return;
        app._presenter->contextLost(*shown);
        shown->overlayNeedsDisplay();
    }
    void operator()(const HostClose&) const {
        app.terminate();
        if (app._control) app._control->requestQuit();
    }
};

bool UIApplication::handle(const HostEvent& event) {
    if (_eventObserver) _eventObserver(event);
    bool used = true;
    std::visit(EventHandler{*this, used}, event);
    return used;
}

void UIApplication::advanceClock(HostTime time) {
    if (_lastFrame) {
        const double passed = std::max(time - *_lastFrame, 0.0);
        _time += passed;
        NSRunLoop& loop = NSRunLoop::currentRunLoop();
        _frameInterval.noteFrame(passed, loop.refreshInterval());
        loop.setRefreshesPerFrame(_frameInterval.refreshesPerFrame());
    }
    _lastFrame = time;
}

void UIApplication::frame(HostTime time) {
    if (!_launched || !_visible) return;
    advanceClock(time);
    DispatchQueue::mainQueue().drain();
    NSRunLoop::currentRunLoop().fireDisplayLinks(_time);
    ViewAnimator::shared().step(_time);
    runCallbacks();
    if (const auto shown = window()) {
        // Measuring text loads the fonts: the first frame does not wait for them, and shows no overlay yet.
        if (std::exchange(_firstFrameShown, true)) shown->layoutIfNeeded();
        _presenter->presentFrame(*shown, _time, shown->takeOverlayDirty());
    }
}

/// Callbacks that are added meanwhile wait for the next frame.
void UIApplication::runCallbacks() {
    const std::size_t count = _callbacks.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::shared_ptr<FrameCallback> callback = _callbacks[i];
        if (!callback->removed) callback->block(_time);
    }
    std::erase_if(_callbacks, [](const auto& callback) { return callback->removed; });
}

void UIApplication::setIdleTimerDisabled(bool disabled) {
    if (disabled == _idleTimerDisabled) return;
    _idleTimerDisabled = disabled;
    if (_control) _control->setIdleTimerDisabled(disabled);
}

int UIApplication::addFrameCallback(std::function<void(double time)> callback) {
    _callbacks.push_back(std::make_shared<FrameCallback>(FrameCallback{++_lastToken, std::move(callback)}));
    return _lastToken;
}

/// The block stays until all have run: it may be the one that runs now.
void UIApplication::removeFrameCallback(int token) {
    for (const auto& callback : _callbacks) {
        if (callback->token == token) callback->removed = true;
    }
}

std::shared_ptr<UIViewController> UIApplication::topViewController() const {
    const auto shown = window();
    return shown ? shown->topViewController() : nullptr;
}

void UIApplication::openURL(const NSURL& url, std::function<void(bool)> completion) {
    if (_control) return _control->openURL(url.absoluteString(), std::move(completion));
    DispatchQueue::mainQueue().async([completion = std::move(completion)] { completion(false); });
}
