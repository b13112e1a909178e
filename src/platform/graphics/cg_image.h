// Pictures in memory: what snapshots, files and bitmap contexts exchange.
// Immutable once made, so they can be shared freely.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

enum class CGImageFormat {
    gray8,     ///< one byte a pixel
    rgb565,    ///< 16 bits a pixel in the machine's byte order, red in the top five
    rgba8888,  ///< four bytes a pixel, red first, not premultiplied
};

std::size_t CGImageBytesPerPixel(CGImageFormat format);

class CGImage {
  public:
    /// Rows from the top, width * bytes-per-pixel each, without padding. The bytes fit
    /// the size, whose sides are positive: anything else stops the program.
    CGImage(int32_t width, int32_t height, CGImageFormat format, std::vector<uint8_t> pixels);

    int32_t width() const { return _width; }
    int32_t height() const { return _height; }
    CGImageFormat format() const { return _format; }
    std::span<const uint8_t> pixels() const { return _pixels; }
    std::span<const uint8_t> row(int32_t y) const;
    /// Whether no pixel is transparent; only rgba8888 can have such.
    bool isOpaque() const;
    struct Color {
        uint8_t red, green, blue, alpha;
        friend bool operator==(const Color&, const Color&) = default;
    };
    /// Widened to 8 bits a component (565 by bit replication).
    Color colorAt(int32_t x, int32_t y) const;
    /// The same picture, top row first, as bytes R, G, B, A.
    std::vector<uint8_t> rgbaBytes() const;
    /// The bytes of a picture that is no longer needed, so that the next one need not allocate. What is left
    /// can only be assigned to.
    std::vector<uint8_t> takePixels() && { return std::move(_pixels); }

  private:
    int32_t _width;
    int32_t _height;
    CGImageFormat _format;
    std::vector<uint8_t> _pixels;
};

using CGImageRef = std::shared_ptr<const CGImage>;
