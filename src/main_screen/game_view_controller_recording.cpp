// Recording: the button's title is the only state, changed before the recorder answers and never changed
// back. Errors are logged, and the user sees none of them.
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_window.h"

namespace {

constexpr const char* idleTitle = "◎";
constexpr const char* recordingTitle = "Ⓧ";

void logAnswer(const NSErrorRef& error) {
    if (!error) return;
    NSLog("error stop recording: %s [%s]", error->description().c_str(),
          error->localizedDescription().c_str());
}

}  // namespace

std::shared_ptr<GameViewController> GameViewController::sharedFromThis() {
    return std::static_pointer_cast<GameViewController>(shared_from_this());
}

void GameViewController::toggleRecording(Sender) {
    RPScreenRecorder& recorder = RPScreenRecorder::sharedRecorder();
    if (toggleRecordButton->title() == idleTitle) {
        toggleRecordButton->setTitle(recordingTitle);
        recorder.setDelegate(sharedFromThis());
        // The start's failure is logged in the stop's words.
        recorder.startRecordingWithMicrophoneEnabled(false, logAnswer);
        return;
    }
    toggleRecordButton->setTitle(idleTitle);
    recorder.stopRecordingWithHandler(
        [self = std::weak_ptr<GameViewController>(sharedFromThis())](
            const std::shared_ptr<RPPreviewViewController>& preview, const NSErrorRef& error) {
            logAnswer(error);
            const auto screen = self.lock();
            if (preview && screen) screen->presentPreview(preview);
        });
}

void GameViewController::presentPreview(const std::shared_ptr<RPPreviewViewController>& preview) {
    preview->setPreviewControllerDelegate(sharedFromThis());
    previewViewController = preview;
    preview->setModalPresentationStyle(UIModalPresentationStyle::fullScreen);
    const UIWindow* window = view()->window();
    const auto root = window ? window->rootViewController() : nullptr;
    if (!root) return;
    // A share sheet, opened while the film was being finished, would hold the preview up for good.
    if (root->presentedViewController()) root->dismissViewControllerAnimated(false);
    root->presentViewController(preview, true);
}

void GameViewController::offerLeftRecording() {
    if (const auto preview = RPScreenRecorder::sharedRecorder().takeLeftPreview()) presentPreview(preview);
}

void GameViewController::screenRecorderDidStopRecordingWithError(
    RPScreenRecorder&, const NSErrorRef& error, const std::shared_ptr<RPPreviewViewController>&) {
    if (error) NSLog("ERROR SCREEN RECORDER DID STOP: %s", error->description().c_str());
}

void GameViewController::previewControllerDidFinish(RPPreviewViewController& preview) {
    preview.dismissViewControllerAnimated(true);
}
