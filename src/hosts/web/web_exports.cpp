// The page's events, under names that JavaScript knows, as events of the app.
// Values are the page's own: places in points of the app, times in the browser's milliseconds.
#include "hosts/web/web_exports.h"

#include <cstdint>
#include <emscripten/emscripten.h>
#include <string>

#include "hosts/web/dom_key.h"
#include "hosts/web/web_host.h"
#include "hosts/web/web_page.h"

namespace {

WebHost* exportedHost = nullptr;

void hand(const HostEvent& event) {
    if (exportedHost) exportedHost->handle(event);
}

HostTime secondsOf(double milliseconds) {
    return exportedHost ? exportedHost->eventTime(milliseconds) : 0;
}

/// The app would find nothing to paste: the text comes with the browser's own event, if the key is left to
/// it.
bool isPaste(const HostKeyPress& press) {
    return press.control && press.text == "v";
}

}  // namespace

void setExportedWebHost(WebHost* host) {
    exportedHost = host;
}

extern "C" {

EMSCRIPTEN_KEEPALIVE void zentaroResize(double width, double height, double scale) {
    if (exportedHost) exportedHost->resize({width, height}, scale);
}

EMSCRIPTEN_KEEPALIVE void zentaroPointer(int phase, double id, double x, double y, double time) {
    if (phase < 0 || phase > static_cast<int>(UITouchPhase::cancelled)) return;
    hand(HostTouch{static_cast<UITouchPhase>(phase), static_cast<int64_t>(id), {x, y}, secondsOf(time)});
}

EMSCRIPTEN_KEEPALIVE void zentaroWheel(double x, double y, double steps, double time) {
    hand(HostWheel{{x, y}, steps, secondsOf(time)});
}

EMSCRIPTEN_KEEPALIVE void zentaroMagnify(double x, double y, double factor, double time) {
    hand(HostMagnify{{x, y}, factor, secondsOf(time)});
}

EMSCRIPTEN_KEEPALIVE int zentaroKey(const char* key, int repeated, int control, double time) {
    const auto press = keyPressFromDOM(key, repeated != 0, control != 0, secondsOf(time));
    if (!press || isPaste(*press)) return 0;
    return exportedHost && exportedHost->handle(*press) ? 1 : 0;
}

EMSCRIPTEN_KEEPALIVE void zentaroVisibility(int visible) {
    if (exportedHost) exportedHost->setVisible(visible != 0);
}

EMSCRIPTEN_KEEPALIVE void zentaroActive(int active) {
    hand(active != 0 ? HostLifecycle::didBecomeActive : HostLifecycle::willResignActive);
}

EMSCRIPTEN_KEEPALIVE void zentaroTerminate() {
    hand(HostLifecycle::willTerminate);
}

EMSCRIPTEN_KEEPALIVE void zentaroOrientation(int orientation) {
    if (orientation < 0 || orientation > static_cast<int>(UIDeviceOrientation::landscapeRight)) return;
    hand(HostOrientation{static_cast<UIDeviceOrientation>(orientation)});
}

EMSCRIPTEN_KEEPALIVE void zentaroOpenLink(const char* text) {
    hand(HostOpenLink{text});
}

EMSCRIPTEN_KEEPALIVE void zentaroOpenPicture(const char* name) {
    hand(HostOpenPicture{name, readPictureTexts(WebPage::pictureBytes)});
}

EMSCRIPTEN_KEEPALIVE void zentaroShared(int number, int isDone, const char* message) {
    if (exportedHost) exportedHost->shareAnswered(number, {isDone != 0, message});
}

EMSCRIPTEN_KEEPALIVE void zentaroActivate(int id) {
    if (exportedHost) exportedHost->activate(id);
}

EMSCRIPTEN_KEEPALIVE void zentaroReached(int id) {
    if (exportedHost) exportedHost->reached(id);
}

EMSCRIPTEN_KEEPALIVE void zentaroReduceMotion(int reduce) {
    hand(HostReduceMotion{reduce != 0});
}

/// Texts that were drawn without them are drawn anew.
EMSCRIPTEN_KEEPALIVE void zentaroFontsArrived() {
    if (exportedHost) exportedHost->fontsArrived();
}

/// Of the app's own edges, in points.
EMSCRIPTEN_KEEPALIVE void zentaroInsets(double top, double right, double bottom, double left) {
    hand(HostSafeArea{{top, left, bottom, right}});
}

EMSCRIPTEN_KEEPALIVE void zentaroContextLost() {
    if (exportedHost) exportedHost->contextLost();
}

EMSCRIPTEN_KEEPALIVE void zentaroContextRestored() {
    if (exportedHost) exportedHost->contextRestored();
}

EMSCRIPTEN_KEEPALIVE void zentaroRecordingEnded(const char* failure, int hasFilm) {
    if (exportedHost) exportedHost->capture().ended(failure, hasFilm != 0);
}

EMSCRIPTEN_KEEPALIVE void zentaroFetched(int number, int status, int error, const char* reason, double size) {
    if (exportedHost)
        exportedHost->network().answered(number, status, error, reason, static_cast<std::size_t>(size));
}

EMSCRIPTEN_KEEPALIVE void zentaroPreviewFinished() {
    if (exportedHost) exportedHost->capture().previewFinished();
}

}  // extern "C"
