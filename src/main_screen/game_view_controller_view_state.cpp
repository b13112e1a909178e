// View state: what is looked at, how it is kept, reset and moved.
// Every change of a setting is saved at once; the rectangle never is.
#include "main_screen/deep_link_delegate.h"
#include "main_screen/game_view_controller.h"
#include "main_screen/link_host.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/ui/ui_application.h"

namespace {

constexpr int64_t palettesOfTheButton = 6;
constexpr float largestJump = 10;  // plane units

UIApplicationDelegate* applicationDelegate() {
    UIApplication* application = UIApplication::sharedApplication();
    return application ? application->delegate().get() : nullptr;
}

bool isApplicationDelegate(GameViewController::Sender sender) {
    return sender && dynamic_cast<const KeyValueCoding*>(applicationDelegate()) == sender;
}

}  // namespace

void GameViewController::save(const std::string& key, int32_t value) {
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setInteger(value, key);
    defaults.synchronize();
}

CGRect GameViewController::rectifiedBoundsFor(CGRect r) const {
    return fitToAspect(r, texture_width, texture_height);
}

void GameViewController::resetScreen(Sender sender) {
    const auto* links = dynamic_cast<DeepLinkDelegate*>(applicationDelegate());
    const CGRect wanted = links && isApplicationDelegate(sender) ? links->launchRect() : sourceBounds;
    const CGRect fitted = rectifiedBoundsFor(wanted);
    if (snapshots) {
        _shader->setFractalBounds(fitted);
        return;
    }
    const std::lock_guard guard(_shader->lock());
    _targets.clear();
    stopTweens();
    _shader->setFractalBounds(fitted);
}

bool GameViewController::jumpTox1(float x1, float y1, float x2, float y2, int32_t /*fracType*/,
                                  int32_t color) {
    const float w = x2 - x1;
    if (!(w > 0)) return false;
    const float h = y2 - y1;
    if (!(h < largestJump && w < largestJump)) return false;
    if (!(h > 0)) return false;
    const CGRect fitted = rectifiedBoundsFor(CGRectMake(static_cast<double>(x1), static_cast<double>(y1),
                                                        static_cast<double>(w), static_cast<double>(h)));
    _shader->setFractalBounds(fitted);
    _shader->setFractalColoring(color);
    return true;
}

std::string GameViewController::coordinatesForDeeplink(CGRect r) const {
    return "http://" + linkHost() + deepLinkPath(_fractalType, r);
}

void GameViewController::loadURL(const std::string& url) {
    auto* links = dynamic_cast<DeepLinkDelegate*>(applicationDelegate());
    const bool loaded = links && links->loadDeeplink(NSURL::URLWithString(url));
    NSLog("loaded '%s': %s", url.c_str(), loaded ? "YES" : "NO");
}

void GameViewController::setFractalType(int32_t fractalType) {
    _fractalType = fractalType;
    if (_shader) _shader->setFractalType(fractalType);
    save("fractalType", fractalType);
}

void GameViewController::setFractalColoring(int32_t palette) {
    fractalColoring = palette;
    if (_shader) _shader->setFractalColoring(palette);
    save("fractalColoring", palette);
}

void GameViewController::toggleFractal(Sender) {
    setFractalType(_fractalType == FractalType::julia ? FractalType::mandelbrot : FractalType::julia);
}

void GameViewController::toggleColoring(Sender) {
    // Wider than the field: a settings file may hold its largest value.
    setFractalColoring(static_cast<int32_t>((int64_t{fractalColoring} + 1) % palettesOfTheButton));
}

void GameViewController::toggleColorCycling(Sender) {
    switch (fractalColorCycling) {
        case 0:
            fractalColorCycling = 1;
            break;
        case 1:
            fractalColorCycling = 4;
            break;
        default:
            fractalColorCycling = 0;
    }
    setColorCyclingButtonTitleForCycling(fractalColorCycling);
    _shader->setFractalColorCycling(fractalColorCycling);
    save("fractalColorCycling", fractalColorCycling);
}

void GameViewController::setColorCyclingButtonTitleForCycling(int32_t) {
    if (!colorCyclingButton) return;
    switch (fractalColorCycling) {
        case 0:
            colorCyclingButton->setTitle("0");
            break;
        case 1:
            colorCyclingButton->setTitle("1");
            break;
        default:
            colorCyclingButton->setTitle("2");
    }
}

void GameViewController::resetCrap() {
    snapshots = true;
    if (const auto view = glkView()) view->setRetainedBacking(true);
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setInteger(0, "fractalColoring");
    defaults.setInteger(0, "fractalType");
    defaults.setInteger(0, "fractalColorCycling");
    defaults.setBool(true, "MPCoachMarksShown");
    defaults.synchronize();
    fractalColorCycling = 0;
    fractalColoring = 0;
    setFractalType(0);
    _shader->setFractalType(_fractalType);
    _shader->setFractalColorCycling(fractalColorCycling);
    _shader->setFractalColoring(fractalColoring);
}

void GameViewController::copyStateToShader() {
    _shader->setFractalType(_fractalType);
    _shader->setFractalColoring(fractalColoring);
    _shader->setFractalColorCycling(fractalColorCycling);
}
