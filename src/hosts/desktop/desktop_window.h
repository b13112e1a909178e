// The desktop's window with its OpenGL ES 2.0 context, by way of SDL.
// It is both the surface that the app draws to and what the app may ask of its window.
#pragma once

#include <SDL_video.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/desktop/sdl_event_translator.h"
#include "hosts/native/background_work.h"
#include "platform/host/gl_surface.h"
#include "platform/host/window_control.h"

class DesktopWindow : public GLSurface, public WindowControl {
  public:
    struct Options {
        CGSize size{1280, 720};  ///< points
        /// Pixels per point; absent: as many as a window coordinate of the system has.
        std::optional<double> scale;
        bool fullscreen = false;
    };

    /// SDL's video is running. Where no window for OpenGL can be had there is none, createContext() answers
    /// NO, and lastError() says why.
    explicit DesktopWindow(const Options& options);
    ~DesktopWindow() override;
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;

    bool createContext() override;
    void destroyContext() override;
    bool makeCurrent() override;
    void clearCurrent() override;
    std::string lastError() const override { return _error; }
    uint32_t screenFramebuffer() override { return 0; }
    int32_t pixelWidth() const override { return _pixelWidth; }
    int32_t pixelHeight() const override { return _pixelHeight; }
    void present() override;

    bool isFullscreen() const override;
    void setFullscreen(bool fullscreen) override;
    void setIdleTimerDisabled(bool disabled) override;
    std::string clipboardText() override;
    void setClipboardText(const std::string& text) override;
    void openURL(const std::string& url, std::function<void(bool opened)> opened) override;
    void requestQuit() override { _quitRequested = true; }

    bool hasContext() const { return _context != nullptr; }
    bool quitRequested() const { return _quitRequested; }
    /// Frames shown so far.
    int64_t presentedFrames() const { return _presented; }
    /// In front of the others, no longer minimised.
    void bringToFront();
    /// Asks SDL how large the window is now; for when it says that this changed.
    void updateSize();
    WindowGeometry geometry() const;
    /// Refreshes per second of the display that shows the window; 60 where it does not say.
    double refreshRate() const;

  private:
    struct Closer {
        void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    };

    bool checkContext();
    void synchroniseSwaps();

    std::unique_ptr<SDL_Window, Closer> _window;
    SDL_GLContext _context = nullptr;
    std::string _error;
    std::optional<double> _scale;
    int32_t _unitWidth = 0;  ///< SDL window coordinates
    int32_t _pixelWidth = 0;
    int32_t _pixelHeight = 0;
    bool _quitRequested = false;
    int64_t _presented = 0;
    BackgroundWork _openers;
};
