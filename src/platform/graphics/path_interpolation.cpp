// Both paths become lists of curves, equally many in each pair of contours, which are mixed point by point.
// Contours are paired in their order, curves by their place along the contour.
#include "platform/graphics/path_interpolation.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

struct Curve {
    CGPoint control1;
    CGPoint control2;
    CGPoint end;
};

struct Contour {
    CGPoint start;
    std::vector<Curve> curves;
    bool closed = false;

    CGPoint end() const { return curves.empty() ? start : curves.back().end; }
};

CGPoint mix(CGPoint from, CGPoint to, double progress) {
    return {from.x + (to.x - from.x) * progress, from.y + (to.y - from.y) * progress};
}

Curve line(CGPoint from, CGPoint to) {
    return {mix(from, to, 1.0 / 3), mix(from, to, 2.0 / 3), to};
}

std::vector<Contour> contoursOf(const UIBezierPath& path) {
    std::vector<Contour> contours;
    for (const UIBezierPath::Element& element : path.elements()) {
        const auto& p = element.points;
        if (element.verb == UIBezierPath::Verb::move || contours.empty())
            contours.push_back({p[2], {}, false});
        Contour& last = contours.back();
        switch (element.verb) {
            case UIBezierPath::Verb::move:
                break;
            case UIBezierPath::Verb::line:
                last.curves.push_back(line(last.end(), p[2]));
                break;
            case UIBezierPath::Verb::curve:
                last.curves.push_back({p[0], p[1], p[2]});
                break;
            case UIBezierPath::Verb::close:
                if (last.end() != last.start) last.curves.push_back(line(last.end(), last.start));
                last.closed = true;
        }
    }
    return contours;
}

/// Curves without length come in between until there are so many.
void fillUp(Contour& contour, std::size_t count) {
    const std::size_t present = contour.curves.size();
    if (present >= count) return;
    std::vector<Curve> filled;
    CGPoint at = contour.start;
    std::size_t next = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (next < present && i * present >= next * count) {
            filled.push_back(contour.curves[next++]);
            at = filled.back().end;
        } else {
            filled.push_back({at, at, at});
        }
    }
    contour.curves = std::move(filled);
}

/// What has no counterpart grows out of its middle, or shrinks into it.
Contour pointIn(const Contour& other) {
    CGPoint middle = other.start;
    for (const Curve& curve : other.curves)
        middle = {middle.x + curve.end.x, middle.y + curve.end.y};
    const auto count = static_cast<CGFloat>(other.curves.size() + 1);
    return {{middle.x / count, middle.y / count}, {}, other.closed};
}

void appendMixed(UIBezierPath& path, Contour from, Contour to, double progress) {
    const std::size_t count = std::max(from.curves.size(), to.curves.size());
    fillUp(from, count);
    fillUp(to, count);
    path.moveToPoint(mix(from.start, to.start, progress));
    for (std::size_t i = 0; i < count; ++i) {
        const Curve& a = from.curves[i];
        const Curve& b = to.curves[i];
        path.addCurveToPoint(mix(a.end, b.end, progress), mix(a.control1, b.control1, progress),
                             mix(a.control2, b.control2, progress));
    }
    if (to.closed) path.closePath();
}

}  // namespace

UIBezierPath interpolatedPath(const UIBezierPath& from, const UIBezierPath& to, double progress) {
    if (from.isEmpty() || to.isEmpty() || progress == 1) return to;
    const std::vector<Contour> before = contoursOf(from);
    const std::vector<Contour> after = contoursOf(to);
    UIBezierPath path;
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        appendMixed(path, i < before.size() ? before[i] : pointIn(after[i]),
                    i < after.size() ? after[i] : pointIn(before[i]), progress);
    }
    return path;
}
