// Launch, and the one route of the app: /type/x1/y1/x2/y2, a rectangle of the plane.
// Where the app starts from is decided here; what a link names, in linked_view.h.
#include "app/ios_app_delegate.h"

#include <string_view>
#include <typeinfo>
#include <utility>
#include <variant>

#include "app/linked_view.h"
#include "app/shared_link.h"
#include "app/shared_picture.h"
#include "app/storyboards.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_screen.h"
#include "rating/irate.h"
#include "routing/jl_routes.h"

namespace {

/// The global registry outlives every delegate.
JLRRouteHandlerBlock handlerHolding(std::weak_ptr<iOSAppDelegate> delegate,
                                    bool (iOSAppDelegate::*handle)(const JLRRouteParameters&)) {
    return [delegate = std::move(delegate), handle](const JLRRouteParameters& parameters) {
        const auto alive = delegate.lock();
        return alive && (alive.get()->*handle)(parameters);
    };
}

void describeBundle() {
    NSBundle::mainBundle().setInfoDictionary({{"CFBundleDisplayName", "Zentaro"},
                                              {"CFBundleIdentifier", ZENTARO_BUNDLE_IDENTIFIER},
                                              {"CFBundleName", "Zentaro"},
                                              {"CFBundleShortVersionString", ZENTARO_VERSION},
                                              {"CFBundleVersion", ZENTARO_BUNDLE_VERSION}});
}

}  // namespace

iOSAppDelegate::iOSAppDelegate() : _verbose(ZENTARO_VERBOSE_RATING) {}

iOSAppDelegate::~iOSAppDelegate() {
    if (!_isRouted) return;
    iRate::releaseSharedInstance();
    JLRoutes::Class::removeRoute(linkedViewRoute);
    UIDevice::currentDevice().endGeneratingDeviceOrientationNotifications();
}

bool iOSAppDelegate::applicationDidFinishLaunching() {
    describeBundle();
    if (!loadMainScreen()) return false;
    if (UIApplication* application = UIApplication::sharedApplication())
        application->setIdleTimerDisabled(true);
    _launchRect = CGRectNull;
    UIDevice::currentDevice().beginGeneratingDeviceOrientationNotifications();
    JLRoutes::Class::addRoute(linkedViewRoute, handlerHolding(weak_from_this(), &iOSAppDelegate::openView));
    _isRouted = true;
    startRating();
    return true;
}

/// What is configured here holds before the launch is counted.
void iOSAppDelegate::startRating() {
    iRate::load();
    DispatchQueue::mainQueue().async([life = weak_from_this(), verbose = _verbose] {
        if (life.lock()) iRate::sharedInstance()->verboseLogging = verbose;
    });
}

/// Its view is loaded when the window shows it.
bool iOSAppDelegate::loadMainScreen() {
    const UIStoryboard storyboard = makeMainStoryboard(StoreConfiguration::ofBuild().isConfigured());
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

void iOSAppDelegate::applicationOpenPicture(const std::string& name,
                                            const std::optional<PictureTexts>& texts) {
    const auto picture = readSharedPicture(name, texts);
    if (const auto* mistake = std::get_if<LinkMistake>(&picture)) {
        NSLog("%s", mistake->line.c_str());
        return;
    }
    const auto& place = std::get<PicturedPlace>(picture);
    show(place.fractalType, place.bounds, place.palette);
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
    if (const auto view = linkedView(parameters)) show(view->fractalType, view->bounds, std::nullopt);
    return true;
}

/// Without a palette it stays the one that is on screen.
void iOSAppDelegate::show(int32_t fractalType, CGRect bounds, std::optional<int32_t> palette) {
    _launchRect = bounds;
    NSLog("Setting launch rect: %s", NSStringFromCGRect(_launchRect).c_str());
    const std::shared_ptr<UIViewController> root = _window ? _window->rootViewController() : nullptr;
    const UIViewController* shown = root.get();
    if (!shown || typeid(*shown) != typeid(GameViewController)) {
        NSLog("TODO: what else might be here? %s", shown ? typeid(*shown).name() : "(null)");
        return;
    }
    auto& screen = static_cast<GameViewController&>(*root);
    if (screen.isViewLoaded()) screen.resetScreen(this);
    screen.setFractalType(fractalType);
    if (palette) screen.setFractalColoring(*palette);
    if (screen.presentedViewController()) screen.dismissViewControllerAnimated(false);
}

void iOSAppDelegate::resetCrap() {
    const std::shared_ptr<UIViewController> root = _window ? _window->rootViewController() : nullptr;
    if (auto* screen = dynamic_cast<GameViewController*>(root.get())) screen->resetCrap();
}
