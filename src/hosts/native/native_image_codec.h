// Picture files in memory, through libpng and libjpeg.
// What the share sheet and the photo library are given.
#pragma once

#include "platform/host/image_codec.h"

class NativeImageCodec : public ImageCodec {
  public:
    std::optional<std::vector<uint8_t>> encodePNG(const CGImage& image, const PictureTexts& texts) override;
    /// Transparent pixels are laid on black.
    std::optional<std::vector<uint8_t>> encodeJPEG(const CGImage& image, double quality,
                                                   const PictureTexts& texts) override;
};
