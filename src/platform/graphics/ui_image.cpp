// Images and their files.
// The codec is the host's; without one there are no files.
#include "platform/graphics/ui_image.h"

#include <map>
#include <utility>

#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_log.h"
#include "platform/graphics/svg_glyph_reader.h"
#include "platform/host/image_codec.h"

std::shared_ptr<UIImage> UIImage::imageWithCGImage(CGImageRef image, PictureTexts texts) {
    if (!image) return nullptr;
    auto result = std::make_shared<UIImage>();
    result->_size = CGSizeMake(image->width(), image->height());
    result->_image = std::move(image);
    result->_texts = std::move(texts);
    return result;
}

std::shared_ptr<UIImage> UIImage::imageWithGlyph(VectorGlyph glyph, CGSize size) {
    auto result = std::make_shared<UIImage>();
    result->_size = size;
    result->_glyph = std::move(glyph);
    return result;
}

/// Kept for as long as the app runs: there are few, and small ones.
std::shared_ptr<UIImage> UIImage::imageNamed(const std::string& name) {
    static std::map<std::string, std::shared_ptr<UIImage>> kept;
    if (const auto found = kept.find(name); found != kept.end()) return found->second;
    const auto text = NSBundle::mainBundle().stringForResource(name, "svg");
    auto glyph = text ? readSVGGlyph(*text) : std::nullopt;
    if (!glyph) {
        NSLog("UIImage: no picture \"%s\"", name.c_str());
        return nullptr;
    }
    const CGSize size = glyph->size;
    return kept[name] = imageWithGlyph(std::move(*glyph), size);
}

std::optional<NSData> UIImageJPEGRepresentation(const UIImageRef& image, double compressionQuality) {
    const auto codec = sharedImageCodec();
    if (!codec || !image || !image->image()) return std::nullopt;
    return codec->encodeJPEG(*image->image(), compressionQuality, image->texts());
}

std::optional<NSData> UIImagePNGRepresentation(const UIImageRef& image) {
    const auto codec = sharedImageCodec();
    if (!codec || !image || !image->image()) return std::nullopt;
    return codec->encodePNG(*image->image(), image->texts());
}
