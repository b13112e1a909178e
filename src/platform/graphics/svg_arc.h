// Elliptic arcs as path text gives them, turned into curves.
// The geometry of SVG 1.1 appendix F.6, apart from the reading of text.
#pragma once

#include "platform/foundation/geometry.h"
#include "platform/graphics/ui_bezier_path.h"

struct SVGArc {
    CGFloat rx = 0;
    CGFloat ry = 0;
    CGFloat rotation = 0;  ///< radians
    bool large = false;
    bool sweep = false;
};

/// Goes on from the path's last point, from, to the point to, which differs from it; the radii are not 0.
void addSVGArc(UIBezierPath& path, CGPoint from, CGPoint to, const SVGArc& arc);
