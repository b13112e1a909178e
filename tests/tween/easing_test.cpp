// Every curve against values worked out apart from it: step by step in double precision where the result is
// fixed bit by bit, to sixty digits where the maths library may differ in its last bit.
#include "tween/easing.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr std::array<double, 9> times = {0, 0.1, 0.3, 0.5, 0.7, 0.9, 1, 1.5, -0.2};
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr double exact = 0;
/// The maths library may differ in its last bit.
constexpr double nearly = 4e-16;

struct CurveCase {
    const char* name;
    GSEasingFunction curve;
    double tolerance;
    std::array<double, times.size()> expected;
};

// clang-format off
const std::vector<CurveCase>& curves() {
    static const std::vector<CurveCase> cases = {
        {"Linear easeNone", Linear::easeNone(), exact, {0.0, 0.10000000149011612, 0.30000001192092896, 0.5, 0.699999988079071, 0.8999999761581421, 1.0, 1.0, 0.0}},
        {"Quadratic easeIn", Quadratic::easeIn(), exact, {0.0, 0.010000000000000002, 0.09, 0.25, 0.48999999999999994, 0.81, 1.0, 2.25, 0.04000000000000001}},
        {"Quadratic easeOut", Quadratic::easeOut(), exact, {0.0, 0.19, 0.51, 0.75, 0.9099999999999999, 0.9900000000000001, 1.0, 0.75, -0.44000000000000006}},
        {"Quadratic easeInOut", Quadratic::easeInOut(), exact, {0.0, 0.020000000000000004, 0.18, 0.5, 0.82, 0.98, 1.0, 0.5, 0.08000000000000002}},
        {"Cubic easeIn", Cubic::easeIn(), exact, {0.0, 0.0010000000000000002, 0.027, 0.125, 0.3429999999999999, 0.7290000000000001, 1.0, 3.375, -0.008000000000000002}},
        {"Cubic easeOut", Cubic::easeOut(), exact, {0.0, 0.2709999999999999, 0.657, 0.875, 0.973, 0.999, 1.0, 1.125, -0.728}},
        {"Cubic easeInOut", Cubic::easeInOut(), exact, {0.0, 0.004000000000000001, 0.108, 0.5, 0.8919999999999999, 0.996, 1.0, 1.5, -0.03200000000000001}},
        {"Quartic easeIn", Quartic::easeIn(), exact, {0.0, 0.00010000000000000003, 0.0081, 0.0625, 0.24009999999999992, 0.6561000000000001, 1.0, 5.0625, 0.0016000000000000005}},
        {"Quartic easeOut", Quartic::easeOut(), exact, {0.0, 0.3438999999999999, 0.7599, 0.9375, 0.9919, 0.9999, 1.0, 0.9375, -1.0735999999999999}},
        {"Quartic easeInOut", Quartic::easeInOut(), exact, {0.0, 0.0008000000000000003, 0.0648, 0.5, 0.9351999999999999, 0.9992, 1.0, 0.5, 0.012800000000000004}},
        {"Quintic easeIn", Quintic::easeIn(), exact, {0.0, 1.0000000000000004e-05, 0.00243, 0.03125, 0.16806999999999994, 0.5904900000000002, 1.0, 7.59375, -0.00032000000000000013}},
        {"Quintic easeOut", Quintic::easeOut(), exact, {0.0, 0.4095099999999998, 0.8319300000000001, 0.96875, 0.99757, 0.99999, 1.0, 1.03125, -1.4883199999999999}},
        {"Quintic easeInOut", Quintic::easeInOut(), exact, {0.0, 0.00016000000000000007, 0.03888, 0.5, 0.96112, 0.99984, 1.0, 1.5, -0.005120000000000002}},
        {"Back easeIn", Back::easeIn(), exact, {-0.0, -0.0143142204284668, -0.08019954299926758, -0.08769750595092773, 0.09286773300170893, 0.5911720161437991, 1.0, 5.28927755355835, -0.08967584228515627}},
        {"Back easeOut", Back::easeOut(), exact, {0.0, 0.4088279838562009, 0.9071322669982911, 1.0876975059509277, 1.0801995429992677, 1.0143142204284668, 1.0, 1.7630925178527832, -1.2180550537109371}},
        {"Back easeInOut", Back::easeInOut(), exact, {-0.0, -0.03751855251251983, -0.07883348630633918, 0.5, 1.0788334863063391, 1.03751855251252, 1.0, 4.094909532032489, -0.3226298675876388}},
        {"Bounce easeOut", Bounce::easeOut(), exact, {0.0, 0.07562500000000001, 0.6806249999999999, 0.7656250111758729, 0.9306249620020408, 0.9881250067055228, 1.000000011175873, 3.2343751341104525, 0.30250000000000005}},
        {"Bounce easeIn", Bounce::easeIn(), exact, {-1.1175872893787187e-08, 0.011874993294477165, 0.06937503799795919, 0.2343749888241271, 0.31937499999999985, 0.9243750000000001, 1.0, -0.890625, -0.44000006034970474}},
        {"Bounce easeInOut", Bounce::easeInOut(), exact, {-5.587936446893593e-09, 0.03000000074505793, 0.044999982118605564, 0.5, 0.9550000178813945, 0.9699999992549421, 1.0000000055879363, 5.125000128522516, -0.7425000547617682}},
        {"Sine easeIn", Sine::easeIn(), nearly, {0.0, 0.01231165940486223, 0.1089934758116321, 0.2928932188134524, 0.5460095002604533, 0.843565534959769, 0.9999999999999999, 1.7071067811865475, 0.04894348370484647}},
        {"Sine easeOut", Sine::easeOut(), nearly, {0.0, 0.15643446504023087, 0.45399049973954675, 0.7071067811865475, 0.8910065241883678, 0.9876883405951378, 1.0, 0.7071067811865476, -0.3090169943749474}},
        {"Sine easeInOut", Sine::easeInOut(), nearly, {-0.0, 0.024471741852423234, 0.20610737385376343, 0.49999999999999994, 0.7938926261462365, 0.9755282581475768, 1.0, 0.5000000000000001, 0.09549150281252627}},
        {"Circular easeIn", Circular::easeIn(), nearly, {-0.0, 0.005012562893380035, 0.04606079858305434, 0.1339745962155614, 0.285857157145715, 0.5641101056459328, 1.0, notANumber, 0.020204102886728803}},
        {"Circular easeOut", Circular::easeOut(), nearly, {0.0, 0.4358898943540673, 0.714142842854285, 0.8660254037844386, 0.9539392014169457, 0.99498743710662, 1.0, 0.8660254037844386, notANumber}},
        {"Circular easeInOut", Circular::easeInOut(), nearly, {-0.0, 0.010102051443364402, 0.09999999999999998, 0.5, 0.8999999999999999, 0.9898979485566356, 1.0, 0.5, 0.041742430504416006}},
        {"Expo easeIn", Expo::easeIn(), nearly, {0.0, 0.001953125, 0.0078125, 0.03125, 0.12499999999999996, 0.5000000000000001, 1.0, 32.0, 0.000244140625}},
        {"Expo easeOut", Expo::easeOut(), nearly, {0.0, 0.5, 0.875, 0.96875, 0.9921875, 0.998046875, 1.0, 0.999969482421875, -3.0}},
        {"Expo easeInOut", Expo::easeInOut(), nearly, {0.0, 0.001953125, 0.03125, 0.5, 0.96875, 0.998046875, 1.0, 1.0, 3.0517578125e-05}},
        {"Elastic easeIn", Elastic::easeIn(), nearly, {0.0, 0.001953124999999452, -0.0039062460584574727, -0.015625011261546844, 0.12499999999999606, -0.2499999639630447, 1.0, -16.000011531823965, 0.00024414062499987824}},
        {"Elastic easeOut", Elastic::easeOut(), nearly, {0.0, 1.249999963963045, 0.8750000000000039, 1.0156250112615468, 1.0039062460584576, 0.9980468750000006, 1.0, 0.999969482421875, 3.000000576591238}},
        {"Elastic easeInOut", Elastic::easeInOut(), nearly, {0.0, -0.0009765636261546014, -0.015624990990760566, 0.5, 1.0156249909907606, 1.0009765636261545, 1.0, 1.0, -1.5258819855785504e-05}},
    };
    return cases;
}
// clang-format on

/// The process's tunables as they were, whatever a test does.
class EasingTest : public testing::Test {
  protected:
    void TearDown() override {
        Elastic::setAValue(1);
        Elastic::setPValue(static_cast<double>(0.3F));
        Back::setSValue(static_cast<double>(1.70158F));
    }
};

TEST_F(EasingTest, CurvesAnswerEveryBitThatIsFixed) {
    for (const auto& [name, curve, tolerance, expected] : curves()) {
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double value = curve(times[i]);
            if (std::isnan(expected[i])) {
                EXPECT_TRUE(std::isnan(value)) << name << " at " << times[i];
            } else {
                EXPECT_NEAR(value, expected[i], tolerance * std::fmax(1, std::fabs(expected[i])))
                    << name << " at " << times[i];
            }
        }
    }
}

TEST_F(EasingTest, GuardedEndsAreExact) {
    EXPECT_EQ(Expo::easeIn()(1), 1);
    EXPECT_EQ(Expo::easeOut()(0), 0);
    EXPECT_EQ(Expo::easeInOut()(7), 1);
    EXPECT_EQ(Elastic::easeInOut()(7), 1);
    EXPECT_EQ(Linear::easeNone()(1.7), 1);
    EXPECT_EQ(Linear::easeNone()(notANumber), 0);
}

TEST_F(EasingTest, BounceBreaksWhereSinglePrecisionDoes) {
    const struct {
        double x;
        double expected;
    } cases[] = {{0.36363636363636365, 7.5625 * (0.36363636363636365 * 0.36363636363636365)},
                 {std::nextafter(0.3636363744735718, 0), 1.0000000596046454},
                 {0.3636363744735718, 1.0000000149011614},
                 {std::nextafter(0.7272727489471436, 0), 1.0000000149011612},
                 {0.7272727489471436, 0.9999999627471026},
                 {std::nextafter(0.9090909361839294, 0), 1.0000000447034914},
                 {0.9090909361839294, 0.9999999701976918}};
    for (const auto& each : cases) {
        EXPECT_EQ(Bounce::easeOut()(each.x), each.expected) << each.x;
        EXPECT_EQ(Bounce::easeOutWithTime(each.x * 4, 4), Bounce::easeOut()(each.x)) << each.x;
    }
}

struct FlatBounce : BounceFamily<FlatBounce> {
    static GSEasingFunction easeOut() {
        return GSEasingFunction([](double t) { return 10 * t; });
    }
    static double easeOutWithTime(double time, double duration) { return 100 * time / duration; }
};

TEST_F(EasingTest, KinOfBounceBouncesItsOwnWay) {
    EXPECT_EQ(FlatBounce::easeIn()(0.75), 1 - 10 * 0.25);
    EXPECT_EQ(FlatBounce::easeInOut()(0.25), 0.5 * (1 - 100 * 0.5));
    EXPECT_EQ(FlatBounce::easeInOut()(0.75), 0.5 * (100 * 0.5) + 0.5);
}

TEST_F(EasingTest, TunablesActOnCurvesInHand) {
    EXPECT_EQ(Elastic::pValue(), 0.30000001192092896);
    EXPECT_EQ(Elastic::aValue(), 1);
    EXPECT_EQ(Back::sValue(), 1.7015800476074219);
    const GSEasingFunction out = Elastic::easeOut();
    // Where the sine is 0 the curve is 1: at the phase s and half a period later.
    Elastic::setAValue(2);
    Elastic::setPValue(0.6);
    EXPECT_NEAR(out(0.6 / 12), 1, 1e-15);
    EXPECT_NEAR(out(0.6 / 12 + 0.3), 1, 1e-15);
    Elastic::setAValue(0.5);
    EXPECT_EQ(Elastic::aValue(), 2);
    EXPECT_NEAR(out(0.6 / 12), 1, 1e-15);
    Elastic::setAValue(1);
    EXPECT_NEAR(out(0.6 / 4), 1, 1e-15);

    const GSEasingFunction back = Back::easeIn();
    Back::setSValue(3);
    EXPECT_EQ(back(0.5), 0.25 * (4 * 0.5 - 3));
    EXPECT_EQ(Back::easeInOut()(0.25),
              0.5 * 0.25 * ((3 * 1.524999976158142 + 1) * 0.5 - 3 * 1.524999976158142));
}

}  // namespace
