// What may be drawn is decided here; the list and its player only draw.
// Values that are no numbers draw nothing, as on the other canvases.
#include "hosts/web/web_canvas.h"

#include <algorithm>
#include <cmath>
#include <emscripten/emscripten.h>

// clang-format off
/// Module.canvases holds, by id, {stack: contexts, the one that is painted on last; layers: those to be used again}.
EM_JS(int, zentaroMakeCanvas, (int width, int height), {
    if (!Module.canvases) {
        Module.canvases = new Map();
        Module.lastCanvas = 0;
        Module.canvasContext = function(canvas) {
            const context = canvas.getContext("2d");
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
/// Straight from canvas to texture: where both live on the GPU, the pixels never leave it, and nowhere are they
/// read back and multiplied in the program.
EM_JS(void, zentaroCopyCanvas, (int id), {
    GLctx.pixelStorei(GLctx.UNPACK_PREMULTIPLY_ALPHA_WEBGL, true);
    const canvas = Module.canvases.get(id).stack[0].canvas;
    GLctx.texImage2D(GLctx.TEXTURE_2D, 0, GLctx.RGBA, GLctx.RGBA, GLctx.UNSIGNED_BYTE, canvas);
    GLctx.pixelStorei(GLctx.UNPACK_PREMULTIPLY_ALPHA_WEBGL, false);
});
// clang-format on

namespace {

constexpr int32_t largestSide = 16384;

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
    if (isFinite(rect)) _list.clearRect(rect);
}

void WebCanvas::fillRect(CGRect rect, UIColor color) {
    if (isFinite(rect)) _list.fillRect(rect, color);
}

void WebCanvas::fillPath(const UIBezierPath& path, FillRule rule, UIColor color) {
    if (path.isFinite()) _list.fill(path, rule, color);
}

void WebCanvas::strokePath(const UIBezierPath& path, CGFloat lineWidth, UIColor color) {
    if (!(lineWidth > 0) || !std::isfinite(lineWidth) || !path.isFinite()) return;
    _list.stroke(path, lineWidth, color);
}

void WebCanvas::drawImage(const UIImage& image, CGRect rect, UIColor tint) {
    if (!isFinite(rect) || !(rect.size.width > 0 && rect.size.height > 0)) return;
    if (image.image()) _list.drawPicture(*image.image(), rect);
    if (image.glyph()) drawGlyph(*image.glyph(), rect, tint);
}

void WebCanvas::drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                         NSTextAlignment alignment, bool singleLine) {
    if (!isFinite(rect) || text.empty() || (singleLine && !(rect.size.width > 0))) return;
    _list.drawText(text, font, color, rect, alignment, singleLine);
}

bool WebCanvas::copyToTexture() {
    _list.play(_id);
    _list.clear();
    zentaroCopyCanvas(_id);
    return true;
}
