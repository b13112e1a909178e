// The curve gives time and progress by a parameter, so the time's parameter is looked for first.
// Bisection: x grows with the parameter, and 40 halvings are below any pixel.
#include "platform/ui/ca_media_timing_function.h"

namespace {

constexpr int halvings = 40;

/// A Bézier cubic from 0 to 1 at parameter s.
double cubic(double first, double second, double s) {
    const double rest = 1 - s;
    return 3 * rest * rest * s * first + 3 * rest * s * s * second + s * s * s;
}

}  // namespace

double CAMediaTimingFunction::valueAt(double time) const {
    if (!(time > 0)) return 0;
    if (time >= 1) return 1;
    double low = 0;
    double high = 1;
    for (int i = 0; i < halvings; ++i) {
        const double middle = (low + high) / 2;
        (cubic(_x1, _x2, middle) < time ? low : high) = middle;
    }
    return cubic(_y1, _y2, (low + high) / 2);
}
