// The window of the complex plane that is on screen, and the words and shapes that go with it.
// Pure arithmetic: the roundings to 32-bit floats in the middle of it are part of the links people share.
#pragma once

#include <cstdint>
#include <string>

#include "platform/foundation/geometry.h"

/// Plane units: origin (smallest real part, smallest imaginary part), size (width, height). Valid with both
/// sides > 0.
using FractalBounds = CGRect;

/// 0, the value of a reset or absent setting, behaves as the Mandelbrot set.
namespace FractalType {
inline constexpr int32_t mandelbrot = 1;
inline constexpr int32_t julia = 2;
}  // namespace FractalType

/// Real -3 to 1, imaginary -1.5 to 1.5.
inline constexpr FractalBounds topView{{-3.0, -1.5}, {4.0, 3.0}};

/// Fits r to a screen of width by height points: its height, vertical place and horizontal centre stay, its
/// width changes. An r narrower than the screen gets exactly the screen's aspect; a wider one loses its
/// height's share only. Needs positive sizes: there is no guard.
CGRect fitToAspect(CGRect r, int32_t width, int32_t height);

/// The path word of a type: "julia" for 2, "mandelbrot" for any other.
std::string fractalTypeWord(int32_t type);

/// "/type/x1/y1/x2/y2", each edge with six decimals.
std::string deepLinkPath(int32_t type, CGRect r);
