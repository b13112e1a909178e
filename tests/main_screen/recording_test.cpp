// The record button against a recorder that behaves in every way a recorder can, and the preview that
// follows. The button's title is the only state; what goes wrong is logged and nothing else.
#include <gmock/gmock.h>

#include "platform/ui/ui_activity_view_controller.h"
#include "tests/support/headless_screen.h"

namespace {

constexpr const char* idle = "◎";
constexpr const char* recording = "Ⓧ";

/// Ten seconds of film of one colour, kept in memory.
class ScriptedClip : public CapturedClip {
  public:
    double duration() const override { return 10; }
    CGImageRef pictureAt(double time, CGSize) override {
        shown = time;
        return picture;
    }
    Outcome save(double from, double to) override {
        saved = {from, to};
        return {true, "Saved"};
    }
    void discard() override { discarded = true; }
    bool canShare() const override { return true; }
    Outcome fileToShare(double from, double to) override {
        saved = {from, to};
        return {true, "/films/a b.mp4"};
    }

    double shown = -1;
    std::pair<double, double> saved{-1, -1};
    bool discarded = false;
    CGImageRef picture = std::make_shared<CGImage>(16, 9, CGImageFormat::rgba8888,
                                                   std::vector<uint8_t>(std::size_t{16} * 9 * 4, 255));
};

class Recording : public HeadlessScreenTest {
  protected:
    void SetUp() override {
        launch({CGSizeMake(480, 270)});
        log.lines.clear();
    }
    ScriptedCapture& recorder() { return host->capture(); }
    std::string title() const { return screen->toggleRecordButton->title(); }
    void tap() { screen->toggleRecordButton->sendAction(); }
    /// Records and stops: the preview is on the screen.
    std::shared_ptr<RPPreviewViewController> present() {
        tap();
        recorder().started("");
        tap();
        recorder().stopped(clip, "");
        host->play(1);
        return screen->previewViewController;
    }
    std::shared_ptr<UIButton> button(const std::string& label) const {
        for (const auto& view : screen->previewViewController->view()->subviews()) {
            const auto found = std::dynamic_pointer_cast<UIButton>(view);
            if (found && found->title() == label) return found;
        }
        return nullptr;
    }

    std::shared_ptr<ScriptedClip> clip = std::make_shared<ScriptedClip>();
};

}  // namespace

TEST_F(Recording, TheTitleChangesBeforeTheRecorderAnswersAndThePreviewComesFullScreen) {
    EXPECT_EQ(title(), idle);
    tap();
    EXPECT_EQ(title(), recording);
    EXPECT_EQ(recorder().starts, 1);
    recorder().started("");
    tap();
    EXPECT_EQ(title(), idle);
    EXPECT_EQ(recorder().stops, 1);
    EXPECT_FALSE(screen->previewViewController);
    recorder().stopped(clip, "");
    const auto preview = screen->previewViewController;
    ASSERT_TRUE(preview);
    EXPECT_EQ(screen->presentedViewController(), preview);
    EXPECT_EQ(preview->modalPresentationStyle(), UIModalPresentationStyle::fullScreen);
    EXPECT_THAT(log.lines, testing::IsEmpty());
    host->play(1);
    screen->previewControllerDidFinish(*preview);
    host->play(1);
    EXPECT_FALSE(screen->presentedViewController());
    EXPECT_EQ(screen->previewViewController, preview) << "kept until the next one";
}

TEST_F(Recording, WhatGoesWrongIsLoggedAndTheTitleStays) {
    const auto error = [](const char* code, const std::string& why) {
        return "Error Domain=RPRecordingErrorDomain Code=" + std::string(code) + " \"" + why + "\"";
    };
    tap();
    recorder().started("no encoder");
    EXPECT_EQ(title(), recording) << "a failed start";
    tap();
    host->step();
    EXPECT_EQ(title(), idle);
    EXPECT_EQ(recorder().stops, 0) << "nothing was begun";
    tap();
    recorder().started("");
    recorder().interrupted(clip, "the disk is full");
    EXPECT_EQ(title(), recording) << "stopped by itself";
    EXPECT_FALSE(screen->presentedViewController());
    tap();
    host->step();
    tap();
    recorder().started("");
    tap();
    recorder().stopped(clip, "half of it");
    EXPECT_THAT(log.lines, testing::ElementsAre(
                               "error stop recording: " + error("-5803", "no encoder") + " [no encoder]",
                               "error stop recording: " + error("-5829", "Nothing is being recorded") +
                                   " [Nothing is being recorded]",
                               "ERROR SCREEN RECORDER DID STOP: " + error("-5804", "the disk is full"),
                               "error stop recording: " + error("-5829", "Nothing is being recorded") +
                                   " [Nothing is being recorded]",
                               "error stop recording: " + error("-5804", "half of it") + " [half of it]"));
    EXPECT_TRUE(screen->presentedViewController()) << "a preview comes with an error, too";
}

TEST_F(Recording, ThePreviewPlaysIsTrimmedAndSavesOnlyThePartThatIsKept) {
    const auto preview = present();
    ASSERT_TRUE(preview);
    EXPECT_TRUE(preview->isPlaying());
    const double before = clip->shown;
    host->play(2);
    EXPECT_NEAR(clip->shown - before, 2, 0.05);
    const CGRect strip = preview->timeline()->convertRectToWindow(preview->timeline()->bounds());
    const auto at = [&](double part) {
        return CGPointMake(CGRectGetMinX(strip) + 12 + (strip.size.width - 24) * part, CGRectGetMidY(strip));
    };
    host->drag(at(0), at(0.25), 0.2);
    EXPECT_FALSE(preview->isPlaying()) << "scrubbing stops it";
    EXPECT_NEAR(clip->shown, 2.5, 0.02);
    host->drag(at(1), at(0.5), 0.2);
    host->drag(at(0.4), at(0.9), 0.2);
    EXPECT_NEAR(clip->shown, 5, 0.02) << "the playhead stays within the part that is kept";
    button("Save")->accessibilityActivate();
    EXPECT_NEAR(clip->saved.first, 2.5, 0.02);
    EXPECT_NEAR(clip->saved.second, 5, 0.02);
    EXPECT_EQ(preview->message(), "Saved");
    EXPECT_FALSE(clip->discarded);
    button("Done")->accessibilityActivate();
    EXPECT_TRUE(clip->discarded) << "the saved film is enough";
    host->play(1);
    EXPECT_FALSE(screen->presentedViewController());
}

TEST_F(Recording, AClipThatWasNeitherSavedNorDiscardedIsKeptAndOfferedAtTheNextStart) {
    present();
    button("Done")->accessibilityActivate();
    host->play(1);
    EXPECT_FALSE(clip->discarded);
    launch({CGSizeMake(480, 270)});
    recorder().leftClip = clip;
    screen->viewDidAppear(false);
    host->play(1);
    ASSERT_TRUE(screen->presentedViewController());
    button("Discard")->accessibilityActivate();
    EXPECT_TRUE(clip->discarded);
    host->play(1);
    EXPECT_FALSE(screen->presentedViewController());
}

/// Takes what it is given.
class OneDestination : public ShareDestinations {
  public:
    std::vector<ShareDestination> destinations() override {
        return {{"mail", "a.mail", "Mail", ShareIcon::mail, ShareDestination::Need::anything},
                {"picture", "a.picture", "Picture", ShareIcon::picture, ShareDestination::Need::picture},
                {"post", "a.post", "Post", ShareIcon::bubble, ShareDestination::Need::link}};
    }
    void share(const ShareDestination&, const SharedContent& content, Answer answer) override {
        shared = content;
        answer({true, ""});
    }
    SharedContent shared;
};

TEST_F(Recording, ThePreviewSharesTheKeptPartWithWhatTakesFiles) {
    const auto machine = std::make_shared<OneDestination>();
    setSharedShareDestinations(machine);
    const auto preview = present();
    host->press(HostKey::f11);
    EXPECT_TRUE(host->window().isFullscreen()) << "under every screen";
    button("Share")->accessibilityActivate();
    host->play(1);
    EXPECT_FALSE(preview->isPlaying());
    const auto sheet =
        std::dynamic_pointer_cast<UIActivityViewController>(preview->presentedViewController());
    ASSERT_TRUE(sheet);
    ASSERT_EQ(sheet->destinations().size(), 1U);
    sheet->share(sheet->destinations().front());
    EXPECT_EQ(machine->shared.file, "/films/a b.mp4");
    EXPECT_EQ(machine->shared.subject, "Recorded in Zentaro");
    host->play(1);
    EXPECT_FALSE(preview->presentedViewController());
    EXPECT_EQ(screen->presentedViewController(), preview);
    setSharedShareDestinations(nullptr);
}

TEST_F(Recording, AShareSheetGivesWayToThePreviewThatWasAskedForBefore) {
    tap();
    recorder().started("");
    tap();
    screen->shareButton->sendAction();
    host->play(1);
    ASSERT_TRUE(screen->presentedViewController());
    recorder().stopped(clip, "");
    host->play(1);
    EXPECT_EQ(screen->presentedViewController(), screen->previewViewController);
    EXPECT_TRUE(screen->previewViewController);
}

TEST_F(Recording, SheetAndPreviewKeepClearOfNotches) {
    launch({CGSizeMake(844, 390)});
    UIWindow& window = *screen->view()->window();
    const auto isClear = [&](UIViewController& shown) {
        bool clear = true;
        for (const auto& view : shown.view()->subviews()) {
            const CGRect frame = view->convertRectToWindow(view->bounds());
            clear = clear && CGRectGetMinX(frame) >= 47 && CGRectGetMaxX(frame) < 797.01 &&
                    CGRectGetMaxY(frame) < 369.01;
        }
        return clear;
    };
    screen->shareButton->sendAction();
    host->play(1);
    window.setSafeAreaInsets({0, 47, 21, 47});
    host->play(0.1);
    EXPECT_TRUE(isClear(*screen->presentedViewController()));
    EXPECT_EQ(CGRectGetMaxY(screen->presentedViewController()->view()->frame()), 390) << "no gap below";
    host->press(HostKey::escape);
    host->play(1);
    present();
    EXPECT_TRUE(isClear(*screen->presentedViewController()));
}
