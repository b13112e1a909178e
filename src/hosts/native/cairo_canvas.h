// A Canvas on a Cairo image surface.
// Its pixels go to the GPU as they are: B, G, R, A, premultiplied.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "hosts/native/pango_text.h"
#include "platform/graphics/canvas.h"

typedef struct _cairo_surface cairo_surface_t;

class CairoCanvas : public BitmapCanvas {
  public:
    /// Null for a side that is not 1 to 32,767 pixels, or without memory.
    static std::unique_ptr<CairoCanvas> create(int32_t width, int32_t height,
                                               std::shared_ptr<PangoText> text);
    ~CairoCanvas() override;
    CairoCanvas(const CairoCanvas&) = delete;
    CairoCanvas& operator=(const CairoCanvas&) = delete;

    void save() override;
    void restore() override;
    void translate(CGFloat dx, CGFloat dy) override;
    void scale(CGFloat sx, CGFloat sy) override;
    void clipToRect(CGRect rect) override;
    void clipToPath(const UIBezierPath& path, FillRule rule) override;
    void beginTransparencyLayer(double alpha) override;
    void endTransparencyLayer() override;
    void clearRect(CGRect rect) override;
    void fillRect(CGRect rect, UIColor color) override;
    void fillPath(const UIBezierPath& path, FillRule rule, UIColor color) override;
    void strokePath(const UIBezierPath& path, CGFloat lineWidth, UIColor color) override;
    void drawImage(const UIImage& image, CGRect rect, UIColor tint) override;
    void drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                  NSTextAlignment alignment, bool singleLine) override;

    int32_t width() const override { return _width; }
    int32_t height() const override { return _height; }
    std::span<const uint8_t> pixels() override;

  private:
    CairoCanvas(cairo_surface_t* surface, int32_t width, int32_t height, std::shared_ptr<PangoText> text);
    void clipEverything();
    void drawPixels(const CGImage& image, CGRect rect);

    int32_t _width;
    int32_t _height;
    std::shared_ptr<PangoText> _text;
    cairo_surface_t* _surface;
    cairo_t* _cairo;
    /// Open saves (nothing) and layers (their opacity). Cairo gives up a context for good at the first pair
    /// that does not match, so such calls never reach it.
    std::vector<std::optional<double>> _open;
};
