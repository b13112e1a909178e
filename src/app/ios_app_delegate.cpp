// Launch: idle timer off, no link yet, and the window with the storyboard's main screen.
// Classes that the storyboard names are registered here, so that the framework knows none of them.
#include "app/ios_app_delegate.h"

#include "main_screen/game_view_controller.h"
#include "platform/gl/glk_view.h"
#include "platform/ui/ui_screen.h"
#include "platform/ui/ui_storyboard.h"
#include "screens/swallow_touches_view.h"

bool iOSAppDelegate::applicationDidFinishLaunching() {
    if (UIApplication* application = UIApplication::sharedApplication())
        application->setIdleTimerDisabled(true);
    _launchRect = CGRectNull;

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

bool iOSAppDelegate::loadDeeplink(const std::string&) {
    return false;
}

void iOSAppDelegate::resetCrap() {
    if (auto* screen = dynamic_cast<GameViewController*>(_window->rootViewController().get()))
        screen->resetCrap();
}
