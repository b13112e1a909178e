// Launch, and the one route of the app: /type/x1/y1/x2/y2, a rectangle of the plane.
// Classes that the storyboard names are registered here, so that the framework knows none of them.
#include "app/ios_app_delegate.h"

#include <string_view>
#include <typeinfo>
#include <utility>
#include <variant>

#include "app/shared_link.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_string.h"
#include "platform/gl/glk_view.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_screen.h"
#include "platform/ui/ui_storyboard.h"
#include "routing/jl_routes.h"
#include "screens/swallow_touches_view.h"

namespace {

const std::string viewRoute = "/:type/:x1/:y1/:x2/:y2";
constexpr float largestSide = 10;  // plane units

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
    JLRoutes::Class::removeRoute(viewRoute);
    UIDevice::currentDevice().endGeneratingDeviceOrientationNotifications();
}

bool iOSAppDelegate::applicationDidFinishLaunching() {
    if (!loadMainScreen()) return false;
    if (UIApplication* application = UIApplication::sharedApplication())
        application->setIdleTimerDisabled(true);
    _launchRect = CGRectNull;
    UIDevice::currentDevice().beginGeneratingDeviceOrientationNotifications();
    JLRoutes::Class::addRoute(viewRoute, handlerHolding(weak_from_this(), &iOSAppDelegate::openView));
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

/// YES whatever it does: a link of a known form is consumed, and no other route tries it. Single precision
/// throughout.
bool iOSAppDelegate::openView(const JLRRouteParameters& parameters) {
    const auto number = [&](const char* name) {
        return NSString_floatValue(stringForKey(parameters, name).value_or(""));
    };
    const float x1 = number("x1");
    const float x2 = number("x2");
    const float y1 = number("y1");
    const float y2 = number("y2");
    const std::string type = stringForKey(parameters, "type").value_or("");
    if (type != "mandelbrot" && type != "julia") return true;
    const float w = x2 - x1;
    const float h = y2 - y1;
    if (!(w > 0 && h < largestSide && w < largestSide && h > 0)) return true;
    _launchRect = CGRectMake(static_cast<double>(x1), static_cast<double>(y1), static_cast<double>(w),
                             static_cast<double>(h));
    NSLog("Setting launch rect: %s", NSStringFromCGRect(_launchRect).c_str());
    const std::shared_ptr<UIViewController> root = _window ? _window->rootViewController() : nullptr;
    const UIViewController* shown = root.get();
    if (!shown || typeid(*shown) != typeid(GameViewController)) {
        NSLog("TODO: what else might be here? %s", shown ? typeid(*shown).name() : "(null)");
        return true;
    }
    auto& screen = static_cast<GameViewController&>(*root);
    if (screen.isViewLoaded()) screen.resetScreen(this);
    screen.setFractalType(type == "julia" ? FractalType::julia : FractalType::mandelbrot);
    if (screen.presentedViewController()) screen.dismissViewController(false);
    return true;
}

void iOSAppDelegate::resetCrap() {
    if (auto* screen = dynamic_cast<GameViewController*>(_window->rootViewController().get()))
        screen->resetCrap();
}
