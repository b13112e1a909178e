// Draws rectangles of a texture over the bound framebuffer, leaving the app's own GL state as it was.
// The app keeps its program and its quad bound from frame to frame, so everything touched here is put back.
#pragma once

#include <GLES2/gl2.h>
#include <optional>

/// Where a rectangle lies on the screen, in clip space: left and bottom -1, right and top 1.
struct ClipRect {
    float left = -1;
    float bottom = -1;
    float right = 1;
    float top = 1;
};

class TexturedQuad {
  public:
    enum class Pixels {
        opaque,             ///< R, G, B; replaces what is below
        premultipliedBGRA,  ///< rows from the top, as canvases hold them; laid over what is below
    };

    /// Compiles its program at the first call. The texture's first row lies at the bottom for opaque pixels,
    /// at the top for a canvas's.
    void draw(GLuint texture, ClipRect place, Pixels pixels);
    void release();
    /// The GL names died with their context.
    void forget();

  private:
    bool ensureProgram();

    GLuint _program = 0;
    bool _failed = false;
    GLint _uPlace = -1;
    GLint _uCanvas = -1;
};
