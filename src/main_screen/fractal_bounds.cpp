// Aspect fitting and the path of a link.
// Every cast to float is a rounding that takes part in the result.
#include "main_screen/fractal_bounds.h"

#include <charconv>

namespace {

/// Six decimals whatever the locale; 400 characters hold the largest double.
std::string sixDecimals(double value) {
    char text[400];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6).ptr;
    return {text, end};
}

}  // namespace

CGRect fitToAspect(CGRect r, int32_t width, int32_t height) {
    const float rectAspect = static_cast<float>(r.size.width / r.size.height);
    const float screenAspect = static_cast<float>(width) / static_cast<float>(height);
    const CGFloat base = screenAspect > rectAspect ? r.size.width : r.size.height;
    const float scaled =
        static_cast<float>(base * static_cast<double>(screenAspect) / static_cast<double>(rectAspect));
    const CGFloat inset = 0.5 * (base - static_cast<double>(scaled));
    return CGRectInset(r, inset, 0);
}

std::string fractalTypeWord(int32_t type) {
    return type == FractalType::julia ? "julia" : "mandelbrot";
}

std::string deepLinkPath(int32_t type, CGRect r) {
    return "/" + fractalTypeWord(type) + "/" + sixDecimals(r.origin.x) + "/" + sixDecimals(r.origin.y) + "/" +
           sixDecimals(r.origin.x + r.size.width) + "/" + sixDecimals(r.origin.y + r.size.height);
}
