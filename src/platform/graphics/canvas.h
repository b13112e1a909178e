// A surface for 2D drawing in points: the overlay's views paint on it, whichever host gives it.
// Cairo and Pango stand behind it natively, the browser's 2D context on the web.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/foundation/geometry.h"
#include "platform/graphics/ui_bezier_path.h"
#include "platform/graphics/ui_color.h"
#include "platform/graphics/ui_font.h"
#include "platform/graphics/ui_image.h"

class Canvas {
  public:
    virtual ~Canvas() = default;

    /// Position, scale and clip are saved and restored together, in pairs.
    virtual void save() = 0;
    virtual void restore() = 0;
    virtual void translate(CGFloat dx, CGFloat dy) = 0;
    virtual void scale(CGFloat sx, CGFloat sy) = 0;
    virtual void clipToRect(CGRect rect) = 0;
    virtual void clipToPath(const UIBezierPath& path, FillRule rule) = 0;

    /// What is drawn until the matching end is laid down as one picture of the given opacity, 0 to 1.
    virtual void beginTransparencyLayer(double alpha) = 0;
    virtual void endTransparencyLayer() = 0;

    /// Makes the rectangle fully transparent.
    virtual void clearRect(CGRect rect) = 0;
    virtual void fillRect(CGRect rect, UIColor color) = 0;
    virtual void fillPath(const UIBezierPath& path, FillRule rule, UIColor color) = 0;
    /// Round caps and joins.
    virtual void strokePath(const UIBezierPath& path, CGFloat lineWidth, UIColor color) = 0;
    /// Pixels are scaled into the rectangle; a drawing is painted in the tint.
    virtual void drawImage(const UIImage& image, CGRect rect, UIColor tint) = 0;
    /// UTF-8, wrapped at the rectangle's width and at line ends, from its top, clipped to nothing; with
    /// one line at most when singleLine, its end cut with an ellipsis.
    virtual void drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                          NSTextAlignment alignment, bool singleLine) = 0;

  protected:
    /// A drawing scaled into the rectangle, by the operations above.
    void drawGlyph(const VectorGlyph& glyph, CGRect rect, UIColor tint);
};

/// A Canvas over pixels of its own, which are had in one of two ways.
class BitmapCanvas : public Canvas {
  public:
    /// Pixels.
    virtual int32_t width() const = 0;
    virtual int32_t height() const = 0;
    /// Gives the pixels, complete up to the last call, to the GL texture that is bound; NO, and nothing
    /// happens, where they are had from pixels().
    virtual bool copyToTexture() { return false; }
    /// Bytes B, G, R, A, premultiplied, rows from the top, width * 4 each, complete up to the last call;
    /// none where copyToTexture() answers YES.
    virtual std::span<const uint8_t> pixels() { return {}; }
};
