// Canvases and text measures for every host with a file system and fonts.
// All of them share one text engine, which starts with the first text.
#pragma once

#include <memory>

#include "platform/host/canvas_provider.h"

class PangoText;

class NativeCanvasProvider : public CanvasProvider {
  public:
    NativeCanvasProvider();
    ~NativeCanvasProvider() override;

    std::unique_ptr<BitmapCanvas> makeBitmapCanvas(int32_t width, int32_t height) override;
    CGSize measureText(const std::string& text, const UIFont& font, CGFloat width) override;

  private:
    std::shared_ptr<PangoText> _text;
};
