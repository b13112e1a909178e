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

constexpr int64_t kFirstFinger = 1;
constexpr int64_t kSecondFinger = 2;

int32_t pixels(CGFloat points, double scale) {
    return static_cast<int32_t>(std::lround(points * scale));
}

/// Leaves the screen as it is. What draws for itself, as snapshots do, still draws.
class HiddenFrames : public FramePresenter {
  public:
    void presentFrame(UIWindow&, double, bool) override {}
    void contextLost(UIWindow& window) override { _compositor->contextLost(window); }

  private:
    std::unique_ptr<FramePresenter> _compositor = makeScreenCompositor();
};

std::unique_ptr<FramePresenter> makePresenter(bool showsFrames) {
    if (showsFrames) return makeScreenCompositor();
    return std::make_unique<HiddenFrames>();
}

}  // namespace

HeadlessHost::HeadlessHost(const Options& options, const MakeDelegate& makeDelegate)
    : _services(options.preferences, options.resourceFolder),
      _surface(pixels(options.size.width, options.scale), pixels(options.size.height, options.scale)),
      _capture(std::make_shared<ScriptedCapture>(options.canRecord)) {
    setSharedGLSurface(&_surface);
    setSharedScreenCapture(_capture);
    CFAbsoluteTimeSetClock([time = _time] { return *time; });
    UIScreen::mainScreen().setSizeAndScale(options.size, options.scale);
    _application =
        std::make_unique<UIApplication>(makeDelegate(), &_window, makePresenter(options.showsFrames));
}

HeadlessHost::~HeadlessHost() {
    _surface.makeCurrent();
    _application.reset();
    setSharedScreenCapture(nullptr);
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

void HeadlessHost::land(int64_t finger, CGPoint point) {
    _fingers[finger] = point;
    touch(UITouchPhase::began, finger, point);
}

void HeadlessHost::slide(const std::vector<Way>& ways, double seconds) {
    const std::map<int64_t, CGPoint> start = _fingers;
    const auto moves = std::max<int64_t>(1, std::llround(seconds / kFrame));
    for (int64_t i = 1; i <= moves; ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(moves);
        step();
        for (const auto& [finger, to] : ways) {
            const CGPoint from = start.at(finger);
            _fingers[finger] = {from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part};
            touch(UITouchPhase::moved, finger, _fingers[finger]);
        }
    }
}

void HeadlessHost::lift(int64_t finger) {
    touch(UITouchPhase::ended, finger, _fingers.at(finger));
    _fingers.erase(finger);
}

void HeadlessHost::tap(CGPoint point) {
    land(kFirstFinger, point);
    step();
    lift(kFirstFinger);
    step();
}

void HeadlessHost::drag(CGPoint from, CGPoint to, double seconds, int64_t finger) {
    land(finger, from);
    slide({{finger, to}}, seconds);
    lift(finger);
    step();
}

void HeadlessHost::pinch(CGPoint middle, CGFloat from, CGFloat to, double seconds) {
    land(kFirstFinger, {middle.x - from / 2, middle.y});
    land(kSecondFinger, {middle.x + from / 2, middle.y});
    slide({{kFirstFinger, {middle.x - to / 2, middle.y}}, {kSecondFinger, {middle.x + to / 2, middle.y}}},
          seconds);
    lift(kFirstFinger);
    lift(kSecondFinger);
    step();
}

void HeadlessHost::wheel(CGPoint point, double steps) {
    handle(HostWheel{point, steps, *_time});
}

void HeadlessHost::magnify(CGPoint point, double factor) {
    handle(HostMagnify{point, factor, *_time});
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
