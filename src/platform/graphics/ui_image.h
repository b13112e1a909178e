// Images as views show and files hold them: pixels, or a drawing of paths that stays sharp at every scale.
// Encoding goes through the host's codec.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/geometry.h"
#include "platform/graphics/cg_image.h"
#include "platform/graphics/picture_texts.h"
#include "platform/graphics/ui_bezier_path.h"

/// A drawing in one colour, the tint of whoever shows it.
struct VectorGlyph {
    struct Shape {
        UIBezierPath path;
        bool stroked = false;
        double lineWidth = 0;  ///< units of the glyph, for stroked shapes
        FillRule rule = FillRule::nonZero;
    };
    CGSize size;  ///< units; the drawing fills (0, 0) to (width, height)
    std::vector<Shape> shapes;
};

class UIImage {
  public:
    /// Upright, one point a pixel. The texts go into every file that is made of it.
    static std::shared_ptr<UIImage> imageWithCGImage(CGImageRef image, PictureTexts texts = {});
    /// Drawn at `size` points.
    static std::shared_ptr<UIImage> imageWithGlyph(VectorGlyph glyph, CGSize size);
    /// The drawing of the app's resource NAME.svg (see svg_glyph_reader.h), so sharp at every scale of the
    /// screen; kept once it was read. Nothing, with a log line, without a usable one.
    static std::shared_ptr<UIImage> imageNamed(const std::string& name);

    /// Points.
    CGSize size() const { return _size; }
    double scale() const { return 1.0; }
    /// Empty for a drawing.
    const CGImageRef& image() const { return _image; }
    const std::optional<VectorGlyph>& glyph() const { return _glyph; }
    const PictureTexts& texts() const { return _texts; }

  private:
    CGImageRef _image;
    std::optional<VectorGlyph> _glyph;
    PictureTexts _texts;
    CGSize _size;
};

using UIImageRef = std::shared_ptr<UIImage>;
using NSData = std::vector<uint8_t>;

/// The image, with its texts, as a file's bytes: JPEG with quality 0 to 1, or lossless PNG. Nothing without
/// pixels or if the host cannot encode.
std::optional<NSData> UIImageJPEGRepresentation(const UIImageRef& image, double compressionQuality);
std::optional<NSData> UIImagePNGRepresentation(const UIImageRef& image);
