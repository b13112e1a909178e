// How many refreshes a frame takes: what counts as slow, what does not, and that it does not flutter.
// A flight must take its five seconds on any machine, and the same ones on the virtual clock.
#include "platform/ui/frame_interval.h"

#include <gtest/gtest.h>

namespace {

constexpr double refresh = 1.0 / 60;

int after(FrameInterval& interval, double refreshes, int frames) {
    for (int i = 0; i < frames; ++i)
        interval.noteFrame(refreshes * refresh, refresh);
    return interval.refreshesPerFrame();
}

}  // namespace

TEST(FrameInterval, FollowsWhatFramesKeepToAndNotTheirHitches) {
    FrameInterval interval;
    EXPECT_EQ(interval.refreshesPerFrame(), 1);
    EXPECT_EQ(after(interval, 1, 31), 1);
    // A suspended machine, and a frame in three that comes late.
    EXPECT_EQ(after(interval, 100000, 1), 1);
    for (int i = 0; i < 90; ++i)
        after(interval, i % 3 == 0 ? 4 : 1, 1);
    EXPECT_EQ(interval.refreshesPerFrame(), 1);

    constexpr std::pair<double, int> steps[] = {{2.1, 2},  {1.45, 2}, {1.35, 1}, {1.55, 1},
                                                {1.65, 2}, {4.8, 5},  {50, 6},   {0, 1}};
    for (const auto& [refreshes, expected] : steps)
        EXPECT_EQ(after(interval, refreshes, 93), expected) << refreshes;
}
