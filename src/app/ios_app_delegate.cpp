// Launch, and the one route of the app: /type/x1/y1/x2/y2, a rectangle of the plane.
// Classes that the storyboard names are registered here, so that the framework knows none of them.
#include "app/ios_app_delegate.h"

#include <string_view>
#include <typeinfo>
#include <utility>
#include <variant>

#include "app/linked_view.h"
#include "app/shared_link.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"
#include "platform/gl/glk_view.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_screen.h"
#include "platform/ui/ui_storyboard.h"
#include "routing/jl_routes.h"
#include "screens/swallow_touches_view.h"

namespace {

/// The global registry outlives every delegate.
JLRRouteHandlerBlock handlerHolding(std::weak_ptr<iOSAppDelegate> delegate,
                                    bool (iOSAppDelegate::*handle)(const JLRRouteParameters&)) {
    return [delegate = std::move(delegate), handle](const JLRRouteParameters& parameters) {
        const auto alive = delegate.lock();
        return alive && (alive.get()->*handle)(parameters);
    };
}

}  // namespace

iOSAppDelegate::~iOSAppDelegate() {
    if (!_isRouted) return;
    JLRoutes::Class::removeRoute(linkedViewRoute);
    UIDevice::currentDevice().endGeneratingDeviceOrientationNotifications();
}

bool iOSAppDelegate::applicationDidFinishLaunching() {
    if (!loadMainScreen()) return false;
    if (UIApplication* application = UIApplication::sharedApplication())
        application->setIdleTimerDisabled(true);
    _launchRect = CGRectNull;
    UIDevice::currentDevice().beginGeneratingDeviceOrientationNotifications();
    JLRoutes::Class::addRoute(linkedViewRoute, handlerHolding(weak_from_this(), &iOSAppDelegate::openView));
    _isRouted = true;
    return true;
}

/// Its view is loaded when the window shows it.
bool iOSAppDelegate::loadMainScreen() {
    UIStoryboard storyboard("Main");
    storyboard.registerController("GameViewController",
                                  [] { return std::make_shared<GameViewController>(); });
    storyboard.registerView("GLKView", [] { return std::make_shared<GLKView>(); });
    storyboard.registerView("SwallowTouchesView", [] { return std::make_shared<SwallowTouchesView>(); });
    const CGRect screen = UIScreen::mainScreen().bounds();
    auto root = storyboard.instantiateInitialViewController(screen.size);
    if (!root) return false;
    _window = std::make_shared<UIWindow>(screen);
    _window->setRootViewController(std::move(root));
    return true;
}

void iOSAppDelegate::applicationOpenLink(const std::string& text) {
    const auto link = readSharedLink(text);
    if (const auto* mistake = std::get_if<LinkMistake>(&link)) {
        NSLog("%s", mistake->line.c_str());
        return;
    }
    const NSURL& url = std::get<NSURL>(link);
    const bool opened = isWebLink(url) ? applicationContinueUserActivity({NSUserActivityTypeBrowsingWeb, url})
                                       : applicationOpenURL(url);
    if (!opened) NSLog("%.200s names no view", url.absoluteString().c_str());
}

bool iOSAppDelegate::applicationOpenURL(const NSURL& url) {
    return JLRoutes::Class::routeURL(url);
}

bool iOSAppDelegate::applicationContinueUserActivity(const NSUserActivity& activity) {
    if (activity.activityType != NSUserActivityTypeBrowsingWeb) return false;
    return JLRoutes::Class::routeURL(activity.webpageURL);
}

bool iOSAppDelegate::loadDeeplink(const std::optional<NSURL>& url) {
    return JLRoutes::Class::routeURL(url);
}

/// YES whatever it does: a link of a known form is consumed, and no other route tries it.
bool iOSAppDelegate::openView(const JLRRouteParameters& parameters) {
    const auto view = linkedView(parameters);
    if (!view) return true;
    _launchRect = view->bounds;
    NSLog("Setting launch rect: %s", NSStringFromCGRect(_launchRect).c_str());
    const std::shared_ptr<UIViewController> root = _window ? _window->rootViewController() : nullptr;
    const UIViewController* shown = root.get();
    if (!shown || typeid(*shown) != typeid(GameViewController)) {
        NSLog("TODO: what else might be here? %s", shown ? typeid(*shown).name() : "(null)");
        return true;
    }
    auto& screen = static_cast<GameViewController&>(*root);
    if (screen.isViewLoaded()) screen.resetScreen(this);
    screen.setFractalType(view->fractalType);
    if (screen.presentedViewController()) screen.dismissViewController(false);
    return true;
}

void iOSAppDelegate::resetCrap() {
    const std::shared_ptr<UIViewController> root = _window ? _window->rootViewController() : nullptr;
    if (auto* screen = dynamic_cast<GameViewController*>(root.get())) screen->resetCrap();
}
