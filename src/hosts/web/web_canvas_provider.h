// Canvases and text measured for them, by the browser.
// Painting and measuring share one text engine.
#pragma once

#include "platform/host/canvas_provider.h"

class WebCanvasProvider : public CanvasProvider {
  public:
    WebCanvasProvider();
    std::unique_ptr<BitmapCanvas> makeBitmapCanvas(int32_t width, int32_t height) override;
    CGSize measureText(const std::string& text, const UIFont& font, CGFloat width) override;
};
