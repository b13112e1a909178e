// The grey pictures that the autopilot reads, against a slow double-precision reference.
// A wrong grey sends the pilot to the wrong place, silently.
#include "platform/graphics/cg_bitmap_context.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <random>

namespace {

using ::testing::Each;

CGImage randomImage(int32_t width, int32_t height, CGImageFormat format, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<uint8_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                                CGImageBytesPerPixel(format));
    for (auto& byte : pixels)
        byte = static_cast<uint8_t>(random());
    return {width, height, format, std::move(pixels)};
}

double luminanceAt(const CGImage& image, int32_t x, int32_t y) {
    const auto color = image.colorAt(x, y);
    return 0.2126 * color.red + 0.7152 * color.green + 0.0722 * color.blue;
}

/// How much of source pixel i lies behind the target pixel: its share of the average, or of the
/// interpolation.
double share(int32_t i, int32_t length, int32_t target, double start, double scale) {
    if (scale > 1) {
        const double from = std::clamp((target - start) * scale, 0.0, double(length));
        const double to = std::clamp((target + 1 - start) * scale, 0.0, double(length));
        return std::max(0.0, std::min(to, i + 1.0) - std::max(from, double(i))) / (to - from);
    }
    const double centre = std::clamp((target + 0.5 - start) * scale - 0.5, 0.0, length - 1.0);
    return std::max(0.0, 1 - std::abs(centre - i));
}

struct SourcePixel {
    int32_t index;
    double share;
};

/// For each target pixel of one axis the source pixels behind it.
std::vector<std::vector<SourcePixel>> sharesOf(int32_t length, double start, double size, int32_t targets) {
    std::vector<std::vector<SourcePixel>> result(static_cast<std::size_t>(targets));
    for (int32_t target = 0; target < targets; ++target) {
        for (int32_t i = 0; i < length; ++i) {
            const double part = share(i, length, target, start, length / size);
            if (part > 0) result[static_cast<std::size_t>(target)].push_back({i, part});
        }
    }
    return result;
}

double referenceAt(const CGImage& image, const std::vector<SourcePixel>& columns,
                   const std::vector<SourcePixel>& rows, double behind) {
    double sum = 0;
    for (const SourcePixel& row : rows) {
        for (const SourcePixel& column : columns) {
            const double alpha = image.colorAt(column.index, row.index).alpha / 255.0;
            const double over = alpha * luminanceAt(image, column.index, row.index) + (1 - alpha) * behind;
            sum += row.share * column.share * over;
        }
    }
    return sum;
}

struct Scaling {
    int32_t imageWidth, imageHeight;
    CGRect rect;
};

constexpr int32_t bufferWidth = 300;
constexpr int32_t bufferHeight = 17;
constexpr int32_t stride = 304;
constexpr uint8_t background = 90;

void expectLikeReference(const CGImage& image, CGRect rect) {
    std::vector<uint8_t> buffer(static_cast<std::size_t>(stride) * bufferHeight, background);
    CGBitmapContext(buffer.data(), bufferWidth, bufferHeight, stride, CGColorSpace::deviceGray)
        .drawImage(rect, image);
    const auto columns = sharesOf(image.width(), rect.origin.x, rect.size.width, bufferWidth);
    const auto rows = sharesOf(image.height(), rect.origin.y, rect.size.height, bufferHeight);
    double largest = 0;
    for (int32_t y = 0; y < bufferHeight; ++y) {
        for (int32_t x = 0; x < stride; ++x) {
            const double drawn = buffer[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)];
            const bool inside = x < bufferWidth && CGRectContainsPoint(rect, {x + 0.5, y + 0.5});
            const double expected = inside ? referenceAt(image, columns[static_cast<std::size_t>(x)],
                                                         rows[static_cast<std::size_t>(y)], background)
                                           : background;
            largest = std::max(largest, std::abs(drawn - expected));
        }
    }
    // Rounding of each pixel's luminance and of the average, and shares held in 256ths.
    EXPECT_LE(largest, 1.6) << image.width() << "x" << image.height() << " into " << NSStringFromCGRect(rect);
}

TEST(CGBitmapContext, ScalesLikeTheReference) {
    const Scaling scalings[] = {
        {40, 9, {{-5, 3}, {40, 9}}},                 // the same size, moved and cut
        {450, 51, {{0, 0}, {300, 17}}},              // one and a half, three
        {700, 40, {{0, 0}, {300, 17}}},              // no whole ratio
        {120, 8, {{0, 0}, {300, 17}}},               // growing
        {37, 90, {{0, 0}, {300, 17}}},               // growing one way, shrinking the other
        {900, 60, {{-100.25, -2.5}, {500, 30.75}}},  // cut on every side, between pixels
    };
    for (const auto format : {CGImageFormat::gray8, CGImageFormat::rgb565, CGImageFormat::rgba8888}) {
        for (const Scaling& s : scalings) {
            expectLikeReference(randomImage(s.imageWidth, s.imageHeight, format, 5), s.rect);
        }
    }
    std::vector<uint8_t> opaque(450 * 51 * 4, 255);
    for (std::size_t i = 0; i < opaque.size(); i += 4)
        opaque[i + i / 4 % 3] = static_cast<uint8_t>(i / 7);
    const CGImage image(450, 51, CGImageFormat::rgba8888, opaque);
    expectLikeReference(image, {{0, 0}, {300, 17}});
    expectLikeReference(image, {{-20, -5}, {450, 51}});
}

TEST(CGBitmapContext, FlatPicturesStayFlatAndExact) {
    for (const int gray : {0, 127, 255}) {
        const CGImage image(701, 399, CGImageFormat::gray8,
                            std::vector<uint8_t>(701 * 399, static_cast<uint8_t>(gray)));
        for (const CGSize size : {CGSizeMake(64, 32), CGSizeMake(701, 399), CGSizeMake(900, 7)}) {
            std::vector<uint8_t> buffer(900 * 400, 33);
            CGBitmapContext context(buffer.data(), static_cast<int32_t>(size.width),
                                    static_cast<int32_t>(size.height), static_cast<int32_t>(size.width),
                                    CGColorSpace::deviceGray);
            context.drawImage({{0, 0}, size}, image);
            buffer.resize(static_cast<std::size_t>(size.width * size.height));
            EXPECT_THAT(buffer, Each(gray));
        }
    }
    // Pure colours by their weights: black and white must reach the ends.
    const std::pair<std::vector<uint8_t>, int> colors[] = {{{255, 0, 0, 255}, 54},
                                                           {{0, 255, 0, 255}, 182},
                                                           {{0, 0, 255, 255}, 18},
                                                           {{255, 255, 255, 255}, 255},
                                                           {{255, 255, 255, 0}, 7}};
    for (const auto& [color, expected] : colors) {
        uint8_t pixel = 7;
        CGBitmapContext(&pixel, 1, 1, 1, CGColorSpace::deviceGray)
            .drawImage({{0, 0}, {1, 1}}, CGImage(1, 1, CGImageFormat::rgba8888, color));
        EXPECT_EQ(pixel, expected);
    }
}

TEST(CGImage, WidensAndRefusesWhatDoesNotFit) {
    // White, black and one step of each component, low byte first.
    const CGImage image(3, 1, CGImageFormat::rgb565, {0xff, 0xff, 0x00, 0x00, 0x21, 0x08});
    EXPECT_THAT(image.rgbaBytes(), ::testing::ElementsAre(255, 255, 255, 255, 0, 0, 0, 255, 8, 4, 8, 255));
    EXPECT_DEATH(CGImage(2, 2, CGImageFormat::gray8, {1, 2, 3}), "CGImage");
}

}  // namespace
