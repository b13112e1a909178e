// Joins canvases and text.
// The text engine is made with the provider, which views ask before anything is painted.
#include "hosts/web/web_canvas_provider.h"

#include "hosts/web/web_canvas.h"
#include "hosts/web/web_text.h"

WebCanvasProvider::WebCanvasProvider() {
    WebText::prepare();
}

std::unique_ptr<BitmapCanvas> WebCanvasProvider::makeBitmapCanvas(int32_t width, int32_t height) {
    return WebCanvas::create(width, height);
}

CGSize WebCanvasProvider::measureText(const std::string& text, const UIFont& font, CGFloat width) {
    return WebText::measure(text, font, width);
}
