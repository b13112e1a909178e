// The screen's overlay laid over a picture that comes in bands of rows, so that a large picture never needs a
// canvas of its own size.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "platform/graphics/canvas.h"
#include "platform/ui/ui_window.h"

class OverlayBands {
  public:
    /// width: the picture's, in pixels; scale: pixels per point. The window outlives this.
    OverlayBands(UIWindow& window, int32_t width, double scale)
        : _window(window), _width(width), _scale(scale) {}

    /// Blends what the window's views paint onto rows of bytes R, G, B; first is the picture's row that they
    /// begin with. NO without a canvas provider or memory.
    bool blendOnto(std::span<uint8_t> rows, int32_t first, int32_t count);

  private:
    bool paintBand(int32_t first, int32_t count);
    void blendBand(std::span<uint8_t> rows, int32_t count);

    UIWindow& _window;
    int32_t _width;
    double _scale;
    std::unique_ptr<BitmapCanvas> _canvas;
};
