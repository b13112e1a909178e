// How views paint: back to front, clipped by scroll views alone, each at its presentation values.
// A layer of its own for see-through trees only: it is what costs.
#include <typeinfo>

#include "platform/ui/ui_view.h"

namespace {

constexpr CGFloat layerMargin = 16;

}  // namespace

bool UIView::drawsContent() const {
    return typeid(*this) != typeid(UIView);
}

void UIView::paint(Canvas& canvas) {
    const double alpha = presentationAlpha();
    if (_hidden || alpha <= 0) return;
    const CGRect frame = presentationFrame();
    canvas.save();
    canvas.translate(frame.origin.x, frame.origin.y);
    // A layer costs a picture of its own: only what is seen through needs one, and only if there is
    // something.
    const CGRect painted = alpha < 1 ? paintedFrame() : CGRectNull;
    const bool layer = !CGRectIsNull(painted);
    if (layer) {
        // Its picture need not be larger than what is seen, letters that stick out included.
        const CGRect own = CGRectOffset(painted, -frame.origin.x, -frame.origin.y);
        canvas.clipToRect(CGRectInset(CGRectIntegral(own), -layerMargin, -layerMargin));
        canvas.beginTransparencyLayer(alpha);
    }
    paintContents(canvas, frame.size);
    if (layer) canvas.endTransparencyLayer();
    canvas.restore();
}

void UIView::paintContents(Canvas& canvas, CGSize size) {
    const CGRect area{CGPointZero, size};
    if (!drawsThroughGL() && !CGRectIsEmpty(area)) {
        const CGRect ground = backgroundArea(area);
        if (_backgroundColor.alpha > 0 && _cornerRadius > 0) {
            canvas.fillPath(UIBezierPath::bezierPathWithRoundedRect(ground, _cornerRadius), FillRule::nonZero,
                            _backgroundColor);
        } else if (_backgroundColor.alpha > 0) {
            canvas.fillRect(ground, _backgroundColor);
        }
        drawRect(canvas, area);
    }
    const bool clips = clipsToBounds();
    if (clips) {
        canvas.save();
        canvas.clipToRect(area);
    }
    for (const auto& view : _subviews)
        view->paint(canvas);
    if (clips) canvas.restore();
}

CGRect UIView::paintedFrame() const {
    if (_hidden || presentationAlpha() <= 0) return CGRectNull;
    const CGRect frame = presentationFrame();
    const bool paints = !drawsThroughGL() && (_backgroundColor.alpha > 0 || drawsContent());
    const CGRect ground = backgroundArea({CGPointZero, frame.size});
    CGRect painted =
        paints && !CGRectIsEmpty(ground) ? CGRectOffset(ground, frame.origin.x, frame.origin.y) : CGRectNull;
    for (const auto& view : _subviews) {
        CGRect below = view->paintedFrame();
        if (clipsToBounds()) below = CGRectIntersection(below, {CGPointZero, frame.size});
        if (CGRectIsNull(below)) continue;
        painted = CGRectUnion(painted, CGRectOffset(below, frame.origin.x, frame.origin.y));
    }
    return painted;
}
