// What may be drawn is decided here; the list and its player only draw.
// Values that are no numbers draw nothing, as on the other canvases.
#include "hosts/web/web_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <emscripten/emscripten.h>

// clang-format off
/// Module.canvases holds, by id, {stack: contexts, the one that is painted on last; layers: those to be used again}.
EM_JS(int, zentaroMakeCanvas, (int width, int height), {
    if (!Module.canvases) {
        Module.canvases = new Map();
        Module.lastCanvas = 0;
        Module.canvasContext = function(canvas) {
            // Pixels are read back after every painting: they stay where reading is cheap.
            const context = canvas.getContext("2d", {willReadFrequently: true});
            context.lineCap = "round";
            context.lineJoin = "round";
            context.imageSmoothingQuality = "high";
            return context;
        };
    }
    try {
        const canvas = document.createElement("canvas");
        canvas.width = width;
        canvas.height = height;
        Module.canvases.set(++Module.lastCanvas, {stack: [Module.canvasContext(canvas)], layers: []});
        return Module.lastCanvas;
    } catch (refused) {
        return 0;
    }
});
EM_JS(void, zentaroDeleteCanvas, (int id), {
    const surface = Module.canvases.get(id);
    // Some browsers keep the memory of canvases for long unless they are made small.
    surface.stack.concat(surface.layers).forEach(function(context) {
        context.canvas.width = context.canvas.height = 0;
    });
    Module.canvases.delete(id);
});
/// R, G, B, A, not premultiplied.
EM_JS(int, zentaroReadCanvas, (int id, uint8_t* to), {
    try {
        const context = Module.canvases.get(id).stack[0];
        const picture = context.getImageData(0, 0, context.canvas.width, context.canvas.height);
        HEAPU8.set(picture.data, to);
        return 1;
    } catch (refused) {
        return 0;
    }
});
// clang-format on

namespace {

constexpr int32_t largestSide = 16384;

bool isDrawable(CGRect rect) {
    return std::isfinite(CGRectGetMaxX(rect)) && std::isfinite(CGRectGetMaxY(rect)) &&
           std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y);
}

/// Two components of a pixel, in the low and the high half of the word, times alpha over 255, rounded.
uint32_t timesAlpha(uint32_t twoComponents, uint32_t alpha) {
    const uint32_t product = twoComponents * alpha + 0x00800080;
    return ((product + ((product >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF;
}

/// In place: from R, G, B, A as they are to B, G, R, A premultiplied. Wasm keeps the first byte lowest.
void premultiplyAndSwap(std::vector<uint8_t>& pixels) {
    for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
        uint32_t pixel = 0;
        std::memcpy(&pixel, &pixels[i], sizeof pixel);
        const uint32_t alpha = pixel >> 24;
        const uint32_t blueRed = timesAlpha(pixel & 0x00FF00FF, alpha);
        const uint32_t green = timesAlpha((pixel >> 8) & 0x000000FF, alpha) & 0x000000FF;
        pixel = alpha << 24 | (blueRed & 0xFF) << 16 | green << 8 | blueRed >> 16;
        std::memcpy(&pixels[i], &pixel, sizeof pixel);
    }
}

}  // namespace

std::unique_ptr<WebCanvas> WebCanvas::create(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0 || width > largestSide || height > largestSide) return nullptr;
    const int id = zentaroMakeCanvas(width, height);
    return id == 0 ? nullptr : std::unique_ptr<WebCanvas>(new WebCanvas(id, width, height));
}

WebCanvas::~WebCanvas() {
    zentaroDeleteCanvas(_id);
}

void WebCanvas::save() {
    _open.push_back(std::nullopt);
    _list.save();
}

void WebCanvas::restore() {
    if (_open.empty() || _open.back()) return;
    _open.pop_back();
    _list.restore();
}

void WebCanvas::translate(CGFloat dx, CGFloat dy) {
    if (!std::isfinite(dx) || !std::isfinite(dy)) return clipEverything();
    _list.translate(dx, dy);
}

void WebCanvas::scale(CGFloat sx, CGFloat sy) {
    if (!std::isfinite(sx) || !std::isfinite(sy) || sx * sy == 0) return clipEverything();
    _list.scale(sx, sy);
}

void WebCanvas::clipEverything() {
    _list.clip({}, FillRule::nonZero);
}

void WebCanvas::clipToRect(CGRect rect) {
    clipToPath(UIBezierPath::bezierPathWithRect(rect), FillRule::nonZero);
}

void WebCanvas::clipToPath(const UIBezierPath& path, FillRule rule) {
    if (!path.isFinite()) return clipEverything();
    _list.clip(path, rule);
}

void WebCanvas::beginTransparencyLayer(double alpha) {
    _open.push_back(alpha);
    _list.beginLayer();
}

void WebCanvas::endTransparencyLayer() {
    if (_open.empty() || !_open.back()) return;
    const double alpha = *_open.back();
    _open.pop_back();
    _list.endLayer(alpha > 0 ? std::min(alpha, 1.0) : 0);
}

void WebCanvas::clearRect(CGRect rect) {
    if (isDrawable(rect)) _list.clearRect(rect);
}

void WebCanvas::fillRect(CGRect rect, UIColor color) {
    if (isDrawable(rect)) _list.fillRect(rect, color);
}

void WebCanvas::fillPath(const UIBezierPath& path, FillRule rule, UIColor color) {
    if (path.isFinite()) _list.fill(path, rule, color);
}

void WebCanvas::strokePath(const UIBezierPath& path, CGFloat lineWidth, UIColor color) {
    if (!(lineWidth > 0) || !std::isfinite(lineWidth) || !path.isFinite()) return;
    _list.stroke(path, lineWidth, color);
}

void WebCanvas::drawImage(const UIImage& image, CGRect rect, UIColor tint) {
    if (!isDrawable(rect) || !(rect.size.width > 0 && rect.size.height > 0)) return;
    if (image.image()) _list.drawPicture(*image.image(), rect);
    if (image.glyph()) drawGlyph(*image.glyph(), rect, tint);
}

void WebCanvas::drawGlyph(const VectorGlyph& glyph, CGRect rect, UIColor tint) {
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

void WebCanvas::drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                         NSTextAlignment alignment, bool singleLine) {
    if (!isDrawable(rect) || text.empty() || (singleLine && !(rect.size.width > 0))) return;
    _list.drawText(text, font, color, rect, alignment, singleLine);
}

std::span<const uint8_t> WebCanvas::pixels() {
    if (_list.isEmpty() && !_pixels.empty()) return _pixels;
    _list.play(_id);
    _list.clear();
    _pixels.resize(static_cast<std::size_t>(_width) * static_cast<std::size_t>(_height) * 4);
    if (zentaroReadCanvas(_id, _pixels.data()) == 0) std::fill(_pixels.begin(), _pixels.end(), uint8_t{0});
    premultiplyAndSwap(_pixels);
    return _pixels;
}
