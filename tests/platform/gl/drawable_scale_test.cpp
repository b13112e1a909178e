// The scale against GPUs of several speeds, each with the iteration limit's own rule beside it.
// The GPU's cost grows with pixels and limit; no frame is drawn.
#include "platform/gl/drawable_scale.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

struct GPU {
    DrawableScale scale;
    double limit = 256;
    int changes = 0;

    /// fullCost: milliseconds at full scale with the limit at its ceiling, half of which the limit can save.
    void draw(int frames, double fullCost, double leastCost = 1) {
        for (int i = 0; i < frames; ++i) {
            const double factor = scale.factor();
            const double cost = std::max(leastCost, fullCost * factor * factor * (0.5 + 0.5 * limit / 256));
            if (cost < 50) limit = std::min(limit + 16, 256.0);
            if (cost > 80) limit = std::max(limit - 4, 64.0);
            using enum DrawableScale::Limit;
            scale.noteFrame(cost, limit == 64 ? atFloor : limit == 256 ? atCeiling : between);
            if (scale.factor() != factor) ++changes;
        }
    }
};

}  // namespace

TEST(DrawableScale, SettlesWhereTheGPUKeepsUpAndStaysThere) {
    struct Case {
        const char* what;
        double fullCost;
        double leastCost;
        double factor;
    };
    const Case cases[] = {
        {"in the band", 70, 1, 1},
        {"the limit alone suffices", 110, 1, 1},
        {"one step", 200, 1, 0.7071},
        {"two steps", 300, 1, 0.5},
        {"as coarse as it gets", 5000, 1, 0.3536},
        {"slow from elsewhere than pixels", 90, 90, 0.3536},
    };
    for (const Case& c : cases) {
        GPU gpu;
        gpu.draw(1000, c.fullCost, c.leastCost);
        EXPECT_NEAR(gpu.scale.factor(), c.factor, 0.001) << c.what;
        const int changes = gpu.changes;
        gpu.draw(5000, c.fullCost, c.leastCost);
        EXPECT_EQ(gpu.changes, changes) << c.what << ": it pumps";
    }
}

TEST(DrawableScale, ComesBackStepByStep) {
    GPU gpu;
    gpu.draw(1000, 5000);
    ASSERT_EQ(gpu.changes, 3);
    gpu.draw(50, 20);
    EXPECT_EQ(gpu.changes, 3) << "not at once";
    // Displays that browsers slow down to thirty frames a second are no slow GPUs.
    gpu.draw(300, 20, 33.4);
    EXPECT_EQ(gpu.scale.factor(), 1);
}

TEST(DrawableScale, IsLeftAloneByHitchesAndWhileTheLimitIsStillFalling) {
    DrawableScale scale;
    for (int i = 0; i < 1000; ++i) {
        scale.noteFrame(i % 12 == 0 ? 40 : 500, DrawableScale::Limit::atFloor);
        scale.noteFrame(500, DrawableScale::Limit::between);
    }
    EXPECT_EQ(scale.factor(), 1);
}
