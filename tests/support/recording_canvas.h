// A canvas that keeps a list of what was painted on it, and text of which every letter is half as wide as the
// font is high: tests of views need no host.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/host/canvas_provider.h"

class RecordingCanvas : public BitmapCanvas {
  public:
    /// One line a call, places in the canvas's own coordinates: "fill {{0, 0}, {4, 4}}".
    std::vector<std::string> calls;

    void save() override { _origins.push_back(_origin); }
    void restore() override {
        _origin = _origins.back();
        _origins.pop_back();
    }
    void translate(CGFloat dx, CGFloat dy) override { _origin = {_origin.x + dx, _origin.y + dy}; }
    void scale(CGFloat, CGFloat) override {}
    void clipToRect(CGRect rect) override { add("clip", rect); }
    void clipToPath(const UIBezierPath& path, FillRule) override { add("clip path", path.bounds()); }
    void beginTransparencyLayer(double alpha) override {
        std::ostringstream line;
        line << "layer " << std::round(alpha * 1000) / 1000;
        calls.push_back(line.str());
    }
    void endTransparencyLayer() override { calls.push_back("end layer"); }
    void clearRect(CGRect rect) override { add("clear", rect); }
    void fillRect(CGRect rect, UIColor) override { add("fill", rect); }
    void fillPath(const UIBezierPath& path, FillRule, UIColor) override { add("fill path", path.bounds()); }
    void strokePath(const UIBezierPath& path, CGFloat, UIColor) override { add("stroke", path.bounds()); }
    void drawImage(const UIImage&, CGRect rect, UIColor) override { add("image", rect); }
    void drawText(const std::string& text, const UIFont&, UIColor, CGRect rect, NSTextAlignment,
                  bool) override {
        add("text \"" + text + "\"", rect);
    }

    int32_t width() const override { return 0; }
    int32_t height() const override { return 0; }
    std::span<const uint8_t> pixels() override { return {}; }
    bool isBalanced() const { return _origins.empty(); }

  private:
    void add(const std::string& what, CGRect rect) {
        calls.push_back(what + " " + NSStringFromCGRect(CGRectOffset(rect, _origin.x, _origin.y)));
    }

    CGPoint _origin;
    std::vector<CGPoint> _origins;
};

class RecordingCanvasProvider : public CanvasProvider {
  public:
    std::unique_ptr<BitmapCanvas> makeBitmapCanvas(int32_t, int32_t) override {
        return std::make_unique<RecordingCanvas>();
    }
    /// Letters are counted in bytes, lines broken anywhere.
    CGSize measureText(const std::string& text, const UIFont& font, CGFloat width) override {
        CGSize size;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            const CGFloat length = static_cast<CGFloat>(line.size()) * font.pointSize / 2;
            const CGFloat rows = width > 0 ? std::max(1.0, std::ceil(length / width)) : 1;
            size.width = std::max(size.width, width > 0 ? std::min(length, width) : length);
            size.height += rows * font.pointSize;
        }
        return size;
    }
};

/// The recording provider stands in for the host's while this lives.
class CanvasProviderGuard {
  public:
    CanvasProviderGuard() : _former(sharedCanvasProvider()) {
        setSharedCanvasProvider(std::make_shared<RecordingCanvasProvider>());
    }
    ~CanvasProviderGuard() { setSharedCanvasProvider(_former); }
    CanvasProviderGuard(const CanvasProviderGuard&) = delete;
    CanvasProviderGuard& operator=(const CanvasProviderGuard&) = delete;

  private:
    std::shared_ptr<CanvasProvider> _former;
};
