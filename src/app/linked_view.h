// The view that a link names: its route, and what the route's variables say.
// Pure, so that any text can be tried on it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/foundation/geometry.h"
#include "routing/jlr_route_value.h"

/// "/mandelbrot/-2/-1.5/1/1.5": type, then the left, lower, right and upper edge.
inline const std::string linkedViewRoute = "/:type/:x1/:y1/:x2/:y2";

struct LinkedView {
    int32_t fractalType = 0;
    /// Plane units: both sides above 0 and below 10.
    CGRect bounds;
};

/// From the parameters of a match, in single precision. Nothing for an unknown type ("mandelbrot" and "julia"
/// are known, as they stand) and for a rectangle that is empty, reversed or too large.
std::optional<LinkedView> linkedView(const JLRRouteParameters& parameters);

/// The view that opens where this path is a link's, "/mandelbrot/-2/-1.5/1/1.5".
std::optional<LinkedView> linkedViewOfPath(const std::string& path);
