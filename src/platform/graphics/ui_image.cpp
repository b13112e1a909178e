// Images and their files.
// The codec is the host's; without one there are no files.
#include "platform/graphics/ui_image.h"

#include <utility>

#include "platform/host/image_codec.h"

std::shared_ptr<UIImage> UIImage::imageWithCGImage(CGImageRef image) {
    if (!image) return nullptr;
    auto result = std::make_shared<UIImage>();
    result->_size = CGSizeMake(image->width(), image->height());
    result->_image = std::move(image);
    return result;
}

std::shared_ptr<UIImage> UIImage::imageWithGlyph(VectorGlyph glyph, CGSize size) {
    auto result = std::make_shared<UIImage>();
    result->_size = size;
    result->_glyph = std::move(glyph);
    return result;
}

std::optional<NSData> UIImageJPEGRepresentation(const UIImageRef& image, double compressionQuality) {
    const auto codec = sharedImageCodec();
    if (!codec || !image || !image->image()) return std::nullopt;
    return codec->encodeJPEG(*image->image(), compressionQuality);
}

std::optional<NSData> UIImagePNGRepresentation(const UIImageRef& image) {
    const auto codec = sharedImageCodec();
    if (!codec || !image || !image->image()) return std::nullopt;
    return codec->encodePNG(*image->image());
}
