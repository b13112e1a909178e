// The headless host itself: its clock, its input, its pictures, and the death of its GL context.
// Every other scenario relies on it.
#include "hosts/headless/headless_host.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "app/ios_app_delegate.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/cf_time.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/random_source.h"
#include "tests/support/log_capture.h"

namespace {

class HeadlessHostTest : public testing::Test {
  protected:
    void start(CGSize size = {320, 180}, double scale = 1) {
        _host.reset();
        _host = std::make_unique<HeadlessHost>(HeadlessHost::Options{size, scale}, [this] {
            _delegate = std::make_shared<iOSAppDelegate>();
            return _delegate;
        });
        ASSERT_TRUE(_host->launch());
        ASSERT_TRUE(_host->hasOpenGL()) << _host->openGLError();
        // The overlay joins from the second frame on.
        _host->step();
        _host->step();
    }
    GameViewController& screen() {
        return dynamic_cast<GameViewController&>(*_delegate->window()->rootViewController());
    }
    std::string openGLErrors() const {
        std::string found;
        for (const auto& line : _log.lines) {
            if (line.find("OpenGL error") != std::string::npos) found += line + "\n";
        }
        return found;
    }

    LogCapture _log;
    std::shared_ptr<iOSAppDelegate> _delegate;
    std::unique_ptr<HeadlessHost> _host;
};

bool samePicture(const CGImageRef& a, const CGImageRef& b) {
    return a && b && a->width() == b->width() && a->height() == b->height() &&
           std::ranges::equal(a->pixels(), b->pixels());
}

TEST_F(HeadlessHostTest, TheScreenShowsTheSetUprightAndOpaque) {
    start();
    const CGImageRef picture = _host->screenPicture();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width(), 320);
    EXPECT_EQ(picture->height(), 180);
    EXPECT_EQ(picture->colorAt(220, 90), (CGImage::Color{0, 0, 0, 255})) << "the origin of the plane";
    EXPECT_NE(picture->colorAt(5, 5), (CGImage::Color{0, 0, 0, 255}));
    screen().menuView->setHidden(true);
    _host->step();
    const CGImageRef bare = _host->screenPicture();
    EXPECT_TRUE(std::ranges::equal(picture->row(60), bare->row(60)));
    EXPECT_FALSE(std::ranges::equal(picture->row(160), bare->row(160))) << "the toolbar is gone";
    EXPECT_EQ(openGLErrors(), "");
}

TEST_F(HeadlessHostTest, TimeIsTheHostsAloneAndFramesCostNone) {
    start();
    const double before = CFAbsoluteTimeGetCurrent();
    _host->play(2);
    EXPECT_NEAR(CFAbsoluteTimeGetCurrent() - before, 2, 1e-9);
    EXPECT_NEAR(_host->application().time(), _host->time() - HeadlessHost::kFrame, 1e-9);
    EXPECT_EQ(screen().shader()->dwell(), 256);
}

TEST_F(HeadlessHostTest, TheSameScriptGivesTheSamePicture) {
    const auto play = [this] {
        RandomSource::shared().seed(1);
        start();
        _host->type("ca");
        _host->play(1);
        _host->tap({160, 60});
        _host->play(0.2);
        return _host->screenPicture();
    };
    const CGImageRef first = play();
    EXPECT_TRUE(samePicture(first, play()));
}

TEST_F(HeadlessHostTest, ALostContextIsRebuiltAndTheNextFrameIsRight) {
    start();
    _host->type("c");
    _host->play(1);  // until nothing moves
    const CGImageRef before = _host->screenPicture();
    for (int times = 0; times < 3; ++times) {
        _host->loseContext();
        _host->step();
        EXPECT_TRUE(samePicture(before, _host->screenPicture())) << _host->script();
    }
    EXPECT_EQ(openGLErrors(), "");
}

TEST_F(HeadlessHostTest, AContextLostWhileHiddenIsRebuiltToo) {
    start();
    const CGImageRef before = _host->screenPicture();
    _host->handle(HostVisibility{false});
    _host->loseContext();
    _host->play(0.1);
    _host->handle(HostVisibility{true});
    _host->step();
    EXPECT_TRUE(samePicture(before, _host->screenPicture())) << _host->script();
}

TEST_F(HeadlessHostTest, HiddenItDrawsNothing) {
    start();
    const int64_t shown = _host->surface().presentedFrames();
    _host->handle(HostVisibility{false});
    _host->play(1);
    EXPECT_EQ(_host->surface().presentedFrames(), shown);
    _host->handle(HostVisibility{true});
    _host->step();
    EXPECT_EQ(_host->surface().presentedFrames(), shown + 1);
}

TEST_F(HeadlessHostTest, ResizingResizesThePicture) {
    start();
    _host->resize({200, 100}, 2);
    _host->step();
    const CGImageRef picture = _host->screenPicture();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width(), 400);
    EXPECT_EQ(picture->height(), 200);
    EXPECT_EQ(openGLErrors(), "");
    start({200, 100}, 2);
    EXPECT_TRUE(samePicture(picture, _host->screenPicture())) << "as if it had started like that";
}

TEST_F(HeadlessHostTest, TilesOfAnySizeMeetWithoutASeam) {
    start({1500, 1000}, 2);
    const auto drawn = [this](int32_t maxTile) {
        std::vector<uint8_t> picture;
        EXPECT_TRUE(
            screen().glkView()->snapshotInTiles(maxTile, [&](std::span<const uint8_t> rows, int32_t count) {
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
    EXPECT_FALSE(screen().glkView()->snapshotInTiles(100, [&](auto, int32_t) { return ++bands < 2; }));
    EXPECT_EQ(bands, 2) << "stopped";
}

TEST_F(HeadlessHostTest, TheScriptReadsAsItWasPlayed) {
    start();
    _host->press(HostKey::space);
    _host->step();
    const std::string script = _host->script();
    EXPECT_THAT(script, testing::StartsWith("step 0.016667 (2 times)\nkey space 0.03333"));
    EXPECT_THAT(script, testing::EndsWith("\nstep 0.016667\n"));
}

TEST_F(HeadlessHostTest, WithoutResourcesItRefusesToStart) {
    _host = std::make_unique<HeadlessHost>(HeadlessHost::Options{{64, 36}, 1, nullptr, "/nowhere"},
                                           [] { return std::make_shared<iOSAppDelegate>(); });
    EXPECT_FALSE(_host->launch());
    EXPECT_THAT(_log.lines, testing::SizeIs(1));
    _host->step();
    EXPECT_FALSE(_host->screenPicture());
}

}  // namespace
