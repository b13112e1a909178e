// Framebuffer, texture and read-back.
// Read-back turns GL's bottom-up rows into pictures that begin at the top.
#include "platform/gl/offscreen_drawable.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/ns_log.h"

namespace {

bool readsRGB565() {
    GLint format = 0;
    GLint type = 0;
    glGetIntegerv(GL_IMPLEMENTATION_COLOR_READ_FORMAT, &format);
    glGetIntegerv(GL_IMPLEMENTATION_COLOR_READ_TYPE, &type);
    return format == GL_RGB && type == GL_UNSIGNED_SHORT_5_6_5;
}

void flipRows(std::vector<uint8_t>& pixels, std::size_t rowBytes, std::size_t rows) {
    for (std::size_t top = 0, bottom = rows; top + 1 < bottom--; ++top) {
        uint8_t* upper = pixels.data() + top * rowBytes;
        std::swap_ranges(upper, upper + rowBytes, pixels.data() + bottom * rowBytes);
    }
}

}  // namespace

std::unique_ptr<OffscreenDrawable> OffscreenDrawable::make(int32_t width, int32_t height, bool rgb565) {
    std::unique_ptr<OffscreenDrawable> drawable(new OffscreenDrawable(width, height));
    GLint boundTexture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &boundTexture);

    glGenTextures(1, &drawable->_texture);
    glBindTexture(GL_TEXTURE_2D, drawable->_texture);
    const GLenum format = rgb565 ? GL_RGB : GL_RGBA;
    const GLenum type = rgb565 ? GL_UNSIGNED_SHORT_5_6_5 : GL_UNSIGNED_BYTE;
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), width, height, 0, format, type, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(boundTexture));

    glGenFramebuffers(1, &drawable->_framebuffer);
    drawable->bind();
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, drawable->_texture, 0);
    if (glGetError() == GL_NO_ERROR && glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE) {
        return drawable;
    }
    // ES 2.0 need not render to 16-bit textures; every GPU renders to 32-bit ones.
    if (rgb565) return make(width, height, false);
    NSLog("The GPU refuses a drawable of %dx%d pixels", width, height);
    return nullptr;
}

OffscreenDrawable::~OffscreenDrawable() {
    if (_framebuffer) glDeleteFramebuffers(1, &_framebuffer);
    if (_texture) glDeleteTextures(1, &_texture);
}

void OffscreenDrawable::forget() {
    _framebuffer = 0;
    _texture = 0;
}

void OffscreenDrawable::bind() const {
    glBindFramebuffer(GL_FRAMEBUFFER, _framebuffer);
}

CGImage OffscreenDrawable::read(int32_t columns, int32_t rows, std::vector<uint8_t> storage) const {
    bind();
    const CGImageFormat format = readsRGB565() ? CGImageFormat::rgb565 : CGImageFormat::rgba8888;
    const std::size_t rowBytes = static_cast<std::size_t>(columns) * CGImageBytesPerPixel(format);
    std::vector<uint8_t> pixels = std::move(storage);
    pixels.resize(rowBytes * static_cast<std::size_t>(rows));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    if (format == CGImageFormat::rgb565) {
        glReadPixels(0, 0, columns, rows, GL_RGB, GL_UNSIGNED_SHORT_5_6_5, pixels.data());
    } else {
        glReadPixels(0, 0, columns, rows, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    }
    flipRows(pixels, rowBytes, static_cast<std::size_t>(rows));
    return CGImage(columns, rows, format, std::move(pixels));
}
