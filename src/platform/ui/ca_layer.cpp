// Shadows without a blur, which not every canvas has: rounded rectangles on top of each other, each a little
// smaller. Together they are as dense at each distance from the edge as a blurred one.
#include "platform/ui/ca_layer.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double stepsPerPoint = 3;
constexpr int mostSteps = 24;

}  // namespace

void paintShadow(Canvas& canvas, const CALayer& layer, CGRect bounds) {
    const double opacity = std::clamp(layer.shadowOpacity, 0.0, 1.0) * layer.shadowColor.alpha;
    if (opacity <= 0) return;
    const double radius = std::max(layer.shadowRadius, 0.0);
    const int steps = std::clamp(static_cast<int>(std::ceil(2 * radius * stepsPerPoint)), 1, mostSteps);
    const CGRect ground = CGRectOffset(bounds, layer.shadowOffset.width, layer.shadowOffset.height);
    double laid = 0;
    for (int i = 1; i <= steps; ++i) {
        const double share = static_cast<double>(i) / steps;
        const double dense = opacity * share * share * (3 - 2 * share);
        const CGFloat grown = radius * (1 - 2 * (share - 0.5 / steps));
        const CGRect ring = CGRectInset(ground, -grown, -grown);
        if (CGRectIsEmpty(ring)) break;
        const double alpha = laid < 1 ? (dense - laid) / (1 - laid) : 0;
        const UIBezierPath path =
            UIBezierPath::bezierPathWithRoundedRect(ring, std::max(layer.cornerRadius + grown, 0.0));
        canvas.fillPath(path, FillRule::nonZero, layer.shadowColor.withAlpha(alpha));
        laid = dense;
    }
}
