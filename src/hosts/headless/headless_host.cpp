// Services, time and scripted input.
// The app goes before the surface that it draws to, and the services after both.
#include "hosts/headless/headless_host.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/foundation/cf_time.h"
#include "platform/gl/screen_compositor.h"
#include "platform/ui/ui_screen.h"

namespace {

constexpr int64_t kTapFinger = 1;

int32_t pixels(CGFloat points, double scale) {
    return static_cast<int32_t>(std::lround(points * scale));
}

}  // namespace

HeadlessHost::HeadlessHost(const Options& options, const MakeDelegate& makeDelegate)
    : _services(options.preferences, options.resourceFolder),
      _surface(pixels(options.size.width, options.scale), pixels(options.size.height, options.scale)) {
    setSharedGLSurface(&_surface);
    CFAbsoluteTimeSetClock([time = _time] { return *time; });
    UIScreen::mainScreen().setSizeAndScale(options.size, options.scale);
    _application = std::make_unique<UIApplication>(makeDelegate(), &_window, makeScreenCompositor());
}

HeadlessHost::~HeadlessHost() {
    _surface.makeCurrent();
    _application.reset();
    setSharedGLSurface(nullptr);
    CFAbsoluteTimeSetClock({});
}

bool HeadlessHost::launch() {
    return _application->launch();
}

void HeadlessHost::handle(const HostEvent& event) {
    record(describe(event));
    if (const auto* resized = std::get_if<HostResize>(&event)) {
        _surface.setPixelSize(pixels(resized->size.width, resized->scale),
                              pixels(resized->size.height, resized->scale));
    }
    _application->handle(event);
}

void HeadlessHost::step(double seconds) {
    *_time += seconds;
    record("step " + std::to_string(seconds));
    _application->frame(*_time);
}

void HeadlessHost::play(double seconds) {
    const auto frames = static_cast<int64_t>(std::llround(seconds / kFrame));
    for (int64_t i = 0; i < frames; ++i) {
        step();
    }
}

void HeadlessHost::touch(UITouchPhase phase, int64_t finger, CGPoint point) {
    handle(HostTouch{phase, finger, point, *_time});
}

void HeadlessHost::tap(CGPoint point) {
    touch(UITouchPhase::began, kTapFinger, point);
    step();
    touch(UITouchPhase::ended, kTapFinger, point);
    step();
}

void HeadlessHost::drag(CGPoint from, CGPoint to, double seconds, int64_t finger) {
    touch(UITouchPhase::began, finger, from);
    const auto moves = std::max<int64_t>(1, std::llround(seconds / kFrame));
    for (int64_t i = 1; i <= moves; ++i) {
        const double way = static_cast<double>(i) / static_cast<double>(moves);
        step();
        touch(UITouchPhase::moved, finger, {from.x + (to.x - from.x) * way, from.y + (to.y - from.y) * way});
    }
    touch(UITouchPhase::ended, finger, to);
    step();
}

void HeadlessHost::press(HostKey key) {
    handle(HostKeyPress{key, "", false, false, *_time});
}

void HeadlessHost::type(std::string_view text) {
    for (const char c : text) {
        handle(HostKeyPress{HostKey::character, std::string(1, c), false, false, *_time});
    }
}

void HeadlessHost::resize(CGSize points, double scale) {
    handle(HostResize{points, scale});
}

void HeadlessHost::loseContext() {
    _surface.destroyContext();
    handle(HostContextLost{});
}

void HeadlessHost::record(std::string line) {
    if (!_script.empty() && _script.back().line == line) {
        ++_script.back().times;
    } else {
        _script.push_back({std::move(line), 1});
    }
}

std::string HeadlessHost::script() const {
    std::string text;
    for (const auto& [line, times] : _script) {
        text += line;
        if (times > 1) text += " (" + std::to_string(times) + " times)";
        text += '\n';
    }
    return text;
}
