// The spring's closed forms against a step-by-step integration of its equation, and when it comes to rest.
// The integration knows none of the three cases, so a slip in one of them cannot hide.
#include "platform/ui/spring_curve.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

struct Spring {
    double ratio;
    double velocity;
    double duration;
};

std::ostream& operator<<(std::ostream& out, const Spring& s) {
    return out << "ratio " << s.ratio << ", velocity " << s.velocity << ", duration " << s.duration;
}

constexpr int stepsPerUnit = 20000;

/// Distances from the end at every step up to `end` durations, by the classical fourth-order Runge-Kutta
/// method.
std::vector<double> integrate(const Spring& spring, double frequency, double end) {
    const auto force = [&](double x, double v) {
        return -frequency * frequency * (x - 1) - 2 * spring.ratio * frequency * v;
    };
    const double h = 1.0 / stepsPerUnit;
    double x = 0;
    double v = spring.velocity * spring.duration;
    std::vector<double> distances{1};
    for (int i = 0; i < static_cast<int>(end * stepsPerUnit); ++i) {
        const double k1 = force(x, v);
        const double k2 = force(x + h / 2 * v, v + h / 2 * k1);
        const double k3 = force(x + h / 2 * v + h * h / 4 * k1, v + h / 2 * k2);
        const double k4 = force(x + h * v + h * h / 2 * k2, v + h * k3);
        x += h * v + h * h / 6 * (k1 + k2 + k3);
        v += h / 6 * (k1 + 2 * k2 + 2 * k3 + k4);
        distances.push_back(1 - x);
    }
    return distances;
}

class SpringCurveTest : public testing::TestWithParam<Spring> {};

TEST_P(SpringCurveTest, FollowsTheOscillator) {
    const Spring spring = GetParam();
    const SpringCurve curve(spring.ratio, spring.velocity, spring.duration);
    const auto distances = integrate(spring, curve.frequency(), 1);
    for (int i = 0; i < stepsPerUnit; i += 50) {
        const double time = static_cast<double>(i) / stepsPerUnit;
        ASSERT_NEAR(curve.valueAt(time), 1 - distances[static_cast<std::size_t>(i)], 1e-7) << "at " << time;
    }
}

TEST_P(SpringCurveTest, RestsAtItsDurationAndNotMuchSooner) {
    const Spring spring = GetParam();
    const SpringCurve curve(spring.ratio, spring.velocity, spring.duration);
    const auto distances = integrate(spring, curve.frequency(), 3);
    std::size_t lastMoving = 0;
    for (std::size_t i = 0; i < distances.size(); ++i) {
        if (std::abs(distances[i]) > 1e-3 * (1 + 1e-6)) lastMoving = i;
    }
    const double settled = static_cast<double>(lastMoving) / stepsPerUnit;
    EXPECT_LE(settled, 1);
    EXPECT_GE(settled, spring.ratio < 1 ? 0.75 : 0.999);
    EXPECT_EQ(curve.valueAt(0), 0);
    EXPECT_EQ(curve.valueAt(1), 1);
    EXPECT_EQ(curve.valueAt(7), 1);
}

INSTANTIATE_TEST_SUITE_P(Springs, SpringCurveTest,
                         testing::Values(Spring{1.5, 2, 0.75}, Spring{1.5, 2, 0.5}, Spring{1, 0, 1},
                                         Spring{1, 3, 0.5}, Spring{1 + 1e-7, 1, 1}, Spring{1 - 1e-7, 1, 1},
                                         Spring{0.5, 0, 0.4}, Spring{0.3, -4, 0.4}, Spring{3, -2, 1}));

TEST(SpringCurve, AnswersSomethingForSenselessInput) {
    const double nan = std::nan("");
    for (const Spring& spring :
         {Spring{0, 0, 1}, Spring{-1, 0, 1}, Spring{nan, nan, nan}, Spring{1e300, 0, 1},
          Spring{1, INFINITY, 1}, Spring{0.5, 1e300, 1e300}, Spring{1, 1, 0}}) {
        const SpringCurve curve(spring.ratio, spring.velocity, spring.duration);
        EXPECT_TRUE(std::isfinite(curve.valueAt(0.5))) << spring;
        EXPECT_EQ(curve.valueAt(1), 1) << spring;
        EXPECT_EQ(curve.valueAt(nan), 0) << spring;
    }
}

}  // namespace
