// Host contract: films of the screen.
// A host either takes composed frames, which the compositor reads back for it, or captures its screen itself.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/geometry.h"
#include "platform/graphics/cg_image.h"

enum class PixelOrder { rgba, bgra };

/// The composed screen at one moment. Its memory goes round between host and compositor.
struct CapturedFrame {
    int32_t width = 0;  ///< pixels
    int32_t height = 0;
    PixelOrder order = PixelOrder::rgba;
    std::vector<uint8_t> pixels;  ///< four bytes each, the screen's bottom row first, without padding
    double time = 0;              ///< seconds of the app's clock
};

/// A finished film, kept by the host until it is discarded. Main thread only.
class CapturedClip {
  public:
    virtual ~CapturedClip() = default;
    /// Seconds.
    virtual double duration() const = 0;
    /// What the film shows at a time from its start, scaled to fit that many pixels; the same object while
    /// the picture is the same. Null where it cannot be read, or the host shows films itself.
    virtual CGImageRef pictureAt(double time, CGSize fit) = 0;

    /// In one line: where the film lies now, or why it was not saved.
    struct Outcome {
        bool succeeded = false;
        std::string line;
    };
    /// Puts the part between two times where the user keeps films, replacing nothing.
    virtual Outcome save(double from, double to) = 0;
    /// Whether fileToShare has a meaning.
    virtual bool canShare() const { return false; }
    /// The part between two times as a file that can be sent on: its path, or why there is none.
    virtual Outcome fileToShare(double /*from*/, double /*to*/) { return {}; }
    virtual void discard() = 0;

    /// YES if the host has a preview of its own and shows it now; finished is called when the user closes it.
    virtual bool showPreview(const std::function<void()>& /*finished*/) { return false; }
    /// The preview goes without the user's word.
    virtual void hidePreview() {}
};

/// Handlers are called on the main thread, with a later frame. An empty failure is success.
class ScreenCapture {
  public:
    using Started = std::function<void(const std::string& failure)>;
    using Stopped = std::function<void(std::shared_ptr<CapturedClip> clip, const std::string& failure)>;

    virtual ~ScreenCapture() = default;
    virtual bool isAvailable() const = 0;
    virtual void start(Started handler) = 0;
    /// Ends the film that was started; a clip may come with a failure.
    virtual void stop(Stopped handler) = 0;
    /// Called when a film ends by itself.
    virtual void setInterruptionHandler(Stopped handler) = 0;
    /// A clip of an earlier run that was neither saved nor discarded; null if there is none (left).
    virtual std::shared_ptr<CapturedClip> takeLeftClip() { return nullptr; }

    /// Memory for the frame of this time; null if no frame is wanted now. Waits at most where
    /// films are made as fast as they can be.
    virtual std::unique_ptr<CapturedFrame> frameToFill(double /*time*/) { return nullptr; }
    virtual void takeFrame(std::unique_ptr<CapturedFrame> /*frame*/) {}
};

/// The capture of this run; the host sets it at start. Null where there is none.
std::shared_ptr<ScreenCapture> sharedScreenCapture();
void setSharedScreenCapture(std::shared_ptr<ScreenCapture> capture);
