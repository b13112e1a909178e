// The headless host itself: its clock, its input, its pictures, and the death of its GL context.
// Every other scenario relies on it.
#include <algorithm>
#include <gmock/gmock.h>

#include "tests/support/headless_screen.h"

namespace {

class HeadlessHostTest : public HeadlessScreenTest {
  protected:
    void start(CGSize size = {320, 180}, double scale = 1) {
        launch({size, scale});
        ASSERT_TRUE(host->hasOpenGL()) << host->openGLError();
        // The overlay joins from the second frame on.
        host->step();
    }
    std::string openGLErrors() const {
        std::string found;
        for (const auto& line : log.lines) {
            if (line.find("OpenGL error") != std::string::npos) found += line + "\n";
        }
        return found;
    }
};

bool samePicture(const CGImageRef& a, const CGImageRef& b) {
    return a && b && a->width() == b->width() && a->height() == b->height() &&
           std::ranges::equal(a->pixels(), b->pixels());
}

TEST_F(HeadlessHostTest, ALostContextIsRebuiltAndTheNextFrameIsRight) {
    start();
    host->type("c");
    host->play(1);  // until nothing moves
    const CGImageRef before = host->screenPicture();
    for (int times = 0; times < 3; ++times) {
        host->loseContext();
        host->step();
        EXPECT_TRUE(samePicture(before, host->screenPicture())) << host->script();
    }
    EXPECT_EQ(openGLErrors(), "");
}

TEST_F(HeadlessHostTest, HiddenItDrawsNothingAndRebuildsALostContextLater) {
    start();
    const CGImageRef before = host->screenPicture();
    const int64_t shown = host->surface().presentedFrames();
    host->handle(HostVisibility{false});
    host->loseContext();
    host->play(1);
    EXPECT_EQ(host->surface().presentedFrames(), shown);
    host->handle(HostVisibility{true});
    host->step();
    EXPECT_EQ(host->surface().presentedFrames(), shown + 1);
    EXPECT_TRUE(samePicture(before, host->screenPicture())) << host->script();
}

TEST_F(HeadlessHostTest, TilesOfAnySizeMeetWithoutASeam) {
    start({1500, 1000}, 2);
    const auto drawn = [this](int32_t maxTile) {
        std::vector<uint8_t> picture;
        EXPECT_TRUE(
            screen->glkView()->snapshotInTiles(maxTile, [&](std::span<const uint8_t> rows, int32_t count) {
                EXPECT_EQ(rows.size(), 3U * 3000U * static_cast<std::size_t>(count));
                picture.insert(picture.end(), rows.begin(), rows.end());
                return true;
            }));
        return picture;
    };
    const std::vector<uint8_t> once = drawn(0);
    EXPECT_EQ(once.size(), 3U * 3000U * 2000U);
    for (const int32_t tile : {257, 1000}) {
        EXPECT_TRUE(drawn(tile) == once) << tile;
    }
    int bands = 0;
    EXPECT_FALSE(screen->glkView()->snapshotInTiles(100, [&](auto, int32_t) { return ++bands < 2; }));
    EXPECT_EQ(bands, 2) << "stopped";
}

TEST_F(HeadlessHostTest, WithoutResourcesItRefusesToStart) {
    host = std::make_unique<HeadlessHost>(HeadlessHost::Options{{64, 36}, 1, nullptr, "/nowhere"},
                                          [] { return std::make_shared<iOSAppDelegate>(); });
    EXPECT_FALSE(host->launch());
    EXPECT_THAT(log.lines, testing::SizeIs(1));
    host->step();
    EXPECT_FALSE(host->screenPicture());
}

}  // namespace
