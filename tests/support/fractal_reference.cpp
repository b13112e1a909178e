// The plain definition in doubles: z -> z^2 + c from the pixel's point, an escape test in every step.
// The continuous count is n + log2(log2(64)) - log2(log2(|z|^2)) at the first |z| > 8, continuous across
// steps.
#include "tests/support/fractal_reference.h"

#include <cmath>
#include <complex>

namespace {

constexpr double kInside = -1000.0;

double countOf(std::complex<double> point, const FractalView& view) {
    std::complex<double> z = point;
    const std::complex<double> c = view.type == 2 ? std::complex<double>(-0.8, 0.156) : point;
    const int limit = static_cast<int>(view.limit);
    for (int n = 0; n <= limit; ++n) {
        const double m = std::norm(z);
        if (m > 64.0) {
            return n + std::log2(6.0) - std::log2(std::log2(m));
        }
        z = {z.real() * z.real() - z.imag() * z.imag() + c.real(), 2.0 * z.real() * z.imag() + c.imag()};
    }
    return kInside;
}

}  // namespace

FractalCounts referenceCounts(const FractalView& view, int width, int height) {
    FractalCounts result{width, height, {}};
    result.counts.reserve(static_cast<size_t>(width) * static_cast<size_t>(height));
    const double x1 = static_cast<double>(view.x1);
    const double y1 = static_cast<double>(view.y1);
    const double stepX = (static_cast<double>(view.x2) - x1) / width;
    const double stepY = (static_cast<double>(view.y2) - y1) / height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            result.counts.push_back(countOf({x1 + (x + 0.5) * stepX, y1 + (y + 0.5) * stepY}, view));
        }
    }
    return result;
}
