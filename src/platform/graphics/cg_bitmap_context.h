// Grey pictures over memory that somebody else owns: the autopilot samples the screen into one, and the debug
// picture shows the same bytes.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/foundation/geometry.h"
#include "platform/graphics/cg_image.h"

/// Wraps caller-owned bytes; it frees nothing and must not outlive them.
struct CGDataProvider {
    const uint8_t* data = nullptr;
    std::size_t size = 0;
};
using CGDataProviderRef = std::shared_ptr<CGDataProvider>;
CGDataProviderRef CGDataProviderCreateWithData(const uint8_t* data, std::size_t size);

enum class CGColorSpace { deviceGray };

/// A picture copied from the provider's bytes as they are now: 8 bits a component and a pixel, no alpha.
/// Nothing if the provider holds too few bytes.
CGImageRef CGImageCreate(int32_t width, int32_t height, int32_t bitsPerComponent, int32_t bitsPerPixel,
                         int32_t bytesPerRow, CGColorSpace space, const CGDataProviderRef& provider);

/// Draws pictures as luminance (Rec. 709 weights) into a caller-owned buffer of width * height bytes.
class CGBitmapContext {
  public:
    CGBitmapContext(uint8_t* data, int32_t width, int32_t height, int32_t bytesPerRow, CGColorSpace space);

    /// Scales image to rect (pixels, y from the top row of the buffer down), averaging where it shrinks and
    /// interpolating where it grows; parts outside the buffer are cut. Allocates nothing.
    void drawImage(CGRect rect, const CGImage& image);

  private:
    uint8_t* _data;
    int32_t _width;
    int32_t _height;
    int32_t _bytesPerRow;
};
