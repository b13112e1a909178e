// The shaders' pictures, drawn by a real GL: against a double-precision reference and the plain shader.
// Shapes, depth, symmetry, the iteration limit and rectangles nobody should ask for.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

#include "tests/support/fractal_reference.h"
#include "tests/support/fractal_test.h"

namespace {

bool isBlack(const uint8_t* pixel) {
    return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
}

int difference(const uint8_t* a, const uint8_t* b) {
    return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
}

/// How many pixels (x, y) fulfil the condition.
template <typename Condition>
int countPixels(int width, int height, const Condition& condition) {
    int found = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            found += condition(x, y) ? 1 : 0;
    }
    return found;
}

class FractalPictureTest : public FractalTest {
  protected:
    void SetUp() override {
        FractalTest::SetUp();
        naive = std::make_unique<FractalProgram>(textOfFile(ZENTARO_RESOURCES_DIR "/Shader.vsh"),
                                                 textOfFile(ZENTARO_SOURCE_DIR "/bench/fractal_naive.fsh"));
    }
    void TearDown() override {
        naive.reset();
        FractalTest::TearDown();
    }

    std::unique_ptr<FractalProgram> naive;
};

struct NamedView {
    const char* name;
    FractalView view;
};

const NamedView kTop = {"top", {-3.6666667F, -1.5F, 1.6666667F, 1.5F}};
const NamedView kFilament = {"filament", {-0.7463F, 0.1102F, -0.7413F, 0.1130F}};

// Not among them: dust such as a whole Julia set's, where a float's rounding decides on one pixel in 200.
const std::vector<NamedView> kMaskViews = {
    kTop,
    {"seahorse valley", {-0.78F, 0.10F, -0.70F, 0.145F}},
    {"elephant valley", {0.25F, -0.01F, 0.33F, 0.035F}},
    {"period-3 bulb", {-0.16F, 0.68F, -0.08F, 0.725F}},
    {"deep, on the antenna", {-1.748760F, -0.0000045F, -1.748744F, 0.0000045F}},
};

TEST_F(FractalPictureTest, OnlyPointsThatDoNotEscapeAreBlack) {
    constexpr int kWidth = 1280;
    constexpr int kHeight = 720;
    for (const NamedView& c : kMaskViews) {
        const FractalPicture picture = draw(c.view, kWidth, kHeight, true);
        const FractalCounts reference = referenceCounts(c.view, kWidth, kHeight);
        const int wrong = countPixels(kWidth, kHeight, [&](int x, int y) {
            return isBlack(picture.at(x, y)) == reference.escaped(x, y);
        });
        EXPECT_LT(wrong * 1000.0, 3.0 * kWidth * kHeight) << c.name << ": " << wrong << " pixels";
    }
}

// The colours of a picture in the order of the reference's counts: the palette has a period of 32 iterations,
// and every sixteenth of an iteration stands for one colour.
double shareOffPalette(const FractalPicture& picture, const FractalCounts& reference) {
    constexpr int kSlots = 32 * 16;
    const auto slotOf = [](double count) {
        return static_cast<size_t>(std::lround((count - 32.0 * std::floor(count / 32.0)) * 16.0)) % kSlots;
    };
    std::vector<std::vector<int>> samples(kSlots);
    const int all = countPixels(picture.width, picture.height, [&](int x, int y) {
        if (reference.escaped(x, y)) samples[slotOf(reference.at(x, y))].push_back(picture.at(x, y)[1]);
        return reference.escaped(x, y);
    });
    std::ptrdiff_t off = 0;
    for (std::vector<int>& greens : samples) {
        if (greens.empty()) continue;
        const auto middle = greens.begin() + static_cast<std::ptrdiff_t>(greens.size() / 2);
        std::nth_element(greens.begin(), middle, greens.end());
        const int typical = *middle;
        off += std::ranges::count_if(greens, [&](int green) { return std::abs(green - typical) > 12; });
    }
    return static_cast<double>(off) / std::max(1, all);
}

// At these steps (1.2e-8 and below a float's resolution) plain floats put blocks of many pixels on one point.
TEST_F(FractalPictureTest, DeepViewsAreCrisp) {
    const std::vector<NamedView> views = {
        {"filament", {-0.743643F, 0.131825F, -0.743643F + 0.0000045F, 0.131825F + 0.0000025F}},
        {"seahorse", {-0.743650F, 0.131820F, -0.743646F, 0.1318223F}},
        {"near -1.75", {-1.748750F, 0.0F, -1.748745F, 0.000003F}},
        {"julia", {0.119850F, 0.3402F, 0.119854F, 0.3402023F, 2}},
    };
    for (const NamedView& c : views) {
        const FractalPicture picture = draw(c.view, 320, 180);
        const FractalCounts reference = referenceCounts(c.view, 320, 180);
        EXPECT_LT(shareOffPalette(picture, reference), 0.02) << c.name;
    }
    // The measure itself sees the blocks of plain floats.
    const FractalPicture blocky = draw(shader->plain(), views[0].view, 320, 180);
    EXPECT_GT(shareOffPalette(blocky, referenceCounts(views[0].view, 320, 180)), 0.05);
}

TEST_F(FractalPictureTest, AgreesWithThePlainShader) {
    struct Case {
        NamedView named;
        double allowedShare;
        bool onlyBlack = false;
    };
    std::vector<Case> cases = {
        {kTop, 0.0},
        {kFilament, 0.0},
        {kMaskViews[3], 0.0},
        {{"julia", {-1.7777778F, -1.0F, 1.7777778F, 1.0F, 2}}, 0.005},
        {{"very far out", {-4000.0F, -2250.0F, 4000.0F, 2250.0F}}, 0.0},
        {{"julia, far out", {-40.0F, -22.5F, 40.0F, 22.5F, 2}}, 0.005},
    };
    for (const float limit : {252.0F, 64.0F}) {
        Case lower = {kFilament, 0.0};
        lower.named.view.limit = limit;
        cases.push_back(lower);
    }
    // Between two multiples of four the shader tells the last step from the continuous count, blurred by
    // 1/100.
    for (const float limit : {65.0F, 101.5F, 255.0F}) {
        Case between = {kFilament, 1.0 / 2000, true};
        between.named.view.limit = limit;
        cases.push_back(between);
    }
    for (const Case& c : cases) {
        const FractalPicture ours = draw(c.named.view, 640, 360);
        const FractalPicture plain = draw(*naive, c.named.view, 640, 360);
        const int apart = countPixels(640, 360, [&](int x, int y) {
            const uint8_t* one = ours.at(x, y);
            const uint8_t* other = plain.at(x, y);
            return c.onlyBlack ? isBlack(one) != isBlack(other) : difference(one, other) > 2;
        });
        EXPECT_LE(apart, c.allowedShare * 640 * 360) << c.named.name << ", limit " << c.named.view.limit;
    }
}

TEST_F(FractalPictureTest, HostileRectanglesDrawSomethingOpaque) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInf = std::numeric_limits<float>::infinity();
    const std::vector<FractalView> views = {
        {kNan, kNan, kNan, kNan},       {-kInf, -kInf, kInf, kInf},       {0.0F, 0.0F, 0.0F, 0.0F},
        {1.0F, 1.0F, -1.0F, -1.0F},     {-3e38F, -3e38F, 3e38F, 3e38F},   {0.0F, kNan, 1.0F, 1.0F},
        {-1e20F, -1e20F, 1e20F, 1e20F}, {1e-40F, 1e-40F, 2e-40F, 2e-40F},
    };
    for (const FractalView& rectangle : views) {
        for (const int type : {1, 2, -7}) {
            FractalView view = rectangle;
            view.type = type;
            const FractalPicture picture = draw(view, 16, 16);
            for (size_t i = 3; i < picture.bytes.size(); i += 4) {
                ASSERT_EQ(picture.bytes[i], 255)
                    << view.x1 << " " << view.y1 << " " << view.x2 << " " << view.y2;
            }
        }
    }
}

}  // namespace
