// Window, context and their sizes.
// The system's GLX is left as SDL's way to OpenGL ES where it offers that: with the software rasteriser it
// hands frames to the X server through shared memory, which EGL there does not (a swap takes half the time).
#include "hosts/desktop/desktop_window.h"

#include <GLES2/gl2.h>
#include <SDL.h>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <utility>

#include "hosts/desktop/helper_program.h"
#include "platform/foundation/ns_log.h"

namespace {

/// Room for the toolbar's buttons at a finger's size.
constexpr int kSmallestWidth = 400;
constexpr int kSmallestHeight = 240;
/// Openers that run on after it are taken to have found a program.
constexpr std::chrono::seconds kPatienceWithOpener(3);

void askForOpenGLES2() {
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 0);
}

/// With a scale of the user's own, a window coordinate is taken for a pixel.
int windowUnits(CGFloat points, const std::optional<double>& scale) {
    return static_cast<int>(std::lround(points * scale.value_or(1)));
}

}  // namespace

DesktopWindow::DesktopWindow(const Options& options) : _scale(options.scale) {
    askForOpenGLES2();
    uint32_t flags = SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI;
    if (options.fullscreen) flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    const int width = windowUnits(options.size.width, _scale);
    const int height = windowUnits(options.size.height, _scale);
    _window.reset(
        SDL_CreateWindow("Zentaro", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, width, height, flags));
    _unitWidth = _pixelWidth = width;
    _pixelHeight = height;
    if (!_window) {
        _error = SDL_GetError();
        return;
    }
    SDL_SetWindowMinimumSize(_window.get(), std::min(width, kSmallestWidth),
                             std::min(height, kSmallestHeight));
    updateSize();
}

DesktopWindow::~DesktopWindow() {
    destroyContext();
}

bool DesktopWindow::createContext() {
    destroyContext();
    if (!_window) return false;
    _context = SDL_GL_CreateContext(_window.get());
    if (_context == nullptr) {
        _error = SDL_GetError();
        return false;
    }
    if (!checkContext()) {
        destroyContext();
        return false;
    }
    synchroniseSwaps();
    return true;
}

/// A driver that failed to load may leave a context that answers nothing.
bool DesktopWindow::checkContext() {
    const auto* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    if (version != nullptr && std::strstr(version, "OpenGL ES") != nullptr) return true;
    _error = version == nullptr ? "the driver answers nothing" : std::string("the driver has ") + version;
    return false;
}

/// Adaptive first: a late frame is then shown at once instead of one refresh later. Where nothing is
/// synchronised, the loop keeps the pace.
void DesktopWindow::synchroniseSwaps() {
    if (SDL_GL_SetSwapInterval(-1) != 0) SDL_GL_SetSwapInterval(1);
}

void DesktopWindow::destroyContext() {
    if (_context != nullptr) SDL_GL_DeleteContext(_context);
    _context = nullptr;
}

bool DesktopWindow::makeCurrent() {
    return _context != nullptr && SDL_GL_MakeCurrent(_window.get(), _context) == 0;
}

void DesktopWindow::clearCurrent() {
    if (_window) SDL_GL_MakeCurrent(_window.get(), nullptr);
}

void DesktopWindow::present() {
    SDL_GL_SwapWindow(_window.get());
    ++_presented;
}

bool DesktopWindow::isFullscreen() const {
    return _window && (SDL_GetWindowFlags(_window.get()) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
}

void DesktopWindow::setFullscreen(bool fullscreen) {
    if (!_window || fullscreen == isFullscreen()) return;
    SDL_SetWindowFullscreen(_window.get(), fullscreen ? uint32_t{SDL_WINDOW_FULLSCREEN_DESKTOP} : 0U);
}

void DesktopWindow::setIdleTimerDisabled(bool disabled) {
    if (disabled) {
        SDL_DisableScreenSaver();
    } else {
        SDL_EnableScreenSaver();
    }
}

std::string DesktopWindow::clipboardText() {
    const std::unique_ptr<char, decltype(&SDL_free)> text(SDL_GetClipboardText(), &SDL_free);
    return text ? std::string(text.get()) : std::string();
}

void DesktopWindow::setClipboardText(const std::string& text) {
    if (SDL_SetClipboardText(text.c_str()) != 0) NSLog("cannot copy: %s", SDL_GetError());
}

void DesktopWindow::bringToFront() {
    if (!_window) return;
    if ((SDL_GetWindowFlags(_window.get()) & SDL_WINDOW_MINIMIZED) != 0) SDL_RestoreWindow(_window.get());
    SDL_RaiseWindow(_window.get());
}

void DesktopWindow::updateSize() {
    if (!_window) return;
    int unitHeight = 0;
    SDL_GetWindowSize(_window.get(), &_unitWidth, &unitHeight);
    SDL_GL_GetDrawableSize(_window.get(), &_pixelWidth, &_pixelHeight);
    _unitWidth = std::max(_unitWidth, 1);
    _pixelWidth = std::max(_pixelWidth, 1);
    _pixelHeight = std::max(_pixelHeight, 1);
}

WindowGeometry DesktopWindow::geometry() const {
    const double pixelsPerUnit = static_cast<double>(_pixelWidth) / std::max(_unitWidth, 1);
    const double scale = _scale.value_or(pixelsPerUnit);
    return {{_pixelWidth / scale, _pixelHeight / scale}, scale, pixelsPerUnit / scale};
}

double DesktopWindow::refreshRate() const {
    SDL_DisplayMode mode{};
    if (!_window || SDL_GetWindowDisplayMode(_window.get(), &mode) != 0 || mode.refresh_rate <= 0) return 60;
    return mode.refresh_rate;
}

void DesktopWindow::openURL(const std::string& url, std::function<void(bool)> opened) {
    _openers.run([url, opened = std::move(opened)](const std::stop_token& stop) {
        const ProgramEnd end = runProgram({"xdg-open", url}, kPatienceWithOpener, stop);
        return [opened, end] { opened(end != ProgramEnd::failed); };
    });
}
