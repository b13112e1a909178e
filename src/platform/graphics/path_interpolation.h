// The shape between two paths, for animations that turn one into the other.
// Paths of different construction meet too: what one of them lacks grows out of a point.
#pragma once

#include "platform/graphics/ui_bezier_path.h"

/// progress 0 gives the shape of `from`, 1 that of `to`; between them every point is on its straight way.
/// Where one path is empty the answer is `to`.
UIBezierPath interpolatedPath(const UIBezierPath& from, const UIBezierPath& to, double progress);
