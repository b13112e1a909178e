// Canvas calls as Cairo calls.
// Values that Cairo cannot take (no scale, not a number) draw nothing instead of breaking the context.
#include "hosts/native/cairo_canvas.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>

namespace {

constexpr int32_t largestSide = 32767;

void setColor(cairo_t* cairo, UIColor color) {
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
}

void addRectangle(cairo_t* cairo, CGRect rect) {
    cairo_new_path(cairo);
    if (isFinite(rect))
        cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

void addPath(cairo_t* cairo, const UIBezierPath& path) {
    cairo_new_path(cairo);
    if (!path.isFinite()) return;
    for (const UIBezierPath::Element& element : path.elements()) {
        const auto& p = element.points;
        switch (element.verb) {
            case UIBezierPath::Verb::move:
                cairo_move_to(cairo, p[2].x, p[2].y);
                break;
            case UIBezierPath::Verb::line:
                cairo_line_to(cairo, p[2].x, p[2].y);
                break;
            case UIBezierPath::Verb::curve:
                cairo_curve_to(cairo, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
                break;
            case UIBezierPath::Verb::close:
                cairo_close_path(cairo);
                break;
        }
    }
}

void setFillRule(cairo_t* cairo, FillRule rule) {
    cairo_set_fill_rule(cairo,
                        rule == FillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
}

uint32_t premultiplied(CGImage::Color color) {
    const auto times = [alpha = uint32_t{color.alpha}](uint32_t component) {
        return (component * alpha + 127) / 255;
    };
    return uint32_t{color.alpha} << 24 | times(color.red) << 16 | times(color.green) << 8 | times(color.blue);
}

/// A surface with the image's pixels; the caller destroys it.
cairo_surface_t* surfaceOf(const CGImage& image) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width(), image.height());
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return surface;
    auto* bytes = cairo_image_surface_get_data(surface);
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    for (int32_t y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<uint32_t*>(bytes + static_cast<std::size_t>(y) * stride);
        for (int32_t x = 0; x < image.width(); ++x)
            row[x] = premultiplied(image.colorAt(x, y));
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

}  // namespace

std::unique_ptr<CairoCanvas> CairoCanvas::create(int32_t width, int32_t height,
                                                 std::shared_ptr<PangoText> text) {
    if (width <= 0 || height <= 0 || width > largestSide || height > largestSide) return nullptr;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    return std::unique_ptr<CairoCanvas>(new CairoCanvas(surface, width, height, std::move(text)));
}

CairoCanvas::CairoCanvas(cairo_surface_t* surface, int32_t width, int32_t height,
                         std::shared_ptr<PangoText> text)
    : _width(width),
      _height(height),
      _text(std::move(text)),
      _surface(surface),
      _cairo(cairo_create(surface)) {
    cairo_set_line_cap(_cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(_cairo, CAIRO_LINE_JOIN_ROUND);
}

CairoCanvas::~CairoCanvas() {
    cairo_destroy(_cairo);
    cairo_surface_destroy(_surface);
}

void CairoCanvas::save() {
    _open.push_back(std::nullopt);
    cairo_save(_cairo);
}

void CairoCanvas::restore() {
    if (_open.empty() || _open.back()) return;
    _open.pop_back();
    cairo_restore(_cairo);
}

void CairoCanvas::translate(CGFloat dx, CGFloat dy) {
    if (!std::isfinite(dx) || !std::isfinite(dy)) return clipEverything();
    cairo_translate(_cairo, dx, dy);
}

void CairoCanvas::scale(CGFloat sx, CGFloat sy) {
    if (!std::isfinite(sx) || !std::isfinite(sy) || sx * sy == 0) return clipEverything();
    cairo_scale(_cairo, sx, sy);
}

void CairoCanvas::clipEverything() {
    cairo_new_path(_cairo);
    cairo_clip(_cairo);
}

void CairoCanvas::clipToRect(CGRect rect) {
    addRectangle(_cairo, rect);
    cairo_clip(_cairo);
}

void CairoCanvas::clipToPath(const UIBezierPath& path, FillRule rule) {
    addPath(_cairo, path);
    setFillRule(_cairo, rule);
    cairo_clip(_cairo);
}

void CairoCanvas::beginTransparencyLayer(double alpha) {
    _open.push_back(alpha);
    cairo_push_group(_cairo);
}

void CairoCanvas::endTransparencyLayer() {
    if (_open.empty() || !_open.back()) return;
    const double alpha = *_open.back();
    _open.pop_back();
    cairo_pop_group_to_source(_cairo);
    cairo_paint_with_alpha(_cairo, std::clamp(alpha, 0.0, 1.0));
    // Lets go of the layer's pixels.
    cairo_set_source_rgb(_cairo, 0, 0, 0);
}

void CairoCanvas::clearRect(CGRect rect) {
    addRectangle(_cairo, rect);
    cairo_set_operator(_cairo, CAIRO_OPERATOR_CLEAR);
    cairo_fill(_cairo);
    cairo_set_operator(_cairo, CAIRO_OPERATOR_OVER);
}

void CairoCanvas::fillRect(CGRect rect, UIColor color) {
    addRectangle(_cairo, rect);
    setColor(_cairo, color);
    cairo_fill(_cairo);
}

void CairoCanvas::fillPath(const UIBezierPath& path, FillRule rule, UIColor color) {
    addPath(_cairo, path);
    setFillRule(_cairo, rule);
    setColor(_cairo, color);
    cairo_fill(_cairo);
}

void CairoCanvas::strokePath(const UIBezierPath& path, CGFloat lineWidth, UIColor color) {
    if (!(lineWidth > 0) || !std::isfinite(lineWidth)) return;
    addPath(_cairo, path);
    setColor(_cairo, color);
    cairo_set_line_width(_cairo, lineWidth);
    cairo_stroke(_cairo);
}

void CairoCanvas::drawImage(const UIImage& image, CGRect rect, UIColor tint) {
    if (!isFinite(rect) || !(rect.size.width > 0 && rect.size.height > 0)) return;
    if (image.image()) drawPixels(*image.image(), rect);
    if (image.glyph()) drawGlyph(*image.glyph(), rect, tint);
}

void CairoCanvas::drawPixels(const CGImage& image, CGRect rect) {
    cairo_surface_t* source = surfaceOf(image);
    save();
    translate(rect.origin.x, rect.origin.y);
    scale(rect.size.width / image.width(), rect.size.height / image.height());
    cairo_set_source_surface(_cairo, source, 0, 0);
    // The outermost pixels keep their colour up to the edge.
    cairo_pattern_set_extend(cairo_get_source(_cairo), CAIRO_EXTEND_PAD);
    addRectangle(_cairo, CGRectMake(0, 0, image.width(), image.height()));
    cairo_fill(_cairo);
    restore();
    cairo_surface_destroy(source);
}

void CairoCanvas::drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                           NSTextAlignment alignment, bool singleLine) {
    if (!isFinite(rect)) return;
    _text->draw(_cairo, text, font, color, rect, alignment, singleLine);
}

std::span<const uint8_t> CairoCanvas::pixels() {
    cairo_surface_flush(_surface);
    // Four bytes a pixel need no padding, so rows follow each other directly.
    const auto count = static_cast<std::size_t>(_width) * static_cast<std::size_t>(_height) * 4;
    return {cairo_image_surface_get_data(_surface), count};
}
