// The animation's time is the view animations' clock: a step repaints the layer, the end runs the delegate.
// An animation that stands still has none and costs nothing.
#include "platform/ui/ca_shape_layer.h"

#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/graphics/path_interpolation.h"
#include "platform/ui/view_animator.h"

void CAShapeLayer::setPath(UIBezierPath path) {
    _path = std::move(path);
    setNeedsDisplay();
}

void CAShapeLayer::setFillRule(FillRule rule) {
    _fillRule = rule;
    setNeedsDisplay();
}

void CAShapeLayer::setFillColor(UIColor color) {
    _fillColor = color;
    setNeedsDisplay();
}

void CAShapeLayer::addAnimation(CABasicAnimation animation, const std::string& key) {
    if (animation.keyPath != "path") {
        NSLog("CAShapeLayer: no animation of \"%s\" (%s)", animation.keyPath.c_str(), key.c_str());
        return;
    }
    const auto added = std::make_shared<const CABasicAnimation>(std::move(animation));
    _animation = added;
    const auto stopped = [life = weak_from_this(), added](bool finished) {
        const auto self = std::static_pointer_cast<CAShapeLayer>(life.lock());
        if (self && self->_animation == added) {
            self->_animation = nullptr;
            self->setNeedsDisplay();
        }
        if (const auto delegate = added->delegate.lock()) delegate->animationDidStop(*added, finished);
    };
    ViewAnimator& animator = ViewAnimator::shared();
    animator.beginBlock({added->duration, 0, false, std::nullopt, added->timingFunction}, stopped);
    animator.progressStarts(*this);
    animator.endBlock();
    setNeedsDisplay();
}

void CAShapeLayer::removeAllAnimations() {
    _animation = nullptr;
    ViewAnimator::shared().progressStops(*this);
    setNeedsDisplay();
}

UIBezierPath CAShapeLayer::presentationPath() const {
    if (!_animation) return _path;
    return interpolatedPath(_animation->fromValue, _animation->toValue,
                            ViewAnimator::shared().progressOnScreen(*this));
}

void CAShapeLayer::drawRect(Canvas& canvas, CGRect) {
    canvas.fillPath(presentationPath(), _fillRule, _fillColor);
}
