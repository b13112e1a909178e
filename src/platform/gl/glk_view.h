// The view whose picture comes from OpenGL: it binds a drawable, lets its delegate draw, and reads frames
// back. The overlay lies above it; see screen_compositor.h for how the two meet.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include "platform/gl/eagl_context.h"
#include "platform/gl/offscreen_drawable.h"
#include "platform/ui/ui_view.h"

enum class GLKViewDrawableColorFormat { RGBA8888, RGB565 };
enum class GLKViewDrawableDepthFormat { none };
inline constexpr auto GLKViewDrawableColorFormatRGB565 = GLKViewDrawableColorFormat::RGB565;
inline constexpr auto GLKViewDrawableDepthFormatNone = GLKViewDrawableDepthFormat::none;

class GLKView;

class GLKViewDelegate {
  public:
    virtual ~GLKViewDelegate() = default;
    /// Draws one frame into the bound drawable; rect is the view's bounds in points.
    virtual void glkViewDrawInRect(GLKView& view, CGRect rect) = 0;
};

class GLKView : public UIView {
  public:
    using UIView::UIView;
    ~GLKView() override;

    const std::shared_ptr<EAGLContext>& context() const { return _context; }
    void setContext(std::shared_ptr<EAGLContext> context);
    GLKViewDrawableDepthFormat drawableDepthFormat() const { return _depthFormat; }
    void setDrawableDepthFormat(GLKViewDrawableDepthFormat format) { _depthFormat = format; }
    GLKViewDrawableColorFormat drawableColorFormat() const { return _colorFormat; }
    void setDrawableColorFormat(GLKViewDrawableColorFormat format);
    void setDelegate(GLKViewDelegate* delegate) { _delegate = delegate; }

    /// Off (the default): frames go straight into the screen's framebuffer, which has at least the colour
    /// depth asked for, and the delegate must draw every one. On: they go into a drawable of the view's own,
    /// in its format, that keeps the last frame while the delegate draws nothing, at the cost of one more
    /// pass over the screen.
    void setRetainedBacking(bool retained) { _retainedBacking = retained; }

    /// Below 1: frames on the screen are drawn into a smaller drawable, so many pixels per pixel of the
    /// screen along each side, and scaled up. Snapshots keep all pixels. At 1 (the default) it costs nothing;
    /// it does nothing with a retained backing.
    void setDrawableScale(double scale) { _drawableScale = scale; }
    /// The pixels of the frame that is being drawn if it is such a reduced one; zero otherwise.
    CGSize reducedSize() const { return _reducedSize; }

    /// Pixels: the bounds times the screen's scale, rounded.
    int32_t drawableWidth() const;
    int32_t drawableHeight() const;

    /// GL's way: from the bottom left of the screen.
    struct PixelRect {
        int32_t x = 0;
        int32_t y = 0;
        int32_t width = 0;
        int32_t height = 0;
    };
    /// Where on the screen the view lies. Needs a context.
    PixelRect placeOnScreen() const;

    /// Draws one frame through the delegate, black around it where the view leaves screen free; false without
    /// a context.
    bool display();
    /// In the place of a frame, where another screen covers the view: black.
    bool displayNothing();
    /// Where the last frame lies if not in the screen's framebuffer; null otherwise.
    const OffscreenDrawable* displayedDrawable() const;

    /// The frame as an image of the drawable's pixel size, drawn once more through the delegate into a
    /// drawable of the view's format; null without a context.
    UIImageRef snapshot();

    /// Receives complete rows of the picture from the top: bytes R, G, B, 3 * drawableWidth() a row. Answers
    /// NO to stop.
    using RowSink = std::function<bool(std::span<const uint8_t> rows, int32_t count)>;
    /// Like snapshot, for pictures that are kept: in 32-bit colour, and larger than a framebuffer may be.
    /// Drawn in tiles of at most maxTile pixels a side (0: what the GPU allows) that meet without a seam. NO
    /// without a context, past the GPU's largest viewport, or if stopped.
    bool snapshotInTiles(int32_t maxTile, const RowSink& sink);

    /// Forgets every GL object without deleting it (the context died with them).
    void contextLost();
    bool drawsThroughGL() const override { return true; }

  private:
    OffscreenDrawable* offscreenDrawable(int32_t width, int32_t height);
    void drawReduced();
    bool snapshotIsFree(const OffscreenDrawable& drawable) const;
    void bindScreen();
    void drawThroughDelegate(int32_t viewportX, int32_t viewportY);

    std::shared_ptr<EAGLContext> _context;
    GLKViewDrawableColorFormat _colorFormat = GLKViewDrawableColorFormat::RGBA8888;
    GLKViewDrawableDepthFormat _depthFormat = GLKViewDrawableDepthFormat::none;
    GLKViewDelegate* _delegate = nullptr;
    bool _retainedBacking = false;
    double _drawableScale = 1;
    CGSize _reducedSize;
    /// In pixels: what the GPU had no memory for is not asked for again every frame.
    CGSize _refusedSize;
    /// Null while frames are drawn at full scale.
    std::unique_ptr<OffscreenDrawable> _reduced;
    /// Made by the first snapshot, and kept while its size lasts.
    std::unique_ptr<OffscreenDrawable> _offscreen;
    /// The last snapshot and its pixels, whose memory the next one takes if nobody else holds them by then:
    /// the autopilot looks at a frame every five seconds, for hours.
    UIImageRef _snapshot;
    std::shared_ptr<CGImage> _snapshotPixels;
};
