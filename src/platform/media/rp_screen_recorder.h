// The screen recorder: starts and stops the host's capture, and hands out the preview of what it filmed.
// Its handlers are called on the main thread, never from within the call that they were given to.
#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/ns_error.h"
#include "platform/media/rp_preview_view_controller.h"

class RPScreenRecorder;

class RPScreenRecorderDelegate {
  public:
    virtual ~RPScreenRecorderDelegate() = default;
    /// The recording ended by itself. Either of the last two may be empty.
    virtual void screenRecorderDidStopRecordingWithError(
        RPScreenRecorder& recorder, const NSErrorRef& error,
        const std::shared_ptr<RPPreviewViewController>& previewViewController) = 0;
};

inline constexpr const char* RPRecordingErrorDomain = "RPRecordingErrorDomain";
enum RPRecordingErrorCode : int64_t {
    RPRecordingErrorFailedToStart = -5803,
    RPRecordingErrorFailed = -5804,
    RPRecordingErrorAttemptToStartInRecorderState = -5827,
    RPRecordingErrorAttemptToStopNonRecording = -5829,
};

class RPScreenRecorder {
  public:
    using StartHandler = std::function<void(const NSErrorRef& error)>;
    using StopHandler =
        std::function<void(const std::shared_ptr<RPPreviewViewController>& preview, const NSErrorRef& error)>;

    static RPScreenRecorder& sharedRecorder();
    /// Whether the host can record at all.
    bool isAvailable() const;
    void setDelegate(std::weak_ptr<RPScreenRecorderDelegate> delegate) { _delegate = std::move(delegate); }
    /// Sound is never recorded: there is none.
    void startRecordingWithMicrophoneEnabled(bool microphoneEnabled, StartHandler handler);
    void stopRecordingWithHandler(StopHandler handler);
    /// The preview of a film of an earlier run that was neither saved nor discarded; null without one (left).
    std::shared_ptr<RPPreviewViewController> takeLeftPreview();

  private:
    void stoppedByItself(std::shared_ptr<CapturedClip> clip, const std::string& failure);

    std::weak_ptr<RPScreenRecorderDelegate> _delegate;
    /// The capture that records now.
    std::weak_ptr<ScreenCapture> _recording;
};
