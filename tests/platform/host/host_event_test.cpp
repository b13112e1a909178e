// Events in words: one line each, told apart by every field.
// A failing scenario prints its script from these.
#include "platform/host/host_event.h"

#include <gtest/gtest.h>

namespace {

TEST(HostEvent, DescribesEveryKindOnOneLine) {
    const std::pair<HostEvent, const char*> cases[] = {
        {HostTouch{UITouchPhase::began, 3, {12, 40}, 0.25}, "touch began 3 {12, 40} 0.25"},
        {HostTouch{UITouchPhase::cancelled, -1, {0.5, 0}, 2}, "touch cancelled -1 {0.5, 0} 2"},
        {HostKeyPress{HostKey::character, "?", false, false, 1}, "key \"?\" 1"},
        {HostKeyPress{HostKey::backspace, "", true, true, 1.5}, "key control+backspace repeated 1.5"},
        {HostWheel{{3, 4}, -1.5, 2}, "wheel -1.5 {3, 4} 2"},
        {HostMagnify{{3, 4}, 1.25, 2}, "magnify 1.25 {3, 4} 2"},
        {HostResize{{640, 480}, 2}, "resize {640, 480} scale 2"},
        {HostVisibility{false}, "hidden"},
        {HostLifecycle::willTerminate, "lifecycle willTerminate"},
        {HostContextLost{}, "context lost"},
        {HostClose{}, "close"},
    };
    for (const auto& [event, text] : cases)
        EXPECT_EQ(describe(event), text);
}

}  // namespace
