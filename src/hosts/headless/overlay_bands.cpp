// Painting is repeated for every band that the overlay reaches into, clipped by the canvas's edges.
// The pixel grid is that of the whole picture, so bands meet without a seam.
#include "hosts/headless/overlay_bands.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/host/canvas_provider.h"

namespace {

/// 16 MB of canvas for the widest picture.
constexpr int32_t kBandRows = 256;

/// What is below shows through by 1 - alpha, rounded to the nearest level.
uint8_t blend(uint8_t below, uint8_t premultiplied, uint8_t alpha) {
    const int shows = below * (255 - alpha) + 127;
    return static_cast<uint8_t>(std::min(255, premultiplied + shows / 255));
}

}  // namespace

bool OverlayBands::blendOnto(std::span<uint8_t> rows, int32_t first, int32_t count) {
    const CGRect painted = CGRectIntersection(_window.paintedFrame(), _window.bounds());
    if (CGRectIsEmpty(painted)) return true;
    const auto top = static_cast<int32_t>(std::floor(CGRectGetMinY(painted) * _scale));
    const auto bottom = static_cast<int32_t>(std::ceil(CGRectGetMaxY(painted) * _scale));
    const int32_t end = std::min(first + count, bottom);
    const std::size_t rowBytes = static_cast<std::size_t>(_width) * 3;
    for (int32_t row = std::max(first, top); row < end; row += kBandRows) {
        const int32_t band = std::min(kBandRows, end - row);
        if (!paintBand(row, band)) return false;
        blendBand(rows.subspan(static_cast<std::size_t>(row - first) * rowBytes,
                               static_cast<std::size_t>(band) * rowBytes),
                  band);
    }
    return true;
}

bool OverlayBands::paintBand(int32_t first, int32_t count) {
    if (!_canvas || _canvas->height() != count) {
        const auto provider = sharedCanvasProvider();
        _canvas = provider ? provider->makeBitmapCanvas(_width, count) : nullptr;
        if (!_canvas) return false;
    }
    _canvas->save();
    _canvas->clearRect(CGRectMake(0, 0, _width, count));
    _canvas->translate(0, -first);
    _canvas->scale(_scale, _scale);
    _window.paint(*_canvas);
    _canvas->restore();
    return true;
}

void OverlayBands::blendBand(std::span<uint8_t> rows, int32_t count) {
    const std::span<const uint8_t> over = _canvas->pixels();
    const std::size_t pixelCount = static_cast<std::size_t>(_width) * static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const uint8_t* from = &over[i * 4];
        const uint8_t alpha = from[3];
        if (alpha == 0) continue;
        uint8_t* to = &rows[i * 3];
        to[0] = blend(to[0], from[2], alpha);
        to[1] = blend(to[1], from[1], alpha);
        to[2] = blend(to[2], from[0], alpha);
    }
}
