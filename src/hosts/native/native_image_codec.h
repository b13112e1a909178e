// Picture files in memory, through libpng and libjpeg.
// What the share sheet and the photo library are given.
#pragma once

#include "platform/host/image_codec.h"

class NativeImageCodec : public ImageCodec {
  public:
    std::optional<std::vector<uint8_t>> encodePNG(const CGImage& image) override;
    /// Transparent pixels are laid on black.
    std::optional<std::vector<uint8_t>> encodeJPEG(const CGImage& image, double quality) override;
};
