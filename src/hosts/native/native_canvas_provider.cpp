// Joins Cairo canvases and Pango's text.
// Both stay out of sight of whoever paints.
#include "hosts/native/native_canvas_provider.h"

#include "hosts/native/cairo_canvas.h"
#include "hosts/native/pango_text.h"

NativeCanvasProvider::NativeCanvasProvider() : _text(std::make_shared<PangoText>()) {}

NativeCanvasProvider::~NativeCanvasProvider() = default;

std::unique_ptr<BitmapCanvas> NativeCanvasProvider::makeBitmapCanvas(int32_t width, int32_t height) {
    return CairoCanvas::create(width, height, _text);
}

CGSize NativeCanvasProvider::measureText(const std::string& text, const UIFont& font, CGFloat width) {
    return _text->measure(text, font, width);
}
