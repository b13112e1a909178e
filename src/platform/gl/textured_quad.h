// Draws rectangles of a texture over the bound framebuffer, leaving the app's own GL state as it was.
// The app keeps its program and its quad bound from frame to frame, so everything touched here is put back.
#pragma once

#include <GLES2/gl2.h>

/// Where the edges of a texture go, in clip space: left and bottom of the screen -1, right and top 1.
/// firstRow above lastRow is how canvases want it, whose rows go down.
struct ClipRect {
    float left = -1;
    float firstRow = -1;
    float right = 1;
    float lastRow = 1;
};

class TexturedQuad {
  public:
    enum class Layer {
        below,  ///< replaces what is there
        over,   ///< premultiplied, laid over what is there
    };

    /// Compiles its program at the first call.
    void draw(GLuint texture, ClipRect place, Layer layer);
    /// The GL names died with their context.
    void forget();

  private:
    bool ensureProgram();

    GLuint _program = 0;
    bool _failed = false;
    GLint _uPlace = -1;
};
