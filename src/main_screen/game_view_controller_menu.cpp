// Menu: the toolbar's coming and going, and what its buttons and the keys do.
// Actions are found by name, so that the storyboard, the keys and the command table share them.
#include <algorithm>
#include <string_view>

#include "main_screen/commands.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_application.h"

namespace {

constexpr double showSeconds = 0.75;
constexpr double hideSeconds = 0.5;
constexpr double menuDamping = 1.5;
constexpr double menuVelocity = 2.0;

using Action = void (GameViewController::*)(GameViewController::Sender);

using Button = std::shared_ptr<UIBarButtonItem> GameViewController::*;

struct NamedAction {
    const char* name = "";
    Action action = nullptr;
    /// The button that a key lights up; null for none.
    Button button = nullptr;
};

constexpr NamedAction actions[] = {
    {"resetScreen:", &GameViewController::resetScreen, &GameViewController::xButton},
    {"shareScreen:", &GameViewController::shareScreen, &GameViewController::shareButton},
    {"toggleFractal:", &GameViewController::toggleFractal, &GameViewController::fractalButton},
    {"toggleColoring:", &GameViewController::toggleColoring, &GameViewController::colorButton},
    {"toggleColorCycling:", &GameViewController::toggleColorCycling, &GameViewController::colorCyclingButton},
    {"toggleRecording:", &GameViewController::toggleRecording, &GameViewController::toggleRecordButton},
    {"togglePilot:", &GameViewController::togglePilot},
    {"showAbout:", &GameViewController::showAbout, &GameViewController::infoButton},
    {"moveLeft:", &GameViewController::moveLeft},
    {"moveUp:", &GameViewController::moveUp},
    {"moveDown:", &GameViewController::moveDown},
    {"moveRight:", &GameViewController::moveRight},
    {"zoomIn:", &GameViewController::zoomIn},
    {"zoomOut:", &GameViewController::zoomOut},
    {"copyLink:", &GameViewController::copyLink},
    {"pasteLink:", &GameViewController::pasteLink},
    {"toggleFullscreen:", &GameViewController::toggleFullscreen},
    {"toggleKeyHelp:", &GameViewController::toggleKeyHelp},
    {"toggleDeveloperOverlay:", &GameViewController::toggleDeveloperOverlay},
    {"leave:", &GameViewController::leave},
};

const NamedAction* actionNamed(std::string_view name) {
    const auto* const found = std::find_if(std::begin(actions), std::end(actions),
                                           [name](const NamedAction& each) { return each.name == name; });
    return found == std::end(actions) ? nullptr : found;
}

WindowControl* windowControl() {
    UIApplication* application = UIApplication::sharedApplication();
    return application ? application->windowControl() : nullptr;
}

}  // namespace

bool GameViewController::performAction(const std::string& name,
                                       const std::shared_ptr<KeyValueCoding>& sender) {
    const NamedAction* named = actionNamed(name);
    if (!named) return false;
    (this->*named->action)(sender.get());
    return true;
}

bool GameViewController::keyPressed(const HostKeyPress& press) {
    const bool isAboutTheWindow = press.key == HostKey::f1 || press.key == HostKey::f11;
    if (isTutorialRunning() && !isAboutTheWindow) return guideByKey(press);
    const Command* command = commandForKey(press);
    const NamedAction* named = command ? actionNamed(command->action) : nullptr;
    if (!named) return false;
    if (menuHiding && command->movesView) return true;
    if (const auto item = named->button ? this->*named->button : nullptr) {
        item->sendAction();
    } else {
        (this->*named->action)(nullptr);
    }
    return true;
}

bool GameViewController::keyPressedAbove(const HostKeyPress& press) {
    const Command* command = commandForKey(press);
    return command && command->worksBelow && keyPressed(press);
}

void GameViewController::addShowButtons() {
    _showButtons = std::make_shared<ShowButtonsView>([this] { togglePilot(nullptr); });
    _showButtons->setHidden(!menuHiding);
    view()->addSubview(_showButtons);
}

/// For who does not see it.
void GameViewController::tellStateOfFlight() {
    const char* const paused = tween ? "Fractal, flight paused" : "Fractal";
    view()->setAccessibilityLabel(menuHiding ? "Fractal, autopilot flying" : paused);
}

void GameViewController::showMenu(bool animated) {
    if (!menuHiding) return;
    menuHiding = false;
    tellStateOfFlight();
    _showButtons->setHidden(true);
    menuView->setHidden(false);
    const auto show = [this] { menuView->setAlpha(static_cast<double>(menuAlpha)); };
    if (!animated) {
        show();
        return;
    }
    UIView::animateWithSpring(showSeconds, 0, menuDamping, menuVelocity,
                              UIViewAnimationOptionBeginFromCurrentState, show, [](bool) {});
}

void GameViewController::hideMenu(bool animated) {
    if (menuHiding) return;
    menuHiding = true;
    tellStateOfFlight();
    _showButtons->setHidden(false);
    if (!animated) {
        menuView->setHidden(true);
        menuView->setAlpha(0);
        return;
    }
    UIView::animateWithSpring(
        hideSeconds, 0, menuDamping, menuVelocity, UIViewAnimationOptionBeginFromCurrentState,
        [this] { menuView->setAlpha(0); },
        [menu = std::weak_ptr<UIView>(menuView)](bool finished) {
            if (const auto view = menu.lock(); view && finished) view->setHidden(true);
        });
}

void GameViewController::showAbout(Sender) {
    performSegueWithIdentifier("showAbout", shared_from_this());
}

void GameViewController::copyLink(Sender) {
    if (WindowControl* control = windowControl())
        control->setClipboardText(coordinatesForDeeplink(_shader->fractalBounds()));
}

/// Goes the way of every link from outside.
void GameViewController::pasteLink(Sender) {
    WindowControl* control = windowControl();
    const std::string text = control ? control->clipboardText() : std::string();
    if (!text.empty()) UIApplication::sharedApplication()->handle(HostOpenLink{text});
}

void GameViewController::toggleFullscreen(Sender) {
    if (WindowControl* control = windowControl()) control->setFullscreen(!control->isFullscreen());
}

void GameViewController::toggleKeyHelp(Sender) {
    if (_keyHelp) {
        _keyHelp->removeFromSuperview();
        _keyHelp = nullptr;
        return;
    }
    _keyHelp = std::make_shared<KeyHelpView>(view()->bounds(), [this] { toggleKeyHelp(nullptr); });
    view()->addSubview(_keyHelp);
}

void GameViewController::leave(Sender) {
    WindowControl* control = windowControl();
    if (_keyHelp) {
        toggleKeyHelp(nullptr);
    } else if (control && control->isFullscreen()) {
        control->setFullscreen(false);
    } else if (control) {
        control->requestQuit();
    }
}

bool GameViewController::canPerformUnwindAction(const std::string& name) const {
    return name == "done:";
}

void GameViewController::performUnwindAction(const std::string&, const UIStoryboardSegue& segue) {
    done(segue);
}

void GameViewController::done(const UIStoryboardSegue& segue) {
    NSLog("Popping back to this view controller!");
    if (segue.identifier == "replayIntroduction") showTutorial(this);
}

void GameViewController::updatetextureImage() {
    _textureImageRef =
        CGImageCreate(texture_width, texture_height, 8, 8 * texture_depth, texture_depth * texture_width,
                      _textureColorSpaceRef, _textureProviderRef);
    textureImage = UIImage::imageWithCGImage(_textureImageRef);
    textureImageView->setImage(textureImage);
    view()->setNeedsLayout();
}
