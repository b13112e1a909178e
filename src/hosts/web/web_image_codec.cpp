// A picture goes onto a canvas, which answers with the file as a data URL.
// That is the one way to a file that does not answer later, as blobs do.
#include "hosts/web/web_image_codec.h"

#include <algorithm>
#include <cmath>
#include <emscripten/emscripten.h>

// clang-format off
/// The size of the file in bytes, or -1; the file itself waits for zentaroTakePicture.
EM_JS(int, zentaroEncodePicture, (const uint8_t* rgba, int width, int height, int opaque, const char* type,
                                  double quality), {
    try {
        const canvas = document.createElement("canvas");
        canvas.width = width;
        canvas.height = height;
        const context = canvas.getContext("2d", {alpha: opaque === 0});
        const pixels = new Uint8ClampedArray(HEAPU8.subarray(rgba, rgba + 4 * width * height));
        context.putImageData(new ImageData(pixels, width, height), 0, 0);
        const wanted = UTF8ToString(type);
        const url = canvas.toDataURL(wanted, quality);
        canvas.width = canvas.height = 0;
        const start = "data:" + wanted + ";base64,";
        // Pictures too large for a canvas, and kinds that the browser does not know, have other beginnings.
        if (!url.startsWith(start)) return -1;
        Module.encodedPicture = atob(url.slice(start.length));
        return Module.encodedPicture.length;
    } catch (refused) {
        return -1;
    }
});
EM_JS(void, zentaroTakePicture, (uint8_t* to), {
    const file = Module.encodedPicture;
    for (let i = 0; i < file.length; ++i) HEAPU8[to + i] = file.charCodeAt(i);
    delete Module.encodedPicture;
});
// clang-format on

namespace {

std::optional<std::vector<uint8_t>> encoded(const CGImage& image, bool opaque, const char* type,
                                            double quality, const PictureTexts& texts) {
    const std::vector<uint8_t> pixels = image.rgbaBytes();
    const int size =
        zentaroEncodePicture(pixels.data(), image.width(), image.height(), opaque ? 1 : 0, type, quality);
    if (size < 0) return std::nullopt;
    std::vector<uint8_t> file(static_cast<std::size_t>(size));
    zentaroTakePicture(file.data());
    insertPictureTexts(file, texts);
    return file;
}

}  // namespace

std::optional<std::vector<uint8_t>> WebImageCodec::encodePNG(const CGImage& image,
                                                             const PictureTexts& texts) {
    return encoded(image, image.isOpaque(), "image/png", 1, texts);
}

std::optional<std::vector<uint8_t>> WebImageCodec::encodeJPEG(const CGImage& image, double quality,
                                                              const PictureTexts& texts) {
    const double inRange = std::isfinite(quality) ? std::clamp(quality, 0.0, 1.0) : 1;
    return encoded(image, false, "image/jpeg", inRange, texts);
}
