// Two calls of GL that browsers answer only once everything given to the GPU is done, over the process that
// owns it: asked as often as a native driver may be, they would hold up the page for whole frames. The linker
// takes these instead of Emscripten's.
#include <GLES2/gl2.h>
#include <emscripten/emscripten.h>

namespace {

// clang-format off
EM_JS(int, zentaroAskForGLError, (), {
    const error = GLctx.getError() || GL.lastError;
    GL.lastError = 0;
    return error;
});
EM_JS(void, zentaroFlushGL, (), { GLctx.flush(); });
// clang-format on

/// Milliseconds. Each wait between two questions is twice as long as the one before; an error starts anew.
constexpr double shortestWait = 2500;

}  // namespace

extern "C" {

/// Errors stay set until they are asked for, so that asking ever more rarely misses none of their kinds. One
/// that was found is followed by the others at once.
GLenum glGetError() {
    static double nextQuestion = 0;
    static double wait = shortestWait;
    static bool found = false;
    const double now = emscripten_get_now();
    if (!found && now < nextQuestion) return GL_NO_ERROR;
    const auto error = static_cast<GLenum>(zentaroAskForGLError());
    found = error != GL_NO_ERROR;
    wait = found ? shortestWait : 2 * wait;
    nextQuestion = now + wait;
    return error;
}

/// Most browsers do no more than this themselves; what a frame costs is told by GLSurface::frameCost.
void glFinish() {
    zentaroFlushGL();
}
}
