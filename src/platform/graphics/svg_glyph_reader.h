// Reads pictures of one colour from SVG 1.1, as drawing programs and renderers know it.
// Only what such a picture needs: its viewBox and paths, each filled or stroked.
#pragma once

#include <optional>
#include <string_view>

#include "platform/graphics/ui_image.h"

/// The picture's size is that of its viewBox, which begins at 0 0. A path is stroked if it has a
/// stroke-width, else filled; colours are the tint's. Nothing without a viewBox or with a path that cannot be
/// read.
std::optional<VectorGlyph> readSVGGlyph(std::string_view text);
