// How the ground of a view is dressed: its corners and the shadow that it throws.
// Only views that say so have one.
#pragma once

#include "platform/graphics/canvas.h"

struct CALayer {
    UIColor backgroundColor = UIColor::clear();
    UIColor shadowColor = UIColor::black();
    CGSize shadowOffset{0, -3};  ///< points, to the right and down
    double shadowOpacity = 0;    ///< 0 to 1
    double shadowRadius = 3;     ///< points over which the shadow's edge fades, inwards and outwards
    double cornerRadius = 0;     ///< points
    bool masksToBounds = false;  ///< whether what is painted ends at the rounded edge
    friend bool operator==(const CALayer&, const CALayer&) = default;
};

/// The shadow of a rounded rectangle, below which it lies.
void paintShadow(Canvas& canvas, const CALayer& layer, CGRect bounds);
