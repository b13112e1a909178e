// Services, launch, and the loop that rests while nothing can be seen.
// A page is never torn down in order: what is made here lives until the tab closes.
#include "hosts/web/web_host.h"

#include <algorithm>
#include <cmath>
#include <emscripten/html5.h>
#include <string_view>
#include <utility>

#include "hosts/native/held_log.h"
#include "hosts/web/web_canvas_provider.h"
#include "hosts/web/web_image_codec.h"
#include "hosts/web/web_page.h"
#include "hosts/web/web_preferences_store.h"
#include "hosts/web/web_resources.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_locale.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_notification_center.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/gl/screen_compositor.h"
#include "platform/ui/text_measure.h"
#include "platform/ui/ui_screen.h"
#include "platform/ui/ui_view_controller.h"

namespace {

int32_t pixels(CGFloat points, double scale) {
    return static_cast<int32_t>(std::lround(points * scale));
}

std::optional<std::string> readResource(const std::string& file) {
    const auto text = webResource(file);
    return text ? std::optional(std::string(*text)) : std::nullopt;
}

void putServicesInPlace() {
    NSLogSetSink([](std::string_view line) { WebPage::log(line); });
    NSBundle::mainBundle().setReader(readResource);
    setSharedCanvasProvider(std::make_shared<WebCanvasProvider>());
    setSharedImageCodec(std::make_shared<WebImageCodec>());
    NSLocale::setCurrentLocale(localeOfLanguages(WebPage::languages()));
    NSUserDefaults::setStandardStore(std::make_shared<WebPreferencesStore>());
}

}  // namespace

/// The compositor, and beside it the mirror, which changes only when the overlay does.
class WebHost::Presenter : public FramePresenter {
  public:
    explicit Presenter(AccessibilityMirror& mirror) : _mirror(mirror) {}

    void presentFrame(UIWindow& window, double time, bool overlayChanged) override {
        _compositor->presentFrame(window, time, overlayChanged);
        // Views have no places before the second frame.
        if (!std::exchange(_presentedOnce, true)) return;
        if (overlayChanged) _mirror.noteChange();
        _mirror.update(window, time);
    }

    void contextLost(UIWindow& window) override { _compositor->contextLost(window); }

  private:
    std::unique_ptr<FramePresenter> _compositor = makeScreenCompositor();
    AccessibilityMirror& _mirror;
    bool _presentedOnce = false;
};

WebHost::WebHost(std::unique_ptr<WebHostClient> client) : _client(std::move(client)) {
    WebPage::reportCrashes();
    putServicesInPlace();
    setSharedGLSurface(&_surface);
    setSharedShareDestinations(_share);
    setSharedScreenCapture(_capture);
    setSharedHTTPClient(_network);
    const CGSize size = WebPage::size();
    const double scale = WebPage::scale();
    _surface.setPixelSize(pixels(size.width, scale), pixels(size.height, scale));
    UIScreen::mainScreen().setSizeAndScale(size, scale);
    _application = std::make_unique<UIApplication>(_client->makeDelegate(), &_window,
                                                   std::make_unique<Presenter>(_mirror));
}

void WebHost::start() {
    // Asked before the app draws into it: calls without a context end the program.
    if (!_surface.createContext()) return fail(withoutOpenGL(_surface.lastError()));
    if (_surface.isLost()) return fail("the WebGL context was lost at the start");
    const std::string failure = launch();
    if (!failure.empty()) return fail(failure);
    _running = true;
    requestFrames();
}

/// Answers why the app cannot run; "" if it does.
std::string WebHost::launch() {
    HeldLog log(true);
    if (!_application->launch()) return damagedResources(log);
    if (!_surface.hasContext()) return withoutOpenGL(_surface.lastError());
    log.release();
    return {};
}

void WebHost::fail(const std::string& reason) {
    _running = false;
    WebPage::failed(reason);
}

bool WebHost::handle(const HostEvent& event) {
    if (const auto* press = std::get_if<HostKeyPress>(&event)) {
        _mirror.hurry();
        // The page counts a step back as taken. Where the app stays, it is told so with the next frame.
        if (press->key == HostKey::back && _toldStepsBack > 0) --_toldStepsBack;
    }
    return _application->handle(event);
}

void WebHost::resize(CGSize points, double scale) {
    _surface.setPixelSize(pixels(points.width, scale), pixels(points.height, scale));
    handle(HostResize{points, scale});
    // The new size has emptied the canvas, and the browser may show it before the next frame comes.
    if (_startTold && drawsFrames() && !_surface.isLost()) drawFrame(_lastFrame);
}

void WebHost::setVisible(bool visible) {
    handle(HostVisibility{visible});
    requestFrames();
}

void WebHost::fontsArrived() {
    NSNotificationCenter::defaultCenter().postNotificationName(UIContentSizeCategoryDidChangeNotification);
    if (const auto window = _application->delegate()->window()) window->overlayNeedsDisplay();
}

void WebHost::contextLost() {
    _contextLost = true;
}

void WebHost::contextRestored() {
    if (!std::exchange(_contextLost, false)) return;
    _surface.destroyContext();
    handle(HostContextLost{});
    if (!_surface.hasContext()) return fail(withoutOpenGL(_surface.lastError()));
    requestFrames();
}

HostTime WebHost::eventTime(double milliseconds) {
    if (std::isfinite(milliseconds)) _lastEvent = std::max(_lastEvent, milliseconds / 1000);
    return _lastEvent;
}

void WebHost::requestFrames() {
    if (_framesRequested || !drawsFrames()) return;
    _framesRequested = true;
    emscripten_request_animation_frame_loop(&WebHost::frameCalled, this);
}

EM_BOOL WebHost::frameCalled(double milliseconds, void* host) {
    auto& self = *static_cast<WebHost*>(host);
    // The browser may draw once more before it tells of the loss.
    if (self._surface.isLost()) self.contextLost();
    self._framesRequested = self.drawsFrames();
    if (!self._framesRequested) return EM_FALSE;
    self.drawFrame(milliseconds / 1000);
    return EM_TRUE;
}

void WebHost::drawFrame(HostTime time) {
    _lastFrame = std::max(_lastFrame, time);
    _application->frame(_lastFrame);
    if (!_startTold && _surface.presentedFrames() > 0) {
        _startTold = true;
        WebPage::started();
    }
    _client->frameShown(_application->time());
    tellStepsBack();
}

void WebHost::tellStepsBack() {
    const auto window = _application->delegate()->window();
    std::size_t steps = 0;
    for (auto screen = window ? window->rootViewController() : nullptr; screen;
         screen = screen->presentedViewController())
        steps += screen->stepsBack();
    if (steps == _toldStepsBack) return;
    _toldStepsBack = steps;
    WebPage::stepsBack(static_cast<int>(steps));
}
