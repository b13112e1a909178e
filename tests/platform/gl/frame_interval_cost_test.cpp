// The pace of frames that come in bursts, and what is no pace at all.
// Times in milliseconds, as a page gets them.
#include "platform/gl/frame_interval_cost.h"

#include <gmock/gmock.h>

TEST(FrameIntervalCost, IsTheMeanOfTheLastEightIntervals) {
    struct Case {
        const char* what;
        std::vector<double> intervals;
        std::optional<double> cost;
    };
    const Case cases[] = {
        {"too few", {16, 16, 16, 16, 16, 16, 16}, std::nullopt},
        {"bursts", {20, 160, 20, 160, 20, 160, 20, 160, 20, 160, 20}, 90},
        {"what was slow before is forgotten", {500, 500, 500, 20, 20, 20, 20, 20, 20, 20, 20}, 20},
        {"a rest begins anew", {16, 16, 16, 16, 16, 16, 16, 16, 60000, 16, 16}, std::nullopt},
        {"and so does what follows", {60000, 40, 40, 40, 40, 40, 40, 40, 40}, 40},
    };
    for (const Case& c : cases) {
        FrameIntervalCost cost;
        double time = 1e6;
        cost.noteFrame(time);
        for (const double interval : c.intervals)
            cost.noteFrame(time += interval);
        if (c.cost) {
            EXPECT_THAT(cost.cost(), testing::Optional(testing::DoubleNear(*c.cost, 1e-6))) << c.what;
        } else {
            EXPECT_THAT(cost.cost(), testing::Eq(std::nullopt)) << c.what;
        }
    }
}
