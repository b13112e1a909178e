// Finds the elements and their attributes; everything else in the file is passed over.
// The files are our own resources, so a full reader of XML would only be weight.
#include "platform/graphics/svg_glyph_reader.h"

#include <string>
#include <utility>

#include "platform/foundation/decimal_text.h"
#include "platform/graphics/svg_path_reader.h"

namespace {

/// The element's text from its name to its end, and what follows it.
std::optional<std::string_view> takeElement(std::string_view& text, std::string_view opening) {
    const std::size_t begin = text.find(opening);
    const std::size_t end = text.find('>', begin == std::string_view::npos ? 0 : begin);
    if (begin == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
    const std::string_view element = text.substr(begin + opening.size(), end - begin - opening.size());
    text.remove_prefix(end + 1);
    return element;
}

std::optional<std::string_view> attribute(std::string_view element, std::string_view name) {
    const std::string start = " " + std::string(name) + "=\"";
    const std::size_t begin = element.find(start);
    if (begin == std::string_view::npos) return std::nullopt;
    element.remove_prefix(begin + start.size());
    const std::size_t end = element.find('"');
    return end == std::string_view::npos ? std::nullopt : std::optional(element.substr(0, end));
}

}  // namespace

std::optional<VectorGlyph> readSVGGlyph(std::string_view text) {
    const auto root = takeElement(text, "<svg");
    auto box = root ? attribute(*root, "viewBox") : std::nullopt;
    constexpr std::string_view atOrigin = "0 0 ";
    if (!box || !box->starts_with(atOrigin)) return std::nullopt;
    box->remove_prefix(atOrigin.size());
    const auto width = takeDecimal(*box);
    if (!width || !box->starts_with(' ')) return std::nullopt;
    box->remove_prefix(1);
    const auto height = takeDecimal(*box);
    if (!height || !(*width > 0) || !(*height > 0)) return std::nullopt;

    VectorGlyph glyph;
    glyph.size = {*width, *height};
    while (const auto element = takeElement(text, "<path")) {
        const auto data = attribute(*element, "d");
        auto path = data ? readSVGPath(*data) : std::nullopt;
        auto stroke = attribute(*element, "stroke-width");
        const auto lineWidth = stroke ? takeDecimal(*stroke) : std::optional(0.0);
        if (!path || !lineWidth) return std::nullopt;
        glyph.shapes.push_back({std::move(*path), *lineWidth > 0, *lineWidth, FillRule::nonZero});
    }
    return glyph;
}
