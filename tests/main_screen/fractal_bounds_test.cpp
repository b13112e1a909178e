// Aspect fitting with both of its cases and its roundings to 32-bit floats, and the paths of links.
// The expected numbers were worked out apart, rounding step by step.
#include "main_screen/fractal_bounds.h"

#include <gtest/gtest.h>

TEST(FractalBounds, FitsToTheAspectWithItsRoundings) {
    struct Case {
        const char* what;
        CGRect wanted;
        int32_t width, height;
        CGFloat x, fittedWidth;
    };
    const Case cases[] = {
        {"the top view widens to 16:9", CGRectMake(-3, -1.5, 4, 3), 1280, 720, -0x1.d55554p+1, 0x1.555554p+2},
        {"a square widens", CGRectMake(0, 0, 1, 1), 1280, 720, -0x1.8e38e4p-2, 0x1.c71c72p+0},
        {"on a phone", CGRectMake(-3, -1.5, 4, 3), 844, 390, -0x1.0fc0fcp+2, 0x1.9f81f8p+2},
        {"wider than the screen: loses the height's share only", CGRectMake(-2, -1, 4, 1), 1280, 720,
         -0x1.b8e38e4p+0, 0x1.b8e38e4p+1},
        {"as wide as the screen", CGRectMake(0, 0, 16, 9), 1280, 720, 0, 16},
        {"4:3 on 4:3", CGRectMake(-3, -1.5, 4, 3), 1024, 768, -3, 4},
        {"no round number", CGRectMake(0.1, 0.2, 0.3, 0.7), 1180, 820, -0x1.03bf1p-2, 0x1.01df88p+0},
    };
    for (const Case& c : cases) {
        const CGRect fitted = fitToAspect(c.wanted, c.width, c.height);
        EXPECT_EQ(fitted.origin.x, c.x) << c.what;
        EXPECT_EQ(fitted.size.width, c.fittedWidth) << c.what;
        EXPECT_EQ(fitted.origin.y, c.wanted.origin.y) << c.what;
        EXPECT_EQ(fitted.size.height, c.wanted.size.height) << c.what;
    }
}

TEST(FractalBounds, LinksCarrySixDecimalsAndTheWordOfTheType) {
    EXPECT_EQ(deepLinkPath(0, CGRectMake(-2, -1.5, 3, 3)),
              "/mandelbrot/-2.000000/-1.500000/1.000000/1.500000");
    EXPECT_EQ(deepLinkPath(1, CGRectMake(-0.0000004, 0, 1e-7, 12345678)),
              "/mandelbrot/-0.000000/0.000000/-0.000000/12345678.000000");
    EXPECT_EQ(deepLinkPath(2, CGRectMake(0.1234567, 1e300, 0, 0)).substr(0, 24), "/julia/0.123457/10000000");
    EXPECT_EQ(deepLinkPath(-7, CGRectZero), "/mandelbrot/0.000000/0.000000/0.000000/0.000000");
}
