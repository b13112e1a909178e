// A colour-only framebuffer of a fixed size whose picture can be read back, or drawn as a texture.
// Belongs to the context that was current when it was made.
#pragma once

#include <GLES2/gl2.h>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/graphics/cg_image.h"

class OffscreenDrawable {
  public:
    /// Null, with one log line, where the GPU refuses the size. rgb565: 16-bit colour, else 32-bit.
    static std::unique_ptr<OffscreenDrawable> make(int32_t width, int32_t height, bool rgb565);
    ~OffscreenDrawable();
    OffscreenDrawable(const OffscreenDrawable&) = delete;
    OffscreenDrawable& operator=(const OffscreenDrawable&) = delete;

    int32_t width() const { return _width; }
    int32_t height() const { return _height; }
    GLuint texture() const { return _texture; }
    void bind() const;
    /// Reads the bottom left rows * columns pixels (GL's orientation) as an upright picture: rgb565 where the
    /// driver reads it without conversion, else rgba8888. Leaves this drawable bound. storage: a former
    /// picture's bytes, used where they suffice.
    CGImage read(int32_t columns, int32_t rows, std::vector<uint8_t> storage = {}) const;
    /// The GL names died with their context: nothing is deleted.
    void forget();

  private:
    OffscreenDrawable(int32_t width, int32_t height) : _width(width), _height(height) {}

    int32_t _width;
    int32_t _height;
    GLuint _texture = 0;
    GLuint _framebuffer = 0;
};
