// An OpenGL ES 2.0 context without a display: EGL's surfaceless platform, else the default display.
// The order matters: the surfaceless platform works in containers and over ssh, where the default one fails.
#include "hosts/headless/egl_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

bool hasExtension(const char* list, const char* name) {
    const size_t length = std::strlen(name);
    for (const char* at = list; at != nullptr && (at = std::strstr(at, name)) != nullptr; at += length) {
        const bool starts = at == list || at[-1] == ' ';
        if (starts && (at[length] == ' ' || at[length] == '\0')) {
            return true;
        }
    }
    return false;
}

std::string lastEglError(const char* what) {
    char text[96];
    std::snprintf(text, sizeof text, "%s (EGL error 0x%04x)", what, static_cast<unsigned>(eglGetError()));
    return text;
}

EGLDisplay surfacelessDisplay() {
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (!hasExtension(extensions, "EGL_MESA_platform_surfaceless")) {
        return EGL_NO_DISPLAY;
    }
    const auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        reinterpret_cast<void*>(eglGetProcAddress("eglGetPlatformDisplayEXT")));
    return getDisplay == nullptr ? EGL_NO_DISPLAY
                                 : getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
}

}  // namespace

// One initialised display. EGL hands out the same display for the same platform each time and closes it for
// all users at once, so the contexts of a process share this and the last one closes it.
class EglDisplayConnection {
  public:
    explicit EglDisplayConnection(EGLDisplay display) : handle(display) {}
    ~EglDisplayConnection() { eglTerminate(handle); }
    EglDisplayConnection(const EglDisplayConnection&) = delete;
    EglDisplayConnection& operator=(const EglDisplayConnection&) = delete;

    static std::shared_ptr<EglDisplayConnection> open() {
        static std::weak_ptr<EglDisplayConnection> shared;
        if (auto existing = shared.lock()) {
            return existing;
        }
        for (EGLDisplay display : {surfacelessDisplay(), eglGetDisplay(EGL_DEFAULT_DISPLAY)}) {
            if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE) {
                auto opened = std::make_shared<EglDisplayConnection>(display);
                shared = opened;
                return opened;
            }
        }
        return nullptr;
    }

    const EGLDisplay handle;
};

namespace {

bool needsSurface(EGLDisplay display) {
    return !hasExtension(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_surfaceless_context");
}

bool chooseConfig(EGLDisplay display, bool pixelBuffers, EGLConfig* config) {
    const EGLint wanted[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT, EGL_SURFACE_TYPE,
                             pixelBuffers ? EGL_PBUFFER_BIT : 0, EGL_NONE};
    EGLint count = 0;
    return eglChooseConfig(display, wanted, config, 1, &count) == EGL_TRUE && count > 0;
}

}  // namespace

std::unique_ptr<EglContext> EglContext::create(std::string* error) {
    const auto fail = [error](std::string why) {
        if (error != nullptr) {
            *error = std::move(why);
        }
        return nullptr;
    };
    auto display = EglDisplayConnection::open();
    if (!display) {
        return fail(lastEglError("no EGL display can be opened"));
    }
    const bool pixelBuffer = needsSurface(display->handle);
    EGLConfig config = nullptr;
    if (!chooseConfig(display->handle, pixelBuffer, &config)) {
        return fail(lastEglError("EGL has no configuration for OpenGL ES 2.0"));
    }
    EGLSurface surface = EGL_NO_SURFACE;
    if (pixelBuffer) {
        const EGLint size[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
        surface = eglCreatePbufferSurface(display->handle, config, size);
        if (surface == EGL_NO_SURFACE) {
            return fail(lastEglError("EGL cannot make a pixel buffer"));
        }
    }
    eglBindAPI(EGL_OPENGL_ES_API);
    const EGLint version[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    EGLContext context = eglCreateContext(display->handle, config, EGL_NO_CONTEXT, version);
    if (context == EGL_NO_CONTEXT) {
        std::string why = lastEglError("EGL cannot make an OpenGL ES 2.0 context");
        if (surface != EGL_NO_SURFACE) {
            eglDestroySurface(display->handle, surface);
        }
        return fail(std::move(why));
    }
    return std::unique_ptr<EglContext>(new EglContext(std::move(display), context, surface));
}

EglContext::EglContext(std::shared_ptr<EglDisplayConnection> display, void* context, void* surface)
    : _display(std::move(display)), _context(context), _surface(surface) {}

EglContext::~EglContext() {
    clearCurrent();
    eglDestroyContext(_display->handle, _context);
    if (_surface != EGL_NO_SURFACE) {
        eglDestroySurface(_display->handle, _surface);
    }
}

bool EglContext::makeCurrent() {
    // The client API is per thread, and the thread that draws need not be the one that created the context.
    eglBindAPI(EGL_OPENGL_ES_API);
    return eglMakeCurrent(_display->handle, _surface, _surface, _context) == EGL_TRUE;
}

void EglContext::clearCurrent() {
    if (eglGetCurrentContext() == _context) {
        eglMakeCurrent(_display->handle, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
}
