// The screen of the headless host: a framebuffer object in a context without a window.
// Made when it is first drawn to, so that pictures drawn in tiles never pay for a screen of their size.
#pragma once

#include <GLES2/gl2.h>
#include <cstdint>
#include <memory>
#include <string>

#include "hosts/headless/egl_context.h"
#include "platform/graphics/cg_image.h"
#include "platform/host/gl_surface.h"

class HeadlessSurface : public GLSurface {
  public:
    /// Pixels.
    HeadlessSurface(int32_t width, int32_t height) : _width(width), _height(height) {}

    bool createContext() override;
    void destroyContext() override;
    bool makeCurrent() override;
    void clearCurrent() override;
    std::string lastError() const override { return _error; }

    uint32_t screenFramebuffer() override;
    int32_t pixelWidth() const override { return _width; }
    int32_t pixelHeight() const override { return _height; }
    void present() override;

    bool hasContext() const { return _context != nullptr; }
    /// The screen is made anew in this size when it is next drawn to.
    void setPixelSize(int32_t width, int32_t height);
    /// How many frames were shown so far.
    int64_t presentedFrames() const { return _presented; }
    /// What the screen's framebuffer holds now, rgba8888; null without a context or before anything was
    /// drawn.
    CGImageRef read();

  private:
    void makeFramebuffer();
    void deleteFramebuffer();

    std::unique_ptr<EglContext> _context;
    std::string _error;
    int32_t _width;
    int32_t _height;
    bool _sizeChanged = false;
    GLuint _framebuffer = 0;
    GLuint _texture = 0;
    int64_t _presented = 0;
};
