// Holds the surface of this run.
// The host owns it and takes it away before it goes.
#include "platform/host/gl_surface.h"

namespace {
GLSurface* shared = nullptr;
}

GLSurface* sharedGLSurface() {
    return shared;
}
void setSharedGLSurface(GLSurface* surface) {
    shared = surface;
}
