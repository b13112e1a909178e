// One frame on the screen: the GL view's drawing, a drawable of its own where it has one, then the overlay.
// An overlay that did not change costs one blended rectangle of its own size; none costs nothing.
#include "platform/gl/screen_compositor.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/gl/glk_view_controller.h"
#include "platform/gl/screen_reader.h"
#include "platform/gl/textured_quad.h"
#include "platform/host/canvas_provider.h"
#include "platform/ui/ui_screen.h"

namespace {

/// The views above the GL view as one texture, as large as what they paint.
class OverlayTexture {
  public:
    void repaint(UIWindow& window) {
        const double scale = UIScreen::mainScreen().scale();
        const CGRect painted = CGRectIntersection(window.paintedFrame(), window.bounds());
        _pixels = CGRectIsEmpty(painted) ? CGRectZero : scaledOut(painted, scale);
        if (CGRectIsEmpty(_pixels)) return;
        if (!ensureCanvas(static_cast<int32_t>(_pixels.size.width),
                          static_cast<int32_t>(_pixels.size.height))) {
            _pixels = CGRectZero;
            return;
        }
        _canvas->save();
        _canvas->clearRect({CGPointZero, _pixels.size});
        _canvas->translate(-_pixels.origin.x, -_pixels.origin.y);
        _canvas->scale(scale, scale);
        window.paint(*_canvas);
        _canvas->restore();
        upload();
    }

    void draw(TexturedQuad& quad, double screenWidth, double screenHeight) const {
        if (CGRectIsEmpty(_pixels)) return;
        const auto clipX = [&](double x) { return static_cast<float>(x / screenWidth * 2 - 1); };
        const auto clipY = [&](double y) { return static_cast<float>(1 - y / screenHeight * 2); };
        quad.draw(_texture,
                  {clipX(CGRectGetMinX(_pixels)), clipY(CGRectGetMinY(_pixels)),
                   clipX(CGRectGetMaxX(_pixels)), clipY(CGRectGetMaxY(_pixels))},
                  TexturedQuad::Layer::over);
    }

    void forget() {
        _texture = 0;
        _textureWidth = 0;
        _textureHeight = 0;
    }

  private:
    static CGRect scaledOut(CGRect points, double scale) {
        return CGRectIntegral(CGRectMake(points.origin.x * scale, points.origin.y * scale,
                                         points.size.width * scale, points.size.height * scale));
    }

    bool ensureCanvas(int32_t width, int32_t height) {
        if (_canvas && _canvas->width() == width && _canvas->height() == height) return true;
        const auto provider = sharedCanvasProvider();
        _canvas = provider ? provider->makeBitmapCanvas(width, height) : nullptr;
        return _canvas != nullptr;
    }

    void upload() {
        GLint bound = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        if (_texture == 0) makeTexture();
        glBindTexture(GL_TEXTURE_2D, _texture);
        if (!_canvas->copyToTexture()) copyPixels();
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
    }

    void copyPixels() {
        const GLsizei width = _canvas->width();
        const GLsizei height = _canvas->height();
        const uint8_t* pixels = rgbaPixels();
        if (width == _textureWidth && height == _textureHeight) {
            glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
        } else {
            glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
            _textureWidth = width;
            _textureHeight = height;
        }
    }

    void makeTexture() {
        glGenTextures(1, &_texture);
        glBindTexture(GL_TEXTURE_2D, _texture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }

    /// The canvas's B, G, R, A as the R, G, B, A of a GL texture: done once a repaint instead of once a
    /// frame.
    const uint8_t* rgbaPixels() {
        const auto& pixels = _canvas->pixels();
        _rgba.resize(pixels.size());
        // Bytes 0 and 2 change places whichever way words lie in memory; by words, many at once.
        for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
            uint32_t pixel = 0;
            std::memcpy(&pixel, &pixels[i], sizeof pixel);
            constexpr uint32_t kept = std::endian::native == std::endian::little ? 0xFF00FF00 : 0x00FF00FF;
            pixel = (pixel & kept) | (std::rotl(pixel, 16) & ~kept);
            std::memcpy(&_rgba[i], &pixel, sizeof pixel);
        }
        return _rgba.data();
    }

    std::unique_ptr<BitmapCanvas> _canvas;
    std::vector<uint8_t> _rgba;
    /// Pixels from the screen's top left; empty while nothing is painted.
    CGRect _pixels;
    GLuint _texture = 0;
    GLsizei _textureWidth = 0;
    GLsizei _textureHeight = 0;
};

class ScreenCompositor : public FramePresenter {
  public:
    void presentFrame(UIWindow& window, double time, bool overlayChanged) override {
        UIViewController& root = *window.rootViewController();
        auto* const view = dynamic_cast<GLKView*>(root.view().get());
        const auto* const controller = dynamic_cast<GLKViewController*>(&root);
        const bool isCovered = controller && controller->isCovered();
        if (!view || !(isCovered ? view->displayNothing() : view->display())) return;
        GLSurface& surface = view->context()->surface();
        if (const auto* drawable = isCovered ? nullptr : view->displayedDrawable()) {
            const GLKView::PixelRect place = view->placeOnScreen();
            glViewport(place.x, place.y, place.width, place.height);
            _quad.draw(drawable->texture(), {}, TexturedQuad::Layer::below);
        }
        glViewport(0, 0, surface.pixelWidth(), surface.pixelHeight());
        // Fonts and icons wait until the first frame is on the screen.
        _overlayStale = _overlayStale || overlayChanged;
        if (_presentedOnce && _overlayStale) {
            _overlay.repaint(window);
            _overlayStale = false;
        }
        if (_presentedOnce) _overlay.draw(_quad, surface.pixelWidth(), surface.pixelHeight());
        captureScreen(surface, time);
        surface.present();
        _presentedOnce = true;
    }

    void contextLost(UIWindow& window) override {
        _quad.forget();
        _overlay.forget();
        _overlayStale = true;
        auto* controller = dynamic_cast<GLKViewController*>(window.rootViewController().get());
        if (!controller) return;
        if (const auto view = controller->glkView()) view->contextLost();
        controller->contextLost();
    }

  private:
    TexturedQuad _quad;
    OverlayTexture _overlay;
    bool _overlayStale = true;
    bool _presentedOnce = false;
};

}  // namespace

std::unique_ptr<FramePresenter> makeScreenCompositor() {
    return std::make_unique<ScreenCompositor>();
}
