// Paths of lines and cubic curves, filled or stroked on a Canvas.
// They hold points and nothing else, so that animations can make a new one for every frame.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/foundation/geometry.h"

enum class FillRule { nonZero, evenOdd };

class UIBezierPath {
  public:
    enum class Verb { move, line, curve, close };
    struct Element {
        Verb verb = Verb::move;
        /// move and line use points[2], a curve its two control points first; close uses none.
        CGPoint points[3];
    };

    static UIBezierPath bezierPathWithRect(CGRect rect);
    static UIBezierPath bezierPathWithOvalInRect(CGRect rect);
    /// The radius is cut to half the shorter side.
    static UIBezierPath bezierPathWithRoundedRect(CGRect rect, CGFloat cornerRadius);
    /// Reads the path syntax of SVG 1.1 section 8.3 (all commands, absolute and relative; arcs become
    /// curves); nothing for malformed text.
    static std::optional<UIBezierPath> pathWithSVGData(std::string_view data);

    void moveToPoint(CGPoint p);
    void addLineToPoint(CGPoint p);
    void addCurveToPoint(CGPoint end, CGPoint control1, CGPoint control2);
    void closePath();
    void appendPath(const UIBezierPath& other);

    const std::vector<Element>& elements() const { return _elements; }
    bool isEmpty() const { return _elements.empty(); }
    /// False as soon as one coordinate is infinite or no number; such a path cannot be drawn.
    bool isFinite() const;
    /// Of all points, control points included; zero for an empty path.
    CGRect bounds() const;

  private:
    std::vector<Element> _elements;
};
