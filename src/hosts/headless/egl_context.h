// An OpenGL ES 2.0 context that needs neither a window nor a display.
// Pictures from the command line, films and tests draw through it into framebuffer objects.
#pragma once

#include <memory>
#include <string>

class EglDisplayConnection;

class EglContext {
  public:
    // Answers nothing when this machine offers no OpenGL ES 2.0; then *error (if given) says why in one line.
    // The new context is not current yet. Contexts of one process share one connection to the display, which
    // closes with the last of them.
    static std::unique_ptr<EglContext> create(std::string* error);

    ~EglContext();
    EglContext(const EglContext&) = delete;
    EglContext& operator=(const EglContext&) = delete;

    // Makes the context current on the calling thread; there is no default framebuffer worth drawing to, so
    // callers bind one of their own. Answers false when the driver refuses.
    bool makeCurrent();

    // Leaves the calling thread without a context, if this one is current there.
    void clearCurrent();

  private:
    EglContext(std::shared_ptr<EglDisplayConnection> display, void* context, void* surface);

    std::shared_ptr<EglDisplayConnection> _display;
    void* _context;  // EGLContext, owned
    void* _surface;  // EGLSurface, owned: a 1x1 pixel buffer where contexts need a surface, else none
};
