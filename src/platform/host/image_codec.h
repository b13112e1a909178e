// Host contract: picture files.
// The native hosts use libpng and libjpeg-turbo, the web the browser.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/graphics/cg_image.h"
#include "platform/graphics/picture_texts.h"

class ImageCodec {
  public:
    virtual ~ImageCodec() = default;
    /// With the texts in the file. Nothing where encoding fails. Opaque pictures are written without an alpha
    /// channel.
    virtual std::optional<std::vector<uint8_t>> encodePNG(const CGImage& image,
                                                          const PictureTexts& texts) = 0;
    /// Quality 0 to 1.
    virtual std::optional<std::vector<uint8_t>> encodeJPEG(const CGImage& image, double quality,
                                                           const PictureTexts& texts) = 0;
};

/// The codec of this run; the host sets it at start. Null where there is none.
std::shared_ptr<ImageCodec> sharedImageCodec();
void setSharedImageCodec(std::shared_ptr<ImageCodec> codec);
