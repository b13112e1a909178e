// The headless host: the whole app without a display, on a clock that moves only when told to.
// The command line's pictures are drawn by it, and tests play whole scenarios on it, the same way each time.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/headless/headless_surface.h"
#include "hosts/headless/scripted_capture.h"
#include "hosts/headless/scripted_window.h"
#include "hosts/native/native_services.h"
#include "platform/host/preferences_store.h"
#include "platform/ui/ui_application.h"

class HeadlessHost {
  public:
    using MakeDelegate = std::function<std::shared_ptr<UIApplicationDelegate>()>;

    struct Options {
        CGSize size{1280, 720};  ///< points
        double scale = 1;        ///< pixels per point
        /// Null: settings that live and die with the host.
        std::shared_ptr<PreferencesStore> preferences = nullptr;
        std::string resourceFolder = {};  ///< empty: the program's own
        /// NO: time passes and the app acts, and nothing is put on the screen.
        bool showsFrames = true;
        /// Whether there is a recorder, which films nothing.
        bool canRecord = true;
    };

    /// Puts the shared services in place (GL surface, canvases, pictures, resources, settings, clock); the
    /// destructor takes them away, so that hosts can follow one another. There is at most one at a time.
    HeadlessHost(const Options& options, const MakeDelegate& makeDelegate);
    ~HeadlessHost();
    HeadlessHost(const HeadlessHost&) = delete;
    HeadlessHost& operator=(const HeadlessHost&) = delete;

    /// Starts the app. NO if its delegate refused; without OpenGL it starts, and draws nothing.
    bool launch();
    bool hasOpenGL() const { return _surface.hasContext(); }
    /// Why there is no OpenGL.
    std::string openGLError() const { return _surface.lastError(); }

    UIApplication& application() { return *_application; }
    HeadlessSurface& surface() { return _surface; }
    const ScriptedWindow& window() const { return _window; }
    ScriptedCapture& capture() { return *_capture; }

    /// Seconds on the host's clock, the wall clock that the app sees included.
    HostTime time() const { return *_time; }
    void handle(const HostEvent& event);
    /// Lets the time pass, then draws one frame.
    void step(double seconds = kFrame);
    /// Frames of 1/60 s for that long.
    void play(double seconds);
    static constexpr double kFrame = 1.0 / 60;

    /// A finger lands and lifts within one frame's time; points.
    void tap(CGPoint point);
    /// Where one finger goes.
    struct Way {
        int64_t finger = 0;
        CGPoint to;
    };

    void land(int64_t finger, CGPoint point);
    /// Fingers that lie on the screen go in straight lines at once, one move a frame, for that long.
    void slide(const std::vector<Way>& ways, double seconds);
    /// Where it is, without a frame.
    void lift(int64_t finger);
    /// A finger lands, goes to another point for that long, and lifts without stopping.
    void drag(CGPoint from, CGPoint to, double seconds, int64_t finger = 1);
    /// Two fingers side by side, that far apart, come to another distance and lift without stopping.
    void pinch(CGPoint middle, CGFloat from, CGFloat to, double seconds);
    void wheel(CGPoint point, double steps);
    void magnify(CGPoint point, double factor);
    void press(HostKey key);
    /// Each character as a key press.
    void type(std::string_view text);
    void resize(CGSize points, double scale = 1);
    /// The GL context dies with all its objects, as on a phone that needed it elsewhere.
    void loseContext();

    /// What the screen shows, pixels of rgba8888; null before the first frame or without OpenGL.
    CGImageRef screenPicture() { return _surface.read(); }

    /// Every event and every passing of time so far, one a line: what a failing scenario prints.
    std::string script() const;

  private:
    void touch(UITouchPhase phase, int64_t finger, CGPoint point);
    void record(std::string line);

    struct ScriptLine {
        std::string line;
        int64_t times;
    };

    /// Shared with the clock that the app reads.
    std::shared_ptr<HostTime> _time = std::make_shared<HostTime>(0);
    NativeServices _services;
    HeadlessSurface _surface;
    ScriptedWindow _window;
    std::shared_ptr<ScriptedCapture> _capture;
    std::vector<ScriptLine> _script;
    /// The fingers on the screen.
    std::map<int64_t, CGPoint> _fingers;
    std::unique_ptr<UIApplication> _application;
};
