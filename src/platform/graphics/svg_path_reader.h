// Reads the path syntax of SVG 1.1 (section 8.3), which icons and masks are written in.
// Kept apart from UIBezierPath, which needs no text to be drawn.
#pragma once

#include <optional>
#include <string_view>

#include "platform/graphics/ui_bezier_path.h"

/// Nothing for malformed text and for coordinates too large to draw.
std::optional<UIBezierPath> readSVGPath(std::string_view data);
