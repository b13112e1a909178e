// Context and size.
// A canvas has one context for life: making it anew after a loss answers the same one, alive again.
#include "hosts/web/web_surface.h"

#include <emscripten/emscripten.h>

namespace {

constexpr const char* kCanvas = "#screen";

EmscriptenWebGLContextAttributes wantedContext() {
    EmscriptenWebGLContextAttributes wanted;
    emscripten_webgl_init_context_attributes(&wanted);
    wanted.alpha = EM_FALSE;
    wanted.depth = EM_FALSE;
    wanted.stencil = EM_FALSE;
    wanted.antialias = EM_FALSE;
    wanted.preserveDrawingBuffer = EM_FALSE;
    wanted.powerPreference = EM_WEBGL_POWER_PREFERENCE_HIGH_PERFORMANCE;
    wanted.failIfMajorPerformanceCaveat = EM_FALSE;
    wanted.majorVersion = 1;
    wanted.minorVersion = 0;
    // None is used, and each costs time before the first frame.
    wanted.enableExtensionsByDefault = EM_FALSE;
    return wanted;
}

}  // namespace

WebSurface::~WebSurface() {
    destroyContext();
}

bool WebSurface::createContext() {
    destroyContext();
    const EmscriptenWebGLContextAttributes wanted = wantedContext();
    _context = emscripten_webgl_create_context(kCanvas, &wanted);
    if (_context <= 0) {
        _context = 0;
        _error = "this browser offers no WebGL";
    }
    return hasContext();
}

void WebSurface::destroyContext() {
    if (hasContext()) emscripten_webgl_destroy_context(_context);
    _context = 0;
}

bool WebSurface::makeCurrent() {
    return hasContext() && emscripten_webgl_make_context_current(_context) == EMSCRIPTEN_RESULT_SUCCESS;
}

void WebSurface::clearCurrent() {
    emscripten_webgl_make_context_current(0);
}

void WebSurface::present() {
    ++_presented;
    _cost.noteFrame(emscripten_get_now());
}

void WebSurface::setPixelSize(int32_t width, int32_t height) {
    _width = width;
    _height = height;
}
