// Drawings as every canvas paints them: by its own paths and layers.
// Cairo and the browser differ in pixels and text, not in these.
#include "platform/graphics/canvas.h"

void Canvas::drawGlyph(const VectorGlyph& glyph, CGRect rect, UIColor tint) {
    if (!(glyph.size.width > 0 && glyph.size.height > 0)) return;
    // As one picture, or a translucent tint would darken where shapes overlap.
    const bool layered = tint.alpha < 1 && glyph.shapes.size() > 1;
    save();
    translate(rect.origin.x, rect.origin.y);
    scale(rect.size.width / glyph.size.width, rect.size.height / glyph.size.height);
    if (layered) beginTransparencyLayer(tint.alpha);
    const UIColor color = layered ? tint.withAlpha(1) : tint;
    for (const VectorGlyph::Shape& shape : glyph.shapes) {
        if (shape.stroked) {
            strokePath(shape.path, shape.lineWidth, color);
        } else {
            fillPath(shape.path, shape.rule, color);
        }
    }
    if (layered) endTransparencyLayer();
    restore();
}
