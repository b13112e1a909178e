// Paths: what their text means, what is refused, and that round shapes are round.
// Icons and masks are written in this text by hand.
#include "platform/graphics/ui_bezier_path.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

std::string describe(const UIBezierPath& path) {
    constexpr char letters[] = {'M', 'L', 'C', 'Z'};
    std::string text;
    for (const auto& element : path.elements()) {
        if (!text.empty()) text += ' ';
        text += letters[static_cast<std::size_t>(element.verb)];
        const bool curve = element.verb == UIBezierPath::Verb::curve;
        if (curve) text += NSStringFromCGPoint(element.points[0]);
        if (curve) text += NSStringFromCGPoint(element.points[1]);
        if (element.verb != UIBezierPath::Verb::close) text += NSStringFromCGPoint(element.points[2]);
    }
    return text;
}

TEST(SVGPath, EveryCommandAbsoluteAndRelative) {
    const std::pair<const char*, const char*> cases[] = {
        {" \n", ""},
        {"M1 2", "M{1, 2}"},
        {"M1-2.5.5e1-7L+3,4", "M{1, -2.5} L{5, -7} L{3, 4}"},
        {"M 0 0 L 1 2 3 4 l 1 1", "M{0, 0} L{1, 2} L{3, 4} L{4, 5}"},
        {"M1 1H5V7h-1v-2", "M{1, 1} L{5, 1} L{5, 7} L{4, 7} L{4, 5}"},
        {"M1 1C1 2 3 4 5 6c0 1 2 3 4 5", "M{1, 1} C{1, 2}{3, 4}{5, 6} C{5, 7}{7, 9}{9, 11}"},
        {"M0 0C0 1 2 3 4 4S8 8 9 9s1 1 2 2",
         "M{0, 0} C{0, 1}{2, 3}{4, 4} C{6, 5}{8, 8}{9, 9} C{10, 10}{10, 10}{11, 11}"},
        {"M0 0Q3 3 6 0T12 0", "M{0, 0} C{2, 2}{4, 2}{6, 0} C{8, -2}{10, -2}{12, 0}"},
        {"M1 1L2 2ZL5 5z", "M{1, 1} L{2, 2} Z M{1, 1} L{5, 5} Z"},
        {"m1 1l1 1zm1 1l1 0", "M{1, 1} L{2, 2} Z M{2, 2} L{3, 2}"},
        {"M1 1A5 5 0 0 1 1 1", "M{1, 1}"},
    };
    for (const auto& [text, expected] : cases) {
        const auto path = UIBezierPath::pathWithSVGData(text);
        ASSERT_TRUE(path) << text;
        EXPECT_EQ(describe(*path), expected) << text;
    }
}

TEST(SVGPath, MalformedTextIsNoPath) {
    for (const char* text : {"L1 1", "M", "M1,,1", "M1 1,L2 2", "M1 1 2", "M1 1 X2 2", "M1 1 Z 2 2",
                             "M1 1 C1 2 3 4 5", "M1 1 L nan 1", "M1 1 L 1e999 1", "M0 0A5 5 0 2 1 4 4"})
        EXPECT_FALSE(UIBezierPath::pathWithSVGData(text)) << text;
}

CGPoint pointOn(CGPoint from, const UIBezierPath::Element& curve, double t) {
    const double s = 1 - t;
    const auto& p = curve.points;
    return {s * s * s * from.x + 3 * s * s * t * p[0].x + 3 * s * t * t * p[1].x + t * t * t * p[2].x,
            s * s * s * from.y + 3 * s * s * t * p[0].y + 3 * s * t * t * p[1].y + t * t * t * p[2].y};
}

/// Every curve lies on the ellipse (rotation in degrees), and the path's last point is where it should be.
void expectOnEllipse(const UIBezierPath& path, CGPoint centre, double rx, double ry, double rotation) {
    CGPoint from;
    const double angle = rotation * std::numbers::pi / 180;
    for (const auto& element : path.elements()) {
        for (int i = 0; element.verb == UIBezierPath::Verb::curve && i <= 10; ++i) {
            const CGPoint p = pointOn(from, element, i / 10.0);
            const double x = (p.x - centre.x) * std::cos(angle) + (p.y - centre.y) * std::sin(angle);
            const double y = (p.y - centre.y) * std::cos(angle) - (p.x - centre.x) * std::sin(angle);
            EXPECT_NEAR(std::hypot(x / rx, y / ry), 1, 4e-4);
        }
        if (element.verb != UIBezierPath::Verb::close) from = element.points[2];
    }
}

TEST(SVGPath, ArcsFollowTheirEllipse) {
    struct Case {
        const char* text;
        CGPoint centre;
        double rx, ry, rotation;
        std::size_t elements;
    };
    const Case cases[] = {
        {"M10 0A10 10 0 0 1 0 10", {0, 0}, 10, 10, 0, 2},    // a quarter, clockwise on screen
        {"M10 0A10 10 0 1 0 0 10", {0, 0}, 10, 10, 0, 4},    // the other three
        {"M10 0A10 10 0 0 0 0 10", {10, 10}, 10, 10, 0, 2},  // around the other centre
        {"M0 -20a20 -5 90 1 1 0 40", {0, 0}, 20, 5, 90, 3},  // rotated; signs of radii do not count
        {"M-3 -4A1 1 0 0 1 3 4", {0, 0}, 5, 5, 0, 3},        // too small: grown until it reaches
    };
    for (const Case& c : cases) {
        const auto path = UIBezierPath::pathWithSVGData(c.text);
        ASSERT_TRUE(path) << c.text;
        SCOPED_TRACE(c.text);
        EXPECT_EQ(path->elements().size(), c.elements);
        expectOnEllipse(*path, c.centre, c.rx, c.ry, c.rotation);
    }
    // Sweep 1 goes through the positive angles: on screen from the right end downwards.
    const auto quarter = UIBezierPath::pathWithSVGData("M10 0A10 10 0 0 1 0 10");
    EXPECT_NEAR(pointOn({10, 0}, quarter->elements()[1], 0.5).y, 10 / std::sqrt(2), 0.01);
    EXPECT_EQ(quarter->elements()[1].points[2], CGPointMake(0, 10));
}

TEST(UIBezierPath, RoundShapes) {
    expectOnEllipse(UIBezierPath::bezierPathWithOvalInRect({{-4, 2}, {8, 6}}), {0, 5}, 4, 3, 0);
    const CGRect rect = {{1, 2}, {30, 10}};
    for (const double radius : {0.0, 3.0, 5.0, 500.0, -2.0}) {
        EXPECT_EQ(UIBezierPath::bezierPathWithRoundedRect(rect, radius).bounds(), rect) << radius;
    }
    // Cut to half the height: a circle of radius 5 at each end.
    const auto capsule = UIBezierPath::bezierPathWithRoundedRect({{0, 0}, {10, 10}}, 500);
    expectOnEllipse(capsule, {5, 5}, 5, 5, 0);
}

}  // namespace
