// Targets: the frame on the screen as a small grey picture, and the candidates that are found in it.
// Runs once after each flight, never while one is under way.
#include <algorithm>
#include <cstddef>

#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"
#include "platform/gl/shader_precision.h"

namespace {

/// Palettes whose frames show nothing busy; they are sampled in palette 0.
bool isSampledInPaletteZero(int32_t palette) {
    return palette == 3 || palette == 6 || palette == 7;
}

}  // namespace

void GameViewController::sampleFrame() {
    const bool otherPalette = isSampledInPaletteZero(fractalColoring);
    const bool otherType = _fractalType == FractalType::julia;
    if (otherPalette) _shader->setFractalColoring(0);
    if (otherType) {
        // A Julia view is sampled from the Mandelbrot picture of the same rectangle.
        _shader->setFractalType(FractalType::mandelbrot);
        _shader->renderInRect(view()->frame(), 0);
    }
    drawFrameIntoSamplingBitmap();
    if (otherType) _shader->setFractalType(FractalType::julia);
    if (otherPalette) _shader->setFractalColoring(fractalColoring);
}

void GameViewController::drawFrameIntoSamplingBitmap() {
    const auto view = glkView();
    const UIImageRef frame = view ? view->snapshot() : nullptr;
    if (!frame) {
        // Without OpenGL nothing is on the screen, and nothing is busy.
        std::fill_n(_textureBuffer.get(),
                    static_cast<std::size_t>(texture_width) * static_cast<std::size_t>(texture_height),
                    uint8_t{0});
        return;
    }
    CGBitmapContext bitmap(_textureBuffer.get(), texture_width, texture_height, texture_depth * texture_width,
                           _textureColorSpaceRef);
    bitmap.drawImage(CGRectMake(0, 0, texture_width, texture_height), *frame->image());
}

bool GameViewController::isInterestingX(int32_t x, int32_t y) const {
    return isInteresting(samplingBitmap(), {x, y});
}

int32_t GameViewController::shaderPrecisionBits() {
    if (!_shaderPrecisionBits) _shaderPrecisionBits = vertexHighFloatPrecisionBits();
    return *_shaderPrecisionBits;
}

void GameViewController::addNewTarget() {
    const SamplingBitmap bitmap = samplingBitmap();
    const auto pixel = findInterestingPixel(bitmap, RandomSource::shared());
    if (!pixel) return;
    FractalBounds target = targetAround(*pixel, bitmap, _shader->fractalBounds());
    const TargetPrecision precision = precisionOf(target, bitmap, shaderPrecisionBits());
    if (!precision.isEnough()) {
        NSLog("Failed precision needed: %Lg; have: %Lg (/10: %Lg)", static_cast<long double>(precision.step),
              static_cast<long double>(precision.eps), static_cast<long double>(precision.eps / 10));
        _targets.clear();
        target = rectifiedBoundsFor(sourceBounds);
    }
    _targets.push_back(target);
}
