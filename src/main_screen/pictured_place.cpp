// The keys are read by people as well: picture viewers list them.
// The link is for them, as its bounds are rounded; where the picture leads back to is said by the rest.
#include "main_screen/pictured_place.h"

#include <charconv>
#include <string_view>

namespace {

constexpr const char* linkKey = "Link";
constexpr const char* typeKey = "Type";
constexpr const char* boundsKey = "Bounds";
constexpr const char* paletteKey = "Palette";
constexpr CGFloat largestSide = 1e6;
constexpr CGFloat longestOfSides = 1000;
constexpr int32_t lastPalette = 10;

/// The first of that key; empty for none.
std::string_view textFor(std::string_view key, const PictureTexts& texts) {
    for (const PictureText& one : texts) {
        if (one.key == key) return one.text;
    }
    return {};
}

/// 0 for none. Programs that know another type of pictures keep that and drop ours: then the link has it.
int32_t typeOf(const PictureTexts& texts) {
    const std::string_view word = textFor(typeKey, texts);
    const std::string_view link = textFor(linkKey, texts);
    for (const int32_t known : {FractalType::mandelbrot, FractalType::julia}) {
        const std::string name = fractalTypeWord(known);
        const bool isNamed =
            word.empty() ? link.find("/" + name + "/") != std::string_view::npos : word == name;
        if (isNamed) return known;
    }
    return 0;
}

/// Written so that NaN is no view.
bool isView(CGRect r) {
    const CGSize size = r.size;
    return size.width > 0 && size.height > 0 && size.width <= largestSide && size.height <= largestSide &&
           size.width <= size.height * longestOfSides && size.height <= size.width * longestOfSides &&
           CGRectGetMaxX(r) > CGRectGetMinX(r) && CGRectGetMaxY(r) > CGRectGetMinY(r);
}

}  // namespace

PictureTexts textsOfPlace(const PicturedPlace& place, const std::string& link) {
    return {{"Software", "Zentaro"},
            {linkKey, link},
            {typeKey, fractalTypeWord(place.fractalType)},
            {boundsKey, NSStringFromCGRect(place.bounds)},
            {paletteKey, std::to_string(place.palette)}};
}

std::optional<PicturedPlace> placeOfTexts(const PictureTexts& texts) {
    PicturedPlace place;
    place.fractalType = typeOf(texts);
    const std::string_view palette = textFor(paletteKey, texts);
    const auto [end, error] = std::from_chars(palette.data(), palette.data() + palette.size(), place.palette);
    const bool isNumber = error == std::errc() && end == palette.data() + palette.size();
    place.bounds = CGRectFromString(textFor(boundsKey, texts));
    if (place.fractalType == 0 || !isNumber || place.palette < 0 || place.palette > lastPalette)
        return std::nullopt;
    return isView(place.bounds) ? std::optional(place) : std::nullopt;
}
