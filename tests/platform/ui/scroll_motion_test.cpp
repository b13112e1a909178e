// Motions of scrolled things: where they end, and that nothing jumps, also where a glide becomes a spring.
// Points and seconds; every motion is sampled finely.
#include "platform/ui/scroll_motion.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

TEST(ScrollMotion, EndsWithinTheEdgesAndGoesThereWithoutAJump) {
    struct Case {
        const char* what;
        double from, velocity, rest, beyond, longest;
    };
    // From 0 to 1000; a glide goes on for half its velocity, less what is left at its end.
    const Case cases[] = {
        {"stays inside", 500, 600, 795, 0, 2.5},
        {"comes to the lower edge and swings beyond", 900, 2000, 1000, 65, 2},
        {"and to the upper one", 100, -2000, 0, 65, 2},
        {"thrown by a madman", 10, 1e9, 1000, 101, 2},
        {"let go beyond the edge on its way out", -40, -500, 0, 45, 1.5},
        {"too slow to go on", 300, 5, 300, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const ScrollMotion motion = ScrollMotion::glide(c.from, c.velocity, 0, 1000);
        EXPECT_NEAR(motion.rest(), c.rest, 1);
        EXPECT_LE(motion.duration(), c.longest);
        double before = motion.at(0);
        EXPECT_NEAR(before, c.from, 1e-9);
        const double speed = std::min(std::abs(c.velocity), 8000.0) + 11 * 100;
        double beyond = 0;
        for (double t = 0.001; t < motion.duration() + 0.1; t += 0.001) {
            const double now = motion.at(t);
            EXPECT_LE(std::abs(now - before), speed * 0.001 + 0.3) << t;
            beyond = std::max({beyond, now - 1000, -now});
            before = now;
        }
        EXPECT_EQ(before, motion.rest());
        EXPECT_NEAR(beyond, c.beyond, 6);
    }
}

TEST(ScrollMotion, ARubberBandGivesWayLessAndLessAndIsFoundAgainAtItsPull) {
    double before = 0;
    for (const double pull : {1.0, 50.0, 200.0, 1000.0, 1e6}) {
        const double shown = rubberBand(pull, 300);
        EXPECT_GT(shown, before);
        EXPECT_LT(shown, std::min(pull, 300.0));
        EXPECT_EQ(rubberBand(-pull, 300), -shown);
        if (pull < 1e4) {
            EXPECT_NEAR(rubberBandPull(shown, 300), pull, pull * 1e-9);
        }
        before = shown;
    }
    EXPECT_EQ(rubberBand(10, 0), 0);
    EXPECT_TRUE(std::isfinite(rubberBandPull(300, 300)));
}
