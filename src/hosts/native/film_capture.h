// The recorder of a machine with files: composed frames become a film in a folder of the app's own.
// The display never waits for it: a frame that finds no room is dropped and counted.
#pragma once

#include <memory>
#include <set>
#include <string>

#include "hosts/native/film_worker.h"
#include "platform/host/screen_capture.h"

class ClipFile;

class FilmCapture : public ScreenCapture {
  public:
    struct Folders {
        std::string clips;  ///< the app's own; empty: there is no recorder
        std::string films;  ///< the user's, for what is saved
        /// $XDG_STATE_HOME/zentaro/clips, and the user's folder for videos.
        static Folders ofUser();
    };

    explicit FilmCapture(Folders folders) : _folders(std::move(folders)) {}
    /// A film under way ends as a clip for the next start.
    ~FilmCapture() override;

    bool isAvailable() const override;
    void start(Started handler) override;
    void stop(Stopped handler) override;
    void setInterruptionHandler(Stopped handler) override { _interrupted = std::move(handler); }
    std::shared_ptr<CapturedClip> takeLeftClip() override;
    std::unique_ptr<CapturedFrame> frameToFill(double time) override;
    void takeFrame(std::unique_ptr<CapturedFrame> frame) override;

    /// Of the present or last film.
    int64_t droppedFrames() const { return _dropped; }

  private:
    FilmWorker::Steps steps(const std::shared_ptr<ClipFile>& file, Started started);
    void ended(const std::string& failure);

    Folders _folders;
    Stopped _interrupted;
    Stopped _stopped;
    std::shared_ptr<ClipFile> _file;
    std::unique_ptr<FilmWorker> _worker;
    /// Blocks that the worker queued do nothing once this is gone.
    std::shared_ptr<char> _life = std::make_shared<char>();
    /// Clips that were offered in this run.
    std::set<std::string> _offered;
    double _nextFrame = 0;
    int64_t _dropped = 0;
};
