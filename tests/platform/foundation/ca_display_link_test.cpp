// Display links that come and go while they are stepped, and a clock that stands still or jumps.
// Tweens rely on every one of these rules.
#include "platform/foundation/ca_display_link.h"

#include <gmock/gmock.h>
#include <limits>

#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;

struct CADisplayLinkTest : testing::Test {
    ~CADisplayLinkTest() override {
        loop.invalidateDisplayLinks();
        loop.setRefreshInterval(NSRunLoop::defaultRefreshInterval);
        EXPECT_EQ(loop.displayLinkCount(), 0U);
    }

    std::shared_ptr<CADisplayLink> add(const std::string& name, const std::function<void()>& then = {}) {
        auto link = std::make_shared<CADisplayLink>([this, name, then](CADisplayLink&) {
            fired.push_back(name);
            if (then) then();
        });
        link->addToRunLoop(loop);
        return link;
    }
    std::vector<std::string> frame() {
        fired.clear();
        loop.fireDisplayLinks(0);
        return fired;
    }

    NSRunLoop& loop = NSRunLoop::currentRunLoop();
    std::vector<std::string> fired;
};

TEST_F(CADisplayLinkTest, FireInTheOrderOfAddingAndChangeTheirListMeanwhile) {
    std::shared_ptr<CADisplayLink> self;
    std::shared_ptr<CADisplayLink> before;
    std::shared_ptr<CADisplayLink> after;
    before = add("before");
    self = add("self", [&] {
        before->invalidate();
        self->invalidate();
        after->invalidate();
        self.reset();
        for (int i = 0; i < 20; ++i)
            add("new");
        EXPECT_EQ(loop.displayLinkCount(), 21U);
    });
    after = add("after");
    const auto last = add("last");
    last->addToRunLoop(loop);
    EXPECT_THAT(frame(), ElementsAre("before", "self", "last"));
    EXPECT_EQ(frame().size(), 21U);
    EXPECT_EQ(fired.front(), "last");
    after->addToRunLoop(loop);
    EXPECT_EQ(loop.displayLinkCount(), 21U);
}

struct Stepped {
    void step(CADisplayLink& link) { steps.emplace_back(link.timestamp(), link.duration()); }
    std::vector<std::pair<double, double>> steps;
};

TEST_F(CADisplayLinkTest, TimeMayStandStillOrJumpButTheDurationIsNominal) {
    const auto stepped = std::make_shared<Stepped>();
    const auto link = CADisplayLink::displayLinkWithTarget(stepped, &Stepped::step);
    link->addToRunLoop(loop);
    LogCapture log;
    loop.setRefreshInterval(0.125);
    for (const double impossible : {0.0, std::numeric_limits<double>::quiet_NaN()})
        loop.setRefreshInterval(impossible);
    EXPECT_EQ(log.lines.size(), 2U);
    for (const double time : {1.0, 1.0, 500.0, 2.0})
        loop.fireDisplayLinks(time);
    using Step = std::pair<double, double>;
    EXPECT_THAT(stepped->steps,
                ElementsAre(Step(1, 0.125), Step(1, 0.125), Step(500, 0.125), Step(2, 0.125)));
    EXPECT_EQ(stepped.use_count(), 2);
    link->invalidate();
    EXPECT_EQ(stepped.use_count(), 1);
    EXPECT_EQ(link->duration(), 0.125);
}

}  // namespace
