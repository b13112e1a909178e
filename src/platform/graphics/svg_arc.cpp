// From an arc's ends to its centre, and from there to curves.
// Follows SVG 1.1 appendix F.6 step by step.
#include "platform/graphics/svg_arc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// Start and extent are angles on the ellipse before its rotation.
struct CentreArc {
    CGPoint centre;
    CGFloat rx;
    CGFloat ry;
    CGFloat cosine;
    CGFloat sine;
    CGFloat start;
    CGFloat extent;

    CGPoint fromUnitCircle(CGFloat x, CGFloat y) const {
        return {centre.x + cosine * rx * x - sine * ry * y, centre.y + sine * rx * x + cosine * ry * y};
    }
};

/// F.6.5, and F.6.6: radii that are too small grow until they just reach.
CentreArc centreArc(CGPoint from, CGPoint to, const SVGArc& arc) {
    CentreArc result{};
    result.cosine = std::cos(arc.rotation);
    result.sine = std::sin(arc.rotation);
    const CGFloat halfX = (from.x - to.x) / 2;
    const CGFloat halfY = (from.y - to.y) / 2;
    // The start on the unit circle that the ellipse becomes; the end lies opposite.
    CGFloat x = (result.cosine * halfX + result.sine * halfY) / std::abs(arc.rx);
    CGFloat y = (result.cosine * halfY - result.sine * halfX) / std::abs(arc.ry);
    const CGFloat growth = std::max(1.0, std::hypot(x, y));
    result.rx = std::abs(arc.rx) * growth;
    result.ry = std::abs(arc.ry) * growth;
    x /= growth;
    y /= growth;
    const CGFloat away =
        std::sqrt(std::max(0.0, 1 / (x * x + y * y) - 1)) * (arc.large == arc.sweep ? -1 : 1);
    const CGFloat cx = away * y;
    const CGFloat cy = -away * x;
    result.centre = {(from.x + to.x) / 2, (from.y + to.y) / 2};
    result.centre = result.fromUnitCircle(cx, cy);
    result.start = std::atan2(y - cy, x - cx);
    result.extent = std::atan2(-y - cy, -x - cx) - result.start;
    constexpr CGFloat turn = 2 * std::numbers::pi;
    if (arc.sweep && result.extent < 0) result.extent += turn;
    if (!arc.sweep && result.extent > 0) result.extent -= turn;
    return result;
}

/// So many that each is a quarter turn at most, where a curve strays by less than 3e-4 of the radius.
int curveCount(CGFloat extent) {
    const CGFloat quarters = std::abs(extent) / (std::numbers::pi / 2);
    return std::isfinite(quarters) ? std::clamp(static_cast<int>(std::ceil(quarters - 1e-9)), 1, 4) : 1;
}

}  // namespace

void addSVGArc(UIBezierPath& path, CGPoint from, CGPoint to, const SVGArc& shape) {
    const CentreArc arc = centreArc(from, to, shape);
    const int count = curveCount(arc.extent);
    const CGFloat step = arc.extent / count;
    const CGFloat reach = 4.0 / 3 * std::tan(step / 4);
    for (int i = 0; i < count; ++i) {
        const CGFloat a = arc.start + step * i;
        const CGFloat b = a + step;
        const CGPoint end = i == count - 1 ? to : arc.fromUnitCircle(std::cos(b), std::sin(b));
        const CGPoint control1 =
            arc.fromUnitCircle(std::cos(a) - reach * std::sin(a), std::sin(a) + reach * std::cos(a));
        const CGPoint control2 =
            arc.fromUnitCircle(std::cos(b) + reach * std::sin(b), std::sin(b) - reach * std::cos(b));
        path.addCurveToPoint(end, control1, control2);
    }
}
