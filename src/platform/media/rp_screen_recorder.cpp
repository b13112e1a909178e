// The one recorder of the app, over the host's capture.
// What is asked in the wrong state is answered with an error; the capture is not bothered.
#include "platform/media/rp_screen_recorder.h"

#include <utility>

#include "platform/foundation/dispatch_queue.h"

namespace {

NSErrorRef errorFor(int64_t code, const std::string& failure) {
    return failure.empty() ? nullptr : std::make_shared<NSError>(RPRecordingErrorDomain, code, failure);
}

std::shared_ptr<RPPreviewViewController> previewOf(std::shared_ptr<CapturedClip> clip) {
    return clip ? std::make_shared<RPPreviewViewController>(std::move(clip)) : nullptr;
}

}  // namespace

RPScreenRecorder& RPScreenRecorder::sharedRecorder() {
    static RPScreenRecorder recorder;
    return recorder;
}

bool RPScreenRecorder::isAvailable() const {
    const auto capture = sharedScreenCapture();
    return capture && capture->isAvailable();
}

void RPScreenRecorder::startRecordingWithMicrophoneEnabled(bool /*microphoneEnabled*/, StartHandler handler) {
    const auto capture = sharedScreenCapture();
    const auto refuse = [&handler](int64_t code, const char* why) {
        DispatchQueue::mainQueue().async(
            [handler = std::move(handler), error = errorFor(code, why)] { handler(error); });
    };
    if (!capture || !capture->isAvailable())
        return refuse(RPRecordingErrorFailedToStart, "Recording is not available");
    if (!_recording.expired())
        return refuse(RPRecordingErrorAttemptToStartInRecorderState, "A recording is under way");
    _recording = capture;
    capture->setInterruptionHandler([this](std::shared_ptr<CapturedClip> clip, const std::string& failure) {
        stoppedByItself(std::move(clip), failure);
    });
    capture->start([this, handler = std::move(handler)](const std::string& failure) {
        if (!failure.empty()) _recording.reset();
        handler(errorFor(RPRecordingErrorFailedToStart, failure));
    });
}

void RPScreenRecorder::stopRecordingWithHandler(StopHandler handler) {
    const auto capture = _recording.lock();
    _recording.reset();
    if (!capture) {
        const auto error = errorFor(RPRecordingErrorAttemptToStopNonRecording, "Nothing is being recorded");
        DispatchQueue::mainQueue().async([handler = std::move(handler), error] { handler(nullptr, error); });
        return;
    }
    capture->stop(
        [handler = std::move(handler)](std::shared_ptr<CapturedClip> clip, const std::string& failure) {
            handler(previewOf(std::move(clip)), errorFor(RPRecordingErrorFailed, failure));
        });
}

void RPScreenRecorder::stoppedByItself(std::shared_ptr<CapturedClip> clip, const std::string& failure) {
    // The failure of a start was told already.
    if (_recording.expired()) return;
    _recording.reset();
    const auto preview = previewOf(std::move(clip));
    if (const auto delegate = _delegate.lock())
        delegate->screenRecorderDidStopRecordingWithError(*this, errorFor(RPRecordingErrorFailed, failure),
                                                          preview);
}

std::shared_ptr<RPPreviewViewController> RPScreenRecorder::takeLeftPreview() {
    const auto capture = sharedScreenCapture();
    return capture ? previewOf(capture->takeLeftClip()) : nullptr;
}
