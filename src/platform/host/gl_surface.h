// Host contract: an OpenGL ES 2.0 context and the framebuffer that ends on the screen.
// The framework draws; only a machine can make a context and show what was drawn.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

class GLSurface {
  public:
    virtual ~GLSurface() = default;

    /// Makes the one context of this surface; NO, with the reason in lastError(), where there is no OpenGL
    /// ES 2.0.
    virtual bool createContext() = 0;
    virtual void destroyContext() = 0;
    virtual bool makeCurrent() = 0;
    virtual void clearCurrent() = 0;
    virtual std::string lastError() const = 0;

    /// The framebuffer object that the screen shows (0 for a window's own) and its size in pixels; valid
    /// while the context is current.
    virtual uint32_t screenFramebuffer() = 0;
    virtual int32_t pixelWidth() const = 0;
    virtual int32_t pixelHeight() const = 0;

    /// Shows what was drawn into the screen's framebuffer.
    virtual void present() = 0;

    /// Whether glFinish does not wait for the GPU, so that frameCost alone tells what frames cost.
    virtual bool tellsFrameCost() const { return false; }
    /// Milliseconds that frames cost of late, the GPU's work included; nothing while too few frames have
    /// come.
    virtual std::optional<double> frameCost() const { return std::nullopt; }

    /// Expires with the surface: objects that may outlive a host ask before they call it.
    std::weak_ptr<const void> life() const { return _life; }

  private:
    std::shared_ptr<const void> _life = std::make_shared<char>();
};

/// The surface of this run; the host sets it at start. Null where there is none.
GLSurface* sharedGLSurface();
void setSharedGLSurface(GLSurface* surface);
