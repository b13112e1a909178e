// The page's canvas as a GL surface: one WebGL 1 context.
// A lost context takes all drawing with it until the browser gives it back; the host waits for that.
#pragma once

#include <emscripten/html5_webgl.h>

#include "platform/gl/frame_interval_cost.h"
#include "platform/host/gl_surface.h"

class WebSurface : public GLSurface {
  public:
    WebSurface() = default;
    ~WebSurface() override;
    WebSurface(const WebSurface&) = delete;
    WebSurface& operator=(const WebSurface&) = delete;

    bool createContext() override;
    void destroyContext() override;
    bool makeCurrent() override;
    void clearCurrent() override;
    std::string lastError() const override { return _error; }

    uint32_t screenFramebuffer() override { return 0; }
    int32_t pixelWidth() const override { return _width; }
    int32_t pixelHeight() const override { return _height; }
    /// The browser shows what was drawn when the frame's callback returns.
    void present() override;
    bool tellsFrameCost() const override { return true; }
    std::optional<double> frameCost() const override { return _cost.cost(); }

    bool hasContext() const { return _context > 0; }
    /// Whether the context there is has been taken away; nothing may be made in it until it is given back.
    bool isLost() const { return hasContext() && emscripten_is_webgl_context_lost(_context); }
    /// The page has given its canvas this size.
    void setPixelSize(int32_t width, int32_t height);
    /// Frames shown so far.
    int64_t presentedFrames() const { return _presented; }

  private:
    EMSCRIPTEN_WEBGL_CONTEXT_HANDLE _context = 0;
    std::string _error;
    int32_t _width = 0;
    int32_t _height = 0;
    int64_t _presented = 0;
    FrameIntervalCost _cost;
};
