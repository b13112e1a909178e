// The desktop's loop: events in, frames out, waiting while there is nothing to show.
// The order of the tear-down matters: the app and its GL objects go before the context and the window.
#include "hosts/desktop/desktop_host.h"

#include <SDL.h>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "hosts/desktop/desktop_share.h"
#include "hosts/desktop/desktop_window.h"
#include "hosts/desktop/frame_pacer.h"
#include "hosts/desktop/link_socket.h"
#include "hosts/desktop/sdl_event_translator.h"
#include "hosts/desktop/x11_errors.h"
#include "hosts/native/held_log.h"
#include "hosts/native/picture_file_reader.h"
#include "platform/foundation/ca_display_link.h"
#include "platform/foundation/file_url.h"
#include "platform/foundation/ns_log.h"
#include "platform/gl/screen_compositor.h"
#include "platform/ui/ui_screen.h"

namespace {

using MakeDelegate = std::function<std::shared_ptr<UIApplicationDelegate>()>;

/// SDL's video for as long as it lives.
class SdlVideo {
  public:
    explicit SdlVideo(const std::string& identifier) {
        SDL_SetHint(SDL_HINT_APP_NAME, "Zentaro");
        setenv("SDL_VIDEO_X11_WMCLASS", identifier.c_str(), 0);
        setenv("SDL_VIDEO_WAYLAND_WMCLASS", identifier.c_str(), 0);
        SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
        SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
        // Desktops that compose windows go on composing the others.
        SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
        // Without this list SDL ends up with drivers that show nothing; SDL_VIDEODRIVER still overrules it.
        // Wayland needs a runtime folder, and complains on stderr where there is none.
        SDL_SetHint(SDL_HINT_VIDEODRIVER, std::getenv("XDG_RUNTIME_DIR") != nullptr ? "x11,wayland" : "x11");
        _works = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
    }
    ~SdlVideo() { SDL_Quit(); }
    SdlVideo(const SdlVideo&) = delete;
    SdlVideo& operator=(const SdlVideo&) = delete;

    bool works() const { return _works; }

  private:
    bool _works = false;
};

/// Seconds since its making; SDL's own times are brought onto it.
class HostClock {
  public:
    HostTime now() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
    }
    /// SDL's events have the low half of its tick count, in milliseconds, which wraps after 49 days. The same
    /// tick is always the same time: events in their order have times in that order.
    HostTime ofTicks(uint32_t ticks) const {
        const uint64_t now = SDL_GetTicks64();
        const uint64_t whole = now - static_cast<uint32_t>(static_cast<uint32_t>(now) - ticks);
        return (static_cast<double>(whole) - static_cast<double>(_startTicks)) / 1000;
    }

  private:
    std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
    uint64_t _startTicks = SDL_GetTicks64();
};

class DesktopLoop {
  public:
    DesktopLoop(DesktopWindow& window, UIApplication& application, const DesktopOptions& options)
        : _window(window),
          _application(application),
          _verbose(options.verbose),
          _begun(options.begun),
          _pacer(1 / window.refreshRate()),
          _links(options.linkFolder) {
        takePaceOfDisplay();
    }

    void run() {
        while (!_window.quitRequested()) {
            takeEvents();
            if (_window.quitRequested() || !_application.isVisible()) continue;
            const HostTime begun = _clock.now();
            _application.frame(begun);
            reportFirstFrame();
            std::this_thread::sleep_for(
                std::chrono::duration<double>(_pacer.pauseAfter(begun, _clock.now())));
        }
        _application.handle(HostLifecycle::willTerminate);
    }

  private:
    /// Everything that waits; while the window is hidden, waits for something.
    void takeEvents() {
        SDL_Event event;
        if (!_application.isVisible()) {
            if (SDL_WaitEventTimeout(&event, kHiddenWait) != 0) take(event);
            _pacer.restart();
        }
        while (SDL_PollEvent(&event) != 0)
            take(event);
        // A link for an app that leaves would be lost: its giver opens it.
        if (_window.quitRequested()) return;
        for (std::string& link : _links.take()) {
            _window.bringToFront();
            if (const auto path = pathOfFileURL(link)) {
                openPicture(*path);
            } else {
                handle(HostOpenLink{std::move(link)});
            }
        }
    }

    void takePaceOfDisplay() {
        const double rate = _window.refreshRate();
        _pacer = FramePacer(1 / rate);
        NSRunLoop::currentRunLoop().setRefreshInterval(NSRunLoop::refreshIntervalOf(rate));
    }

    void take(const SDL_Event& event) {
        if (event.type == SDL_WINDOWEVENT) {
            _window.updateSize();
            if (event.window.event == SDL_WINDOWEVENT_DISPLAY_CHANGED) takePaceOfDisplay();
        }
        _events.clear();
        _translator.translate(event, _window.geometry(), _clock.ofTicks(event.common.timestamp), _events);
        for (const HostEvent& one : _events)
            handle(one);
        if (event.type == SDL_DROPFILE && event.drop.file != nullptr) openPicture(event.drop.file);
        if (event.type == SDL_DROPTEXT || event.type == SDL_DROPFILE) SDL_free(event.drop.file);
    }

    void openPicture(const std::string& path) {
        const auto read = readPictureFile(path);
        if (const auto* picture = std::get_if<HostOpenPicture>(&read)) return handle(*picture);
        NSLog("%s", std::get<std::string>(read).c_str());
    }

    void handle(const HostEvent& event) {
        if (_verbose) NSLog("event %s", describe(event).c_str());
        _application.handle(event);
    }

    void reportFirstFrame() {
        if (!_verbose || _firstFrameReported || _window.presentedFrames() == 0) return;
        _firstFrameReported = true;
        const auto sinceStart = std::chrono::steady_clock::now() - _begun;
        NSLog("first frame after %.1f ms", std::chrono::duration<double, std::milli>(sinceStart).count());
    }

    /// Milliseconds between two looks for links while the window is hidden.
    static constexpr int kHiddenWait = 200;

    DesktopWindow& _window;
    UIApplication& _application;
    bool _verbose;
    std::chrono::steady_clock::time_point _begun;
    FramePacer _pacer;
    HostClock _clock;
    SdlEventTranslator _translator;
    std::vector<HostEvent> _events;
    bool _firstFrameReported = false;
    LinkSocket _links;
};

/// SDL's clipboard holds text alone; under Wayland only windows that have the focus may set it.
std::unique_ptr<X11Clipboard> clipboardForPictures() {
    return std::string_view(SDL_GetCurrentVideoDriver()) == "x11" ? X11Clipboard::connect() : nullptr;
}

/// What the app finds through its shared accessors, for as long as it runs.
class SharedServices {
  public:
    explicit SharedServices(DesktopWindow& window) {
        setSharedGLSurface(&window);
        setSharedShareDestinations(std::make_shared<DesktopShare>(window, clipboardForPictures()));
    }
    ~SharedServices() {
        setSharedShareDestinations(nullptr);
        setSharedGLSurface(nullptr);
    }
    SharedServices(const SharedServices&) = delete;
    SharedServices& operator=(const SharedServices&) = delete;
};

DesktopResult runInWindow(DesktopWindow& window, const DesktopOptions& options,
                          const MakeDelegate& makeDelegate) {
    const SharedServices services(window);
    const WindowGeometry geometry = window.geometry();
    UIScreen::mainScreen().setSizeAndScale(geometry.size, geometry.scale);
    HeldLog log(!options.verbose);
    UIApplication application(makeDelegate(), &window, makeScreenCompositor());
    if (!application.launch()) return {DesktopEnd::failed, damagedResources(log)};
    if (!window.hasContext()) return {DesktopEnd::failed, withoutOpenGL(window.lastError())};
    log.release();
    if (options.opening) application.handle(*options.opening);
    DesktopLoop(window, application, options).run();
    return {};
}

}  // namespace

DesktopResult runDesktop(const DesktopOptions& options, const MakeDelegate& makeDelegate) {
    const SdlVideo video(options.identifier);
    if (!video.works()) return {DesktopEnd::noDisplay, "no display: neither X11 nor Wayland answers"};
    surviveX11Errors();
    DesktopWindow window({options.size, options.scale, options.fullscreen});
    return runInWindow(window, options, makeDelegate);
}
