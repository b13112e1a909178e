// Host contract: canvases to paint on and text to measure.
// Measuring and drawing go through one engine, so that text fits where it was measured.
#pragma once

#include <memory>
#include <string>

#include "platform/foundation/geometry.h"
#include "platform/graphics/canvas.h"
#include "platform/graphics/ui_font.h"

class CanvasProvider {
  public:
    virtual ~CanvasProvider() = default;

    /// A transparent canvas of that many pixels, drawn on in pixels until scaled. Null for an impossible
    /// size.
    virtual std::unique_ptr<BitmapCanvas> makeBitmapCanvas(int32_t width, int32_t height) = 0;

    /// The size in points, rounded up, that drawText needs: at most `width` wide (wrapped there), as high as
    /// its lines. A width of 0 or less means one unwrapped line per line end.
    virtual CGSize measureText(const std::string& text, const UIFont& font, CGFloat width) = 0;
};

/// The provider of this run; the host sets it at start. Null where there is none.
std::shared_ptr<CanvasProvider> sharedCanvasProvider();
void setSharedCanvasProvider(std::shared_ptr<CanvasProvider> provider);
