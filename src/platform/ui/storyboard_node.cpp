// Reading values, each strictly: the app's own data has no excuse.
// Icons are drawings on a grid, as large as the grid has units.
#include "platform/ui/storyboard_node.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <utility>

#include "platform/ui/ui_view.h"

namespace {

using Node = StoryboardNode;

constexpr CGFloat iconGrid = 24;

void addShapes(const Node& list, const VectorGlyph::Shape& pattern, VectorGlyph& glyph) {
    const std::size_t count = list.listSize();
    for (std::size_t i = 0; i < count; ++i) {
        auto path = UIBezierPath::pathWithSVGData(list.at(i).text());
        if (!path) list.at(i).fail("not SVG path data");
        VectorGlyph::Shape shape = pattern;
        shape.path = std::move(*path);
        glyph.shapes.push_back(std::move(shape));
    }
}

}  // namespace

void Node::fail(const std::string& what) const {
    throw std::runtime_error((path.empty() ? "/" : path) + ": " + what);
}

Node Node::at(const char* key) const {
    if (!has(key)) fail(std::string("\"") + key + "\" is missing");
    return {value.at(key), path + "/" + key};
}

Node Node::at(std::size_t index) const {
    return {value.at(index), path + "/" + std::to_string(index)};
}

void Node::expectObject(std::initializer_list<const char*> keys) const {
    if (!value.is_object()) fail("not an object");
    for (const auto& [key, ignored] : value.items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) fail("unknown key \"" + key + "\"");
    }
}

std::size_t Node::listSize() const {
    if (!value.is_array()) fail("not a list");
    return value.size();
}

std::string Node::text() const {
    if (!value.is_string()) fail("not a text");
    return value.get<std::string>();
}

double Node::number() const {
    if (!value.is_number()) fail("not a number");
    return value.get<double>();
}

int64_t Node::integer() const {
    if (!value.is_number_integer()) fail("not a whole number");
    return value.get<int64_t>();
}

bool Node::flag() const {
    if (!value.is_boolean()) fail("not true or false");
    return value.get<bool>();
}

CGRect Node::rect() const {
    if (listSize() != 4) fail("not four numbers");
    return CGRectMake(at(std::size_t{0}).number(), at(1).number(), at(2).number(), at(3).number());
}

UIColor Node::color() const {
    const std::string digits = text();
    const bool formed = (digits.size() == 7 || digits.size() == 9) && digits[0] == '#' &&
                        digits.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (!formed) fail("not a colour");
    const auto component = [&](std::size_t at) {
        return static_cast<double>(std::strtol(digits.substr(at, 2).c_str(), nullptr, 16)) / 255.0;
    };
    return {component(1), component(3), component(5), digits.size() == 9 ? component(7) : 1.0};
}

uint32_t Node::autoresizing() const {
    static const std::map<std::string, uint32_t> bits = {
        {"left", UIViewAutoresizingFlexibleLeftMargin},   {"width", UIViewAutoresizingFlexibleWidth},
        {"right", UIViewAutoresizingFlexibleRightMargin}, {"top", UIViewAutoresizingFlexibleTopMargin},
        {"height", UIViewAutoresizingFlexibleHeight},     {"bottom", UIViewAutoresizingFlexibleBottomMargin},
    };
    uint32_t mask = UIViewAutoresizingNone;
    const std::size_t count = listSize();
    for (std::size_t i = 0; i < count; ++i) {
        const auto bit = bits.find(at(i).text());
        if (bit == bits.end()) at(i).fail("unknown part of a frame");
        mask |= bit->second;
    }
    return mask;
}

UIImageRef Node::icon() const {
    expectObject({"strokes", "fills", "lineWidth"});
    VectorGlyph glyph;
    glyph.size = {iconGrid, iconGrid};
    const double lineWidth = has("lineWidth") ? at("lineWidth").number() : 1.75;
    if (has("fills")) addShapes(at("fills"), {{}, false, 0, FillRule::evenOdd}, glyph);
    if (has("strokes")) {
        addShapes(at("strokes"), {{}, true, lineWidth, FillRule::nonZero}, glyph);
    }
    return UIImage::imageWithGlyph(std::move(glyph), {iconGrid, iconGrid});
}
