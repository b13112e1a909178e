// A film of every composed frame under the name that the user gave, for flights without a display.
// Drawing waits for the encoder where that is slower, so that no frame is lost; both work at the same time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hosts/native/film_worker.h"
#include "platform/host/screen_capture.h"

class ClipFile;

class FilmFile : public ScreenCapture {
  public:
    FilmFile() = default;
    ~FilmFile() override;

    /// Starts "NAME (unfinished).mp4" beside path, which is a film at any moment. Empty for success, else the
    /// mistake.
    std::string open(const std::string& path, int32_t framesPerSecond);
    bool isOpen() const { return _worker != nullptr; }
    /// Gives the film its name, in the place of an older file. Empty for success, else the mistake.
    std::string finish();
    /// No frame is taken any more; finish says why.
    bool hasFailed() const { return _failed; }

    /// Waits for the encoder; null once that failed.
    std::unique_ptr<CapturedFrame> frameToFill(double time) override;
    /// Its time becomes that of its place in the film.
    void takeFrame(std::unique_ptr<CapturedFrame> frame) override;

    /// The app's own recorder is not there.
    bool isAvailable() const override { return false; }
    void start(Started handler) override { handler("a film is being made"); }
    void stop(Stopped handler) override { handler(nullptr, "a film is being made"); }
    void setInterruptionHandler(Stopped) override {}

  private:
    std::string finishFile();

    std::string _path;
    int32_t _rate = 0;
    int64_t _frames = 0;
    bool _failed = false;
    std::shared_ptr<ClipFile> _unfinished;
    std::unique_ptr<FilmWorker> _worker;
};
