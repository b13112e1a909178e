// Pictures in memory and the widening of their components.
// Every format can be read pixel by pixel; what must be fast reads rows.
#include "platform/graphics/cg_image.h"

#include <cstring>
#include <utility>

#include "platform/foundation/ns_assert.h"

namespace {

CGImage::Color colorOf565(uint16_t pixel) {
    const unsigned red = pixel >> 11;
    const unsigned green = (pixel >> 5) & 0x3fU;
    const unsigned blue = pixel & 0x1fU;
    return {static_cast<uint8_t>(red << 3 | red >> 2), static_cast<uint8_t>(green << 2 | green >> 4),
            static_cast<uint8_t>(blue << 3 | blue >> 2), 255};
}

CGImage::Color colorOf(CGImageFormat format, const uint8_t* bytes) {
    switch (format) {
        case CGImageFormat::gray8:
            return {bytes[0], bytes[0], bytes[0], 255};
        case CGImageFormat::rgb565: {
            uint16_t pixel = 0;
            std::memcpy(&pixel, bytes, sizeof pixel);
            return colorOf565(pixel);
        }
        case CGImageFormat::rgba8888:
            return {bytes[0], bytes[1], bytes[2], bytes[3]};
    }
    return {};
}

}  // namespace

std::size_t CGImageBytesPerPixel(CGImageFormat format) {
    switch (format) {
        case CGImageFormat::gray8:
            return 1;
        case CGImageFormat::rgb565:
            return 2;
        case CGImageFormat::rgba8888:
            return 4;
    }
    return 0;
}

CGImage::CGImage(int32_t width, int32_t height, CGImageFormat format, std::vector<uint8_t> pixels)
    : _width(width), _height(height), _format(format), _pixels(std::move(pixels)) {
    NSCAssert(width > 0 && height > 0, "CGImage");
    const std::size_t needed =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * CGImageBytesPerPixel(format);
    NSCAssert(_pixels.size() == needed, "CGImage");
}

bool CGImage::isOpaque() const {
    if (_format != CGImageFormat::rgba8888) return true;
    for (std::size_t alpha = 3; alpha < _pixels.size(); alpha += 4) {
        if (_pixels[alpha] != 255) return false;
    }
    return true;
}

std::span<const uint8_t> CGImage::row(int32_t y) const {
    const std::size_t length = static_cast<std::size_t>(_width) * CGImageBytesPerPixel(_format);
    return std::span(_pixels).subspan(static_cast<std::size_t>(y) * length, length);
}

CGImage::Color CGImage::colorAt(int32_t x, int32_t y) const {
    return colorOf(_format, row(y).data() + static_cast<std::size_t>(x) * CGImageBytesPerPixel(_format));
}

std::vector<uint8_t> CGImage::rgbaBytes() const {
    if (_format == CGImageFormat::rgba8888) return _pixels;
    const std::size_t step = CGImageBytesPerPixel(_format);
    std::vector<uint8_t> bytes(_pixels.size() / step * 4);
    uint8_t* target = bytes.data();
    for (std::size_t offset = 0; offset < _pixels.size(); offset += step, target += 4) {
        const Color color = colorOf(_format, _pixels.data() + offset);
        target[0] = color.red;
        target[1] = color.green;
        target[2] = color.blue;
        target[3] = color.alpha;
    }
    return bytes;
}
