// Paths: their shapes, their bounds and their transformation.
// Reading path text has a file of its own, svg_path_reader.
#include "platform/graphics/ui_bezier_path.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "platform/graphics/svg_path_reader.h"

namespace {

/// How far a quarter circle's control points lie from its ends, as a share of the radius:
/// 4/3 * (sqrt(2) - 1), which puts the curve's middle on the circle.
constexpr CGFloat quarterCircle = 0.5522847498307936;

std::span<const CGPoint> usedPoints(const UIBezierPath::Element& element) {
    switch (element.verb) {
        case UIBezierPath::Verb::move:
        case UIBezierPath::Verb::line:
            return std::span(element.points).last(1);
        case UIBezierPath::Verb::curve:
            return element.points;
        case UIBezierPath::Verb::close:
            break;
    }
    return {};
}

/// Clockwise on screen from the left end of the top edge.
UIBezierPath roundedPath(CGRect r, CGFloat rx, CGFloat ry) {
    const CGFloat left = CGRectGetMinX(r);
    const CGFloat top = CGRectGetMinY(r);
    const CGFloat right = CGRectGetMaxX(r);
    const CGFloat bottom = CGRectGetMaxY(r);
    const CGFloat dx = rx * (1 - quarterCircle);
    const CGFloat dy = ry * (1 - quarterCircle);
    UIBezierPath path;
    path.moveToPoint({left + rx, top});
    path.addLineToPoint({right - rx, top});
    path.addCurveToPoint({right, top + ry}, {right - dx, top}, {right, top + dy});
    path.addLineToPoint({right, bottom - ry});
    path.addCurveToPoint({right - rx, bottom}, {right, bottom - dy}, {right - dx, bottom});
    path.addLineToPoint({left + rx, bottom});
    path.addCurveToPoint({left, bottom - ry}, {left + dx, bottom}, {left, bottom - dy});
    path.addLineToPoint({left, top + ry});
    path.addCurveToPoint({left + rx, top}, {left, top + dy}, {left + dx, top});
    path.closePath();
    return path;
}

}  // namespace

UIBezierPath UIBezierPath::bezierPathWithRect(CGRect rect) {
    UIBezierPath path;
    path.moveToPoint(rect.origin);
    path.addLineToPoint({CGRectGetMaxX(rect), CGRectGetMinY(rect)});
    path.addLineToPoint({CGRectGetMaxX(rect), CGRectGetMaxY(rect)});
    path.addLineToPoint({CGRectGetMinX(rect), CGRectGetMaxY(rect)});
    path.closePath();
    return path;
}

UIBezierPath UIBezierPath::bezierPathWithOvalInRect(CGRect rect) {
    return roundedPath(rect, rect.size.width / 2, rect.size.height / 2);
}

UIBezierPath UIBezierPath::bezierPathWithRoundedRect(CGRect rect, CGFloat cornerRadius) {
    const CGFloat radius = std::min(cornerRadius, std::min(rect.size.width, rect.size.height) / 2);
    return radius > 0 ? roundedPath(rect, radius, radius) : bezierPathWithRect(rect);
}

std::optional<UIBezierPath> UIBezierPath::pathWithSVGData(std::string_view data) {
    return readSVGPath(data);
}

void UIBezierPath::moveToPoint(CGPoint p) {
    _elements.push_back({Verb::move, {{}, {}, p}});
}

void UIBezierPath::addLineToPoint(CGPoint p) {
    _elements.push_back({Verb::line, {{}, {}, p}});
}

void UIBezierPath::addCurveToPoint(CGPoint end, CGPoint control1, CGPoint control2) {
    _elements.push_back({Verb::curve, {control1, control2, end}});
}

void UIBezierPath::closePath() {
    _elements.push_back({Verb::close, {}});
}

void UIBezierPath::appendPath(const UIBezierPath& other) {
    // By count: the other path may be this one.
    const std::size_t count = other._elements.size();
    _elements.reserve(_elements.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        _elements.push_back(other._elements[i]);
}

bool UIBezierPath::isFinite() const {
    return std::all_of(_elements.begin(), _elements.end(), [](const Element& element) {
        const auto points = usedPoints(element);
        return std::all_of(points.begin(), points.end(),
                           [](CGPoint p) { return std::isfinite(p.x) && std::isfinite(p.y); });
    });
}

CGRect UIBezierPath::bounds() const {
    CGPoint low = CGRectNull.origin;
    CGPoint high = {-low.x, -low.y};
    for (const Element& element : _elements) {
        for (const CGPoint& p : usedPoints(element)) {
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
    }
    if (low.x > high.x) return CGRectZero;
    return CGRectMake(low.x, low.y, high.x - low.x, high.y - low.y);
}
