// Where frames go: the screen, a retained drawable, a snapshot, or the tiles of a large picture.
// Tiles shift the viewport of the whole picture, so that every pixel is computed as in one piece.
#include "platform/gl/glk_view.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_screen.h"

namespace {

/// Rows of one band of tiles: bounds the memory of a band 16384 pixels wide to some 25 MB.
constexpr int32_t bandRows = 512;

int32_t pixels(CGFloat points) {
    return std::max<int32_t>(1, static_cast<int32_t>(std::lround(points * UIScreen::mainScreen().scale())));
}

/// The clear colour is the delegate's, and stays it.
void clearScreenToBlack() {
    GLfloat color[4] = {};
    glGetFloatv(GL_COLOR_CLEAR_VALUE, color);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glClearColor(color[0], color[1], color[2], color[3]);
}

/// Copies a picture's pixels as R, G, B into rows of rowPixels pixels, from column x of the first row on.
void copyRGB(const CGImage& tile, std::vector<uint8_t>& rows, int32_t rowPixels, int32_t x) {
    for (int32_t y = 0; y < tile.height(); ++y) {
        uint8_t* to = rows.data() + 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(rowPixels) +
                                         static_cast<std::size_t>(x));
        for (int32_t column = 0; column < tile.width(); ++column) {
            const CGImage::Color color = tile.colorAt(column, y);
            *to++ = color.red;
            *to++ = color.green;
            *to++ = color.blue;
        }
    }
}

}  // namespace

GLKView::~GLKView() = default;

void GLKView::setContext(std::shared_ptr<EAGLContext> context) {
    if (_context != context) {
        _offscreen.reset();
        _reduced.reset();
        _refusedSize = {};
    }
    if (!context) {
        _snapshot = nullptr;
        _snapshotPixels = nullptr;
    }
    _context = std::move(context);
}

void GLKView::setDrawableColorFormat(GLKViewDrawableColorFormat format) {
    if (_colorFormat != format) _offscreen.reset();
    _colorFormat = format;
}

int32_t GLKView::drawableWidth() const {
    return pixels(bounds().size.width);
}
int32_t GLKView::drawableHeight() const {
    return pixels(bounds().size.height);
}

void GLKView::bindScreen() {
    glBindFramebuffer(GL_FRAMEBUFFER, _context->surface().screenFramebuffer());
}

OffscreenDrawable* GLKView::offscreenDrawable(int32_t width, int32_t height) {
    if (!_offscreen || _offscreen->width() != width || _offscreen->height() != height) {
        _offscreen.reset();
        _offscreen = OffscreenDrawable::make(width, height, _colorFormat == GLKViewDrawableColorFormatRGB565);
    }
    if (_offscreen) _offscreen->bind();
    return _offscreen.get();
}

void GLKView::drawThroughDelegate(int32_t viewportX, int32_t viewportY) {
    glViewport(viewportX, viewportY, drawableWidth(), drawableHeight());
    if (_delegate) _delegate->glkViewDrawInRect(*this, bounds());
}

GLKView::PixelRect GLKView::placeOnScreen() const {
    const double scale = UIScreen::mainScreen().scale();
    const CGRect place = convertRectToWindow(bounds());
    const auto bottom = static_cast<int32_t>(std::lround(CGRectGetMaxY(place) * scale));
    return {static_cast<int32_t>(std::lround(CGRectGetMinX(place) * scale)),
            _context->surface().pixelHeight() - bottom, drawableWidth(), drawableHeight()};
}

/// In 32-bit colour like the screen: its bands would be wide ones otherwise. Without memory for it, nothing.
void GLKView::drawReduced() {
    const auto side = [&](int32_t pixels) {
        return std::max<int32_t>(1, static_cast<int32_t>(std::lround(pixels * _drawableScale)));
    };
    const int32_t width = side(drawableWidth());
    const int32_t height = side(drawableHeight());
    const CGSize size = CGSizeMake(width, height);
    if (!_reduced || _reduced->width() != width || _reduced->height() != height) {
        _reduced.reset();
        if (size == _refusedSize) return;
        _reduced = OffscreenDrawable::make(width, height, false);
        _refusedSize = _reduced ? CGSize{} : size;
    }
    if (!_reduced) return;
    _reduced->bind();
    glViewport(0, 0, width, height);
    _reducedSize = size;
    if (_delegate) _delegate->glkViewDrawInRect(*this, bounds());
    _reducedSize = {};
}

bool GLKView::display() {
    if (!_context) return false;
    if (_retainedBacking) {
        if (!offscreenDrawable(drawableWidth(), drawableHeight())) return false;
        drawThroughDelegate(0, 0);
    }
    const bool wantsReduced = !_retainedBacking && _drawableScale < 1;
    if (wantsReduced) drawReduced();
    if (!wantsReduced) _reduced.reset();
    bindScreen();
    const PixelRect place = placeOnScreen();
    const GLSurface& surface = _context->surface();
    const bool fillsScreen = place.width >= surface.pixelWidth() && place.height >= surface.pixelHeight();
    if (!fillsScreen) clearScreenToBlack();
    if (displayedDrawable()) return true;
    if (!fillsScreen) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(place.x, place.y, place.width, place.height);
    }
    drawThroughDelegate(place.x, place.y);
    glDisable(GL_SCISSOR_TEST);
    return true;
}

bool GLKView::displayNothing() {
    if (!_context) return false;
    bindScreen();
    clearScreenToBlack();
    return true;
}

const OffscreenDrawable* GLKView::displayedDrawable() const {
    return _retainedBacking ? _offscreen.get() : _reduced.get();
}

UIImageRef GLKView::snapshot() {
    if (!_context) return nullptr;
    OffscreenDrawable* drawable = offscreenDrawable(drawableWidth(), drawableHeight());
    if (!drawable) return nullptr;
    drawThroughDelegate(0, 0);
    const int32_t width = drawable->width();
    const int32_t height = drawable->height();
    if (snapshotIsFree(*drawable)) {
        *_snapshotPixels = drawable->read(width, height, std::move(*_snapshotPixels).takePixels());
    } else {
        _snapshotPixels = std::make_shared<CGImage>(drawable->read(width, height));
        _snapshot = UIImage::imageWithCGImage(_snapshotPixels);
    }
    bindScreen();
    return _snapshot;
}

bool GLKView::snapshotIsFree(const OffscreenDrawable& drawable) const {
    if (!_snapshot || _snapshot.use_count() > 1 || _snapshotPixels.use_count() > 2) return false;
    // Whoever let go of it last may have done so on another thread.
    std::atomic_thread_fence(std::memory_order_acquire);
    return _snapshotPixels->width() == drawable.width() && _snapshotPixels->height() == drawable.height();
}

bool GLKView::snapshotInTiles(int32_t maxTile, const RowSink& sink) {
    if (!_context) return false;
    GLint largest[2] = {};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largest);
    const int32_t width = drawableWidth();
    const int32_t height = drawableHeight();
    if (width > largest[0] || height > largest[1]) {
        NSLog("This GPU draws pictures of at most %dx%d pixels", largest[0], largest[1]);
        return false;
    }
    GLint textureLimit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &textureLimit);
    const int32_t limit = maxTile > 0 ? std::min(maxTile, textureLimit) : textureLimit;
    const int32_t tileWidth = std::min(width, limit);
    const int32_t tileHeight = std::min({height, limit, bandRows});
    const auto tile = OffscreenDrawable::make(tileWidth, tileHeight, false);
    if (!tile) return false;

    std::vector<uint8_t> rows(3 * static_cast<std::size_t>(width) * static_cast<std::size_t>(tileHeight));
    bool wanted = true;
    for (int32_t top = 0; top < height && wanted; top += tileHeight) {
        const int32_t count = std::min(tileHeight, height - top);
        for (int32_t left = 0; left < width; left += tileWidth) {
            tile->bind();
            drawThroughDelegate(-left, top + count - height);
            copyRGB(tile->read(std::min(tileWidth, width - left), count), rows, width, left);
        }
        wanted =
            sink({rows.data(), 3 * static_cast<std::size_t>(width) * static_cast<std::size_t>(count)}, count);
    }
    bindScreen();
    return wanted;
}

void GLKView::contextLost() {
    for (auto* drawable : {&_offscreen, &_reduced}) {
        if (*drawable) (*drawable)->forget();
        drawable->reset();
    }
    _context = nullptr;
}
