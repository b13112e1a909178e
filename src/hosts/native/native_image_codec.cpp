// Turns pictures into rows of the layout that suits them and feeds an encoder.
// Grey stays grey, and alpha is written only where something is transparent.
#include "hosts/native/native_image_codec.h"

#include <algorithm>
#include <cstring>

#include "hosts/native/row_encoder.h"

namespace {

class MemorySink : public ByteSink {
  public:
    bool write(std::span<const uint8_t> chunk) noexcept override {
        try {
            bytes.insert(bytes.end(), chunk.begin(), chunk.end());
        } catch (...) {
            return false;
        }
        return true;
    }
    std::vector<uint8_t> bytes;
};

uint8_t onBlack(unsigned component, unsigned alpha) {
    return static_cast<uint8_t>((component * alpha + 127) / 255);
}

/// One row in the layout; rgb rows of transparent pictures are laid on black.
void convertRow(const CGImage& image, int32_t y, PixelLayout layout, std::vector<uint8_t>& row) {
    const auto source = image.row(y);
    if (layout != PixelLayout::rgb) {
        std::copy(source.begin(), source.end(), row.begin());
        return;
    }
    uint8_t* target = row.data();
    for (int32_t x = 0; x < image.width(); ++x, target += 3) {
        const CGImage::Color color = image.colorAt(x, y);
        target[0] = onBlack(color.red, color.alpha);
        target[1] = onBlack(color.green, color.alpha);
        target[2] = onBlack(color.blue, color.alpha);
    }
}

bool encode(RowEncoder& encoder, const CGImage& image, PixelLayout layout, const PictureTexts& texts) {
    std::vector<uint8_t> row(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(layout));
    if (!encoder.begin(image.width(), image.height(), layout, texts)) return false;
    for (int32_t y = 0; y < image.height(); ++y) {
        convertRow(image, y, layout, row);
        if (!encoder.writeRow(row.data())) return false;
    }
    return encoder.finish();
}

}  // namespace

std::optional<std::vector<uint8_t>> NativeImageCodec::encodePNG(const CGImage& image,
                                                                const PictureTexts& texts) {
    MemorySink sink;
    PixelLayout layout = image.isOpaque() ? PixelLayout::rgb : PixelLayout::rgba;
    if (image.format() == CGImageFormat::gray8) layout = PixelLayout::gray;
    if (!encode(*makePngEncoder(sink), image, layout, texts)) return std::nullopt;
    return std::move(sink.bytes);
}

std::optional<std::vector<uint8_t>> NativeImageCodec::encodeJPEG(const CGImage& image, double quality,
                                                                 const PictureTexts& texts) {
    MemorySink sink;
    const auto layout = image.format() == CGImageFormat::gray8 ? PixelLayout::gray : PixelLayout::rgb;
    if (!encode(*makeJpegEncoder(sink, quality), image, layout, texts)) return std::nullopt;
    return std::move(sink.bytes);
}
