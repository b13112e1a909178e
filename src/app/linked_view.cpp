// Text that is no number reads as 0, so that most nonsense is an empty rectangle.
// The roundings to float are part of the links people share.
#include "app/linked_view.h"

#include "main_screen/fractal_bounds.h"
#include "platform/foundation/ns_string.h"
#include "routing/jlr_route_definition.h"

namespace {

constexpr float largestSide = 10;  // plane units

}  // namespace

std::optional<LinkedView> linkedView(const JLRRouteParameters& parameters) {
    const auto number = [&](const char* name) {
        return NSString_floatValue(stringForKey(parameters, name).value_or(""));
    };
    const float x1 = number("x1");
    const float x2 = number("x2");
    const float y1 = number("y1");
    const float y2 = number("y2");
    const std::string type = stringForKey(parameters, "type").value_or("");
    if (type != "mandelbrot" && type != "julia") return std::nullopt;
    const float w = x2 - x1;
    const float h = y2 - y1;
    if (!(w > 0 && h < largestSide && w < largestSide && h > 0)) return std::nullopt;
    return LinkedView{type == "julia" ? FractalType::julia : FractalType::mandelbrot,
                      CGRectMake(static_cast<double>(x1), static_cast<double>(y1), static_cast<double>(w),
                                 static_cast<double>(h))};
}

std::optional<LinkedView> linkedViewOfPath(const std::string& path) {
    static const JLRRouteDefinition route(linkedViewRoute, 0, nullptr);
    const JLRRouteResponse response =
        route.routeResponseForRequest(JLRRouteRequest(NSURL::URLWithString(path), 0, std::nullopt));
    return response.parameters() ? linkedView(*response.parameters()) : std::nullopt;
}
