// What a saved picture shows, as texts in its file, and back: whoever has the picture has the way there.
// Pure; bounds are kept in full, which a link's six decimals are not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "main_screen/fractal_bounds.h"
#include "platform/graphics/picture_texts.h"

struct PicturedPlace {
    int32_t fractalType = 0;
    FractalBounds bounds;
    int32_t palette = 0;
};

/// Software, Link, Type, Bounds and Palette.
PictureTexts textsOfPlace(const PicturedPlace& place, const std::string& link);

/// Nothing unless type, bounds and palette are there and are such as a screen can show: a known type, a
/// palette from 0 to 10, sides above 0 and up to 1e6 plane units, none more than 1000 times the other, with
/// edges that doubles tell apart.
std::optional<PicturedPlace> placeOfTexts(const PictureTexts& texts);
