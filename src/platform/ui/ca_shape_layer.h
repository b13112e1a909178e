// A layer that fills a path, and the animation that turns the path into another one.
// Layers are views here that answer no touches: one tree paints both.
#pragma once

#include <memory>
#include <string>

#include "platform/ui/ca_media_timing_function.h"
#include "platform/ui/ui_view.h"

class CABasicAnimation;

class CAAnimationDelegate {
  public:
    virtual ~CAAnimationDelegate() = default;
    /// With the first frame after the animation's time, finished; or after another one took its place, not.
    virtual void animationDidStop(const CABasicAnimation& animation, bool finished) = 0;
};

/// From one path to another.
class CABasicAnimation {
  public:
    static CABasicAnimation animationWithKeyPath(std::string keyPath) {
        CABasicAnimation animation;
        animation.keyPath = std::move(keyPath);
        return animation;
    }

    /// What is animated: "path".
    std::string keyPath;
    UIBezierPath fromValue;
    UIBezierPath toValue;
    double duration = 0.25;  ///< seconds
    CAMediaTimingFunction timingFunction = CAMediaTimingFunction::linear();
    std::weak_ptr<CAAnimationDelegate> delegate;
};

class CAShapeLayer : public UIView {
  public:
    explicit CAShapeLayer(CGRect frame = CGRectZero) : UIView(frame) { setUserInteractionEnabled(false); }

    const UIBezierPath& path() const { return _path; }
    /// On screen at once, unless an animation runs: then when it ends.
    void setPath(UIBezierPath path);
    FillRule fillRule() const { return _fillRule; }
    void setFillRule(FillRule rule);
    UIColor fillColor() const { return _fillColor; }
    void setFillColor(UIColor color);

    /// Begins with the next frame, in the place of one that runs. Its path is shown, the layer's own stays.
    /// Key paths other than "path" animate nothing, with a log line.
    void addAnimation(CABasicAnimation animation, const std::string& key);
    /// The layer's own path shows at once; the delegate hears of the end with the next frame.
    void removeAllAnimations();
    /// What is on screen now, animations included.
    UIBezierPath presentationPath() const;

    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return !_path.isEmpty() || _animation != nullptr; }

  private:
    UIBezierPath _path;
    FillRule _fillRule = FillRule::nonZero;
    UIColor _fillColor = UIColor::black();
    /// The one that runs.
    std::shared_ptr<const CABasicAnimation> _animation;
};
