// The off-screen screen: its framebuffer follows the size and dies with the context.
// Presenting waits for the GPU, as a window's swap does for a picture that is complete.
#include "hosts/headless/headless_surface.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

bool HeadlessSurface::createContext() {
    destroyContext();
    _context = EglContext::create(&_error);
    return _context != nullptr;
}

void HeadlessSurface::destroyContext() {
    // The framebuffer's names go with their context.
    _framebuffer = 0;
    _texture = 0;
    _context.reset();
}

bool HeadlessSurface::makeCurrent() {
    return _context && _context->makeCurrent();
}

void HeadlessSurface::clearCurrent() {
    if (_context) _context->clearCurrent();
}

uint32_t HeadlessSurface::screenFramebuffer() {
    if (!_context) return 0;
    if (_sizeChanged) deleteFramebuffer();
    if (_framebuffer == 0) makeFramebuffer();
    return _framebuffer;
}

void HeadlessSurface::present() {
    if (!_context) return;
    glFinish();
    ++_presented;
}

void HeadlessSurface::setPixelSize(int32_t width, int32_t height) {
    if (width == _width && height == _height) return;
    _width = width;
    _height = height;
    _sizeChanged = true;
}

void HeadlessSurface::makeFramebuffer() {
    GLint boundTexture = 0;
    GLint boundFramebuffer = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &boundTexture);
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &boundFramebuffer);
    glGenTextures(1, &_texture);
    glBindTexture(GL_TEXTURE_2D, _texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, _width, _height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(boundTexture));
    glGenFramebuffers(1, &_framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, _framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, _texture, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(boundFramebuffer));
}

void HeadlessSurface::deleteFramebuffer() {
    _sizeChanged = false;
    if (_framebuffer != 0) glDeleteFramebuffers(1, &_framebuffer);
    if (_texture != 0) glDeleteTextures(1, &_texture);
    _framebuffer = 0;
    _texture = 0;
}

CGImageRef HeadlessSurface::read() {
    if (!_context || _framebuffer == 0 || _sizeChanged || !makeCurrent()) return nullptr;
    glBindFramebuffer(GL_FRAMEBUFFER, _framebuffer);
    const std::size_t row = static_cast<std::size_t>(_width) * 4;
    std::vector<uint8_t> upward(row * static_cast<std::size_t>(_height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, _width, _height, GL_RGBA, GL_UNSIGNED_BYTE, upward.data());
    std::vector<uint8_t> pixels;
    pixels.reserve(upward.size());
    for (std::size_t y = static_cast<std::size_t>(_height); y-- > 0;) {
        const auto line = upward.begin() + static_cast<std::ptrdiff_t>(y * row);
        pixels.insert(pixels.end(), line, line + static_cast<std::ptrdiff_t>(row));
    }
    return std::make_shared<const CGImage>(_width, _height, CGImageFormat::rgba8888, std::move(pixels));
}
