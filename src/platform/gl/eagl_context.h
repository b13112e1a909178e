// The OpenGL ES 2.0 context of the app, made by the host's surface.
// There is one drawing thread, and at most one context is current.
#pragma once

#include <memory>

#include "platform/host/gl_surface.h"

enum class EAGLRenderingAPI { openGLES2 = 2 };
inline constexpr EAGLRenderingAPI kEAGLRenderingAPIOpenGLES2 = EAGLRenderingAPI::openGLES2;

class EAGLContext {
  public:
    /// Nothing where the host has no OpenGL ES 2.0; the surface knows the reason.
    static std::shared_ptr<EAGLContext> initWithAPI(EAGLRenderingAPI api);
    ~EAGLContext();
    EAGLContext(const EAGLContext&) = delete;
    EAGLContext& operator=(const EAGLContext&) = delete;

    /// Makes the context current, or none for null. YES if it is so afterwards.
    static bool setCurrentContext(const std::shared_ptr<EAGLContext>& context);
    /// Null for none.
    static std::shared_ptr<EAGLContext> currentContext();

    GLSurface& surface() const { return *_surface; }

  private:
    explicit EAGLContext(GLSurface* surface) : _surface(surface), _surfaceLife(surface->life()) {}

    GLSurface* _surface;
    /// Tests keep an app's objects longer than its host.
    std::weak_ptr<const void> _surfaceLife;
};
