// Aspect fitting and the path of a link.
// Every cast to float is a rounding that takes part in the result.
#include "main_screen/fractal_bounds.h"

#include "platform/foundation/decimal_text.h"

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
    std::string path = "/" + fractalTypeWord(type);
    for (const CGFloat edge : {CGRectGetMinX(r), CGRectGetMinY(r), CGRectGetMaxX(r), CGRectGetMaxY(r)})
        path.append("/").append(decimalTextWithSixDecimals(edge));
    return path;
}
