// The overlay's canvas by its pixels: fills, clips, layers, images, and text that fits where it was measured.
// Calls that would break Cairo's context for good must not.
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

#include "hosts/native/native_canvas_provider.h"

namespace {

struct Pixel {
    int blue, green, red, alpha;
    friend bool operator==(const Pixel&, const Pixel&) = default;
};
void PrintTo(const Pixel& p, std::ostream* out) {
    *out << "bgra " << p.blue << " " << p.green << " " << p.red << " " << p.alpha;
}

constexpr Pixel clearPixel{0, 0, 0, 0};
constexpr Pixel redPixel{0, 0, 255, 255};
constexpr UIColor red{1, 0, 0, 1};
constexpr UIColor blue{0, 0, 1, 1};

class CairoCanvas : public ::testing::Test {
  protected:
    Pixel at(int32_t x, int32_t y) {
        const auto* p = canvas->pixels().data() + (y * canvas->width() + x) * 4;
        return {p[0], p[1], p[2], p[3]};
    }

    /// The smallest rectangle of whole pixels around everything that is not transparent.
    CGRect painted() {
        CGRect area = CGRectNull;
        for (int32_t y = 0; y < canvas->height(); ++y) {
            for (int32_t x = 0; x < canvas->width(); ++x) {
                if (at(x, y).alpha > 0) area = CGRectUnion(area, CGRectMake(x, y, 1, 1));
            }
        }
        return area;
    }

    NativeCanvasProvider provider;
    std::unique_ptr<BitmapCanvas> canvas = provider.makeBitmapCanvas(100, 60);
};

TEST_F(CairoCanvas, HasOnlyPossibleSizes) {
    EXPECT_THAT(canvas->pixels(), testing::Each(0));
    EXPECT_EQ(canvas->pixels().size(), 100U * 60 * 4);
    EXPECT_EQ(provider.makeBitmapCanvas(0, 5), nullptr);
    EXPECT_EQ(provider.makeBitmapCanvas(5, -1), nullptr);
    EXPECT_EQ(provider.makeBitmapCanvas(40000, 5), nullptr);
    EXPECT_NE(provider.makeBitmapCanvas(1, 1), nullptr);
}

TEST_F(CairoCanvas, ClipsAndGetsBackOut) {
    canvas->save();
    canvas->translate(10, 10);
    canvas->scale(2, 2);
    canvas->clipToRect({{0, 0}, {10, 10}});
    canvas->save();
    auto hole = UIBezierPath::bezierPathWithRect({{0, 0}, {50, 50}});
    hole.appendPath(UIBezierPath::bezierPathWithRect({{2, 2}, {2, 2}}));
    canvas->clipToPath(hole, FillRule::evenOdd);
    canvas->fillRect({{-100, -100}, {300, 300}}, red);
    EXPECT_EQ(painted(), CGRectMake(10, 10, 20, 20));
    EXPECT_EQ(at(15, 15), clearPixel);
    canvas->restore();
    canvas->clearRect({{0, 0}, {1, 1}});
    EXPECT_EQ(at(10, 10), clearPixel);
    EXPECT_EQ(at(12, 10), redPixel);
    canvas->restore();
    canvas->fillRect({{99, 59}, {1, 1}}, red);
    EXPECT_EQ(at(99, 59), redPixel);
}

TEST_F(CairoCanvas, LayersBlendAsOnePicture) {
    canvas->fillRect({{0, 0}, {10, 60}}, {0, 1, 0, 1});
    canvas->beginTransparencyLayer(0.5);
    canvas->translate(5, 0);
    canvas->fillRect({{0, 0}, {40, 40}}, red);
    canvas->fillRect({{0, 0}, {20, 20}}, blue);
    canvas->clearRect({{30, 30}, {5, 5}});
    canvas->endTransparencyLayer();
    const auto near = [](Pixel a, Pixel b) {
        return std::abs(a.blue - b.blue) + std::abs(a.green - b.green) + std::abs(a.red - b.red) +
                   std::abs(a.alpha - b.alpha) <=
               3;
    };
    EXPECT_TRUE(near(at(20, 10), {128, 0, 0, 128})) << "red must not shine through blue";
    EXPECT_TRUE(near(at(40, 10), {0, 0, 128, 128}));
    EXPECT_TRUE(near(at(7, 30), {0, 128, 128, 255})) << "over what was there";
    EXPECT_EQ(at(37, 32), clearPixel);
    canvas->fillRect({{0, 50}, {1, 1}}, red);
    EXPECT_EQ(at(0, 50), redPixel) << "the layer's translation ends with it";
}

TEST_F(CairoCanvas, DrawsImagesIntoTheirRectangle) {
    const auto pixels =
        std::make_shared<CGImage>(2, 1, CGImageFormat::rgb565, std::vector<uint8_t>{0, 0xf8, 0x1f, 0});
    canvas->drawImage(*UIImage::imageWithCGImage(pixels), {{10, 10}, {40, 20}}, {});
    EXPECT_EQ(painted(), CGRectMake(10, 10, 40, 20));
    EXPECT_EQ(at(10, 10), redPixel) << "edges keep their colour";
    EXPECT_EQ(at(49, 29), (Pixel{255, 0, 0, 255}));

    VectorGlyph glyph{{4, 4}, {}};
    glyph.shapes.push_back({UIBezierPath::bezierPathWithRect({{0, 0}, {4, 2}}), false, 0, FillRule::nonZero});
    glyph.shapes.push_back({UIBezierPath::bezierPathWithRect({{0, 0}, {2, 4}}), false, 0, FillRule::nonZero});
    canvas->drawImage(*UIImage::imageWithGlyph(glyph, {8, 8}), {{60, 10}, {8, 8}}, {1, 1, 1, 0.5});
    EXPECT_EQ(at(67, 17), clearPixel);
    EXPECT_NEAR(at(61, 11).alpha, 128, 1) << "overlapping shapes are one drawing";
    EXPECT_NEAR(at(67, 11).alpha, 128, 1);
}

TEST_F(CairoCanvas, BadValuesAndPairsLeaveItWorking) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    canvas->restore();
    canvas->endTransparencyLayer();
    canvas->save();
    canvas->endTransparencyLayer();
    canvas->scale(0, 1);
    canvas->fillRect({{0, 0}, {100, 60}}, red);
    canvas->restore();
    canvas->save();
    canvas->translate(nan, 0);
    canvas->fillRect({{0, 0}, {100, 60}}, red);
    canvas->restore();
    canvas->beginTransparencyLayer(1);
    canvas->restore();
    canvas->endTransparencyLayer();
    canvas->fillRect({{nan, 0}, {5, 5}}, red);
    UIBezierPath path;
    path.moveToPoint({0, nan});
    path.addLineToPoint({50, 50});
    path.addLineToPoint({50, 5});
    canvas->fillPath(path, FillRule::nonZero, red);
    canvas->strokePath(UIBezierPath::bezierPathWithRect({{0, 0}, {9, 9}}), nan, red);
    canvas->drawText("x", UIFont::systemFontOfSize(nan), red, {{nan, 0}, {9, 9}}, NSTextAlignment::left,
                     true);
    EXPECT_TRUE(CGRectIsNull(painted()));
    canvas->fillRect({{0, 0}, {5, 5}}, red);
    EXPECT_EQ(painted(), CGRectMake(0, 0, 5, 5));
}

TEST_F(CairoCanvas, TextFitsWhereItWasMeasured) {
    const std::string text = "Tap the fractal to pause, Ärger g\nsecond line";
    for (const double size : {9.0, 13.5, 20.0}) {
        const UIFont font = UIFont::systemFontOfSize(size);
        for (const double width : {0.0, 90.0, 230.0}) {
            const CGSize measured = provider.measureText(text, font, width);
            EXPECT_TRUE(width == 0 || measured.width <= width);
            EXPECT_EQ(provider.measureText(text, font, measured.width), measured) << "wraps where it fits";
            for (const double scale : {1.0, 2.0, 1.5}) {
                canvas = provider.makeBitmapCanvas(static_cast<int32_t>((measured.width + 20) * scale),
                                                   static_cast<int32_t>((measured.height + 20) * scale));
                canvas->scale(scale, scale);
                canvas->drawText(text, font, red, {{10, 10}, measured}, NSTextAlignment::center, false);
                const CGRect area = painted();
                ASSERT_FALSE(CGRectIsNull(area));
                // Ink may overhang by a pixel; the first and the last line must be there.
                EXPECT_GE(area.origin.x, 10 * scale - 1 - scale);
                EXPECT_LE(CGRectGetMaxX(area), (10 + measured.width) * scale + 1 + scale);
                EXPECT_GE(area.origin.y, 10 * scale - 1 - scale);
                EXPECT_LE(CGRectGetMaxY(area), (10 + measured.height) * scale + 1 + scale);
                EXPECT_GT(area.size.height, (measured.height - size) * scale);
            }
        }
    }
    EXPECT_GT(provider.measureText(text, UIFont::boldSystemFontOfSize(13), 0).width,
              provider.measureText(text, UIFont::systemFontOfSize(13), 0).width);
    EXPECT_GT(provider.measureText("", UIFont::systemFontOfSize(13), 0).height, 10) << "one empty line";
}

TEST_F(CairoCanvas, LongSingleLinesEndInAnEllipsis) {
    const UIFont font = UIFont::systemFontOfSize(14);
    const auto draw = [&](const std::string& text, NSTextAlignment alignment) {
        canvas = provider.makeBitmapCanvas(300, 80);
        canvas->drawText(text, font, red, {{10, 10}, {100, 20}}, alignment, true);
        const auto bytes = canvas->pixels();
        return std::vector<uint8_t>(bytes.begin(), bytes.end());
    };
    const auto cut = draw("iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii", NSTextAlignment::left);
    const CGRect area = painted();
    EXPECT_LE(CGRectGetMaxX(area), 111);
    EXPECT_GT(CGRectGetMaxX(area), 90);
    EXPECT_LT(area.size.height, 20);
    const auto shorter = draw("iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii", NSTextAlignment::left);
    EXPECT_EQ(cut, shorter) << "what does not fit must not matter";
    draw("first\nsecond", NSTextAlignment::left);
    EXPECT_LT(painted().size.height, 20) << "a second line";
    draw("l", NSTextAlignment::right);
    EXPECT_GT(painted().origin.x, 100);
    draw("l", NSTextAlignment::center);
    EXPECT_NEAR(CGRectGetMidX(painted()), 60, 2);
}

TEST_F(CairoCanvas, LeftIsLeftWhicheverWayTheTextRuns) {
    for (const char* const text : {"abc", "\u062d\u0648\u0644", "(1) \u062d\u0648\u0644"}) {
        for (const auto alignment : {NSTextAlignment::left, NSTextAlignment::right}) {
            canvas->clearRect({{0, 0}, {100, 60}});
            canvas->drawText(text, UIFont::systemFontOfSize(14), red, {{0, 0}, {100, 40}}, alignment, false);
            EXPECT_EQ(CGRectGetMidX(painted()) < 50, alignment == NSTextAlignment::left) << text;
        }
    }
}

TEST_F(CairoCanvas, TextOfAnyBytesIsDrawn) {
    for (const std::string& text : {std::string("a\xff\xfe"), std::string("a\0b", 3), std::string("◎ ▶ 漢字"),
                                    std::string(5000, 'W')}) {
        canvas = provider.makeBitmapCanvas(100, 60);
        canvas->drawText(text, UIFont{"No Such Family", 12, false}, red, {{0, 0}, {100, 60}},
                         NSTextAlignment::left, false);
        EXPECT_FALSE(CGRectIsNull(painted()));
    }
}

}  // namespace
