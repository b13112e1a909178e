// Picture files through the browser's own encoders.
// Canvases hold premultiplied colours: see-through pixels may come back a shade off, opaque ones do not.
#pragma once

#include "platform/host/image_codec.h"

class WebImageCodec : public ImageCodec {
  public:
    std::optional<std::vector<uint8_t>> encodePNG(const CGImage& image, const PictureTexts& texts) override;
    /// Transparent pixels are laid on black.
    std::optional<std::vector<uint8_t>> encodeJPEG(const CGImage& image, double quality,
                                                   const PictureTexts& texts) override;
};
