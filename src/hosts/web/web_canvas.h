// A Canvas on the browser's 2D canvas.
// Calls gather in a list and reach the browser when they are wanted as a texture.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "hosts/web/display_list.h"
#include "platform/graphics/canvas.h"

class WebCanvas : public BitmapCanvas {
  public:
    /// Null for a side that is not 1 to 16,384 pixels, or where the browser gives no canvas.
    static std::unique_ptr<WebCanvas> create(int32_t width, int32_t height);
    ~WebCanvas() override;
    WebCanvas(const WebCanvas&) = delete;
    WebCanvas& operator=(const WebCanvas&) = delete;

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
    bool copyToTexture() override;

  private:
    WebCanvas(int id, int32_t width, int32_t height) : _id(id), _width(width), _height(height) {}
    void clipEverything();

    /// The browser's canvas.
    int _id;
    int32_t _width;
    int32_t _height;
    DisplayList _list;
    /// Open saves (nothing) and layers (their opacity): pairs that do not match never reach the browser.
    std::vector<std::optional<double>> _open;
};
