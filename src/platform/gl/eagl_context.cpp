// One context per surface; the surface owns the native object.
// The current one is remembered here, since hosts answer only for their own.
#include "platform/gl/eagl_context.h"

namespace {

std::weak_ptr<EAGLContext>& current() {
    static std::weak_ptr<EAGLContext> context;
    return context;
}

}  // namespace

std::shared_ptr<EAGLContext> EAGLContext::initWithAPI(EAGLRenderingAPI) {
    GLSurface* surface = sharedGLSurface();
    if (!surface) return nullptr;
    if (!surface->createContext()) return nullptr;
    return std::shared_ptr<EAGLContext>(new EAGLContext(surface));
}

EAGLContext::~EAGLContext() {
    if (!_surfaceLife.expired()) _surface->destroyContext();
}

bool EAGLContext::setCurrentContext(const std::shared_ptr<EAGLContext>& context) {
    if (!context) {
        const auto former = current().lock();
        if (former && !former->_surfaceLife.expired()) former->_surface->clearCurrent();
        current().reset();
        return true;
    }
    if (!context->_surface->makeCurrent()) return false;
    current() = context;
    return true;
}

std::shared_ptr<EAGLContext> EAGLContext::currentContext() {
    return current().lock();
}
