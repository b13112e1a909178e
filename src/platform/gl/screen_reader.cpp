// One glReadPixels into memory that the capture gave.
// The alpha of a window's framebuffer means nothing, and nobody reads it.
#include "platform/gl/screen_reader.h"

#include <GLES2/gl2.h>
#include <GLES2/gl2ext.h>
#include <utility>

#include "platform/host/screen_capture.h"

void captureScreen(GLSurface& surface, double time) {
    const auto capture = sharedScreenCapture();
    std::unique_ptr<CapturedFrame> frame = capture ? capture->frameToFill(time) : nullptr;
    if (!frame) return;
    GLint format = 0;
    GLint type = 0;
    glGetIntegerv(GL_IMPLEMENTATION_COLOR_READ_FORMAT, &format);
    glGetIntegerv(GL_IMPLEMENTATION_COLOR_READ_TYPE, &type);
    const bool blueFirst = format == GL_BGRA_EXT && type == GL_UNSIGNED_BYTE;
    frame->width = surface.pixelWidth();
    frame->height = surface.pixelHeight();
    frame->order = blueFirst ? PixelOrder::bgra : PixelOrder::rgba;
    frame->time = time;
    frame->pixels.resize(static_cast<std::size_t>(frame->width) * static_cast<std::size_t>(frame->height) *
                         4);
    glReadPixels(0, 0, frame->width, frame->height, blueFirst ? GL_BGRA_EXT : GL_RGBA, GL_UNSIGNED_BYTE,
                 frame->pixels.data());
    capture->takeFrame(std::move(frame));
}
