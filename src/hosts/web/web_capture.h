// The recorder of a browser: it films the canvas by itself and shows its films in its own player.
// Frames are never read back for it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/host/screen_capture.h"

class WebCapture : public ScreenCapture {
  public:
    bool isAvailable() const override;
    void start(Started handler) override;
    void stop(Stopped handler) override;
    void setInterruptionHandler(Stopped handler) override { _interrupted = std::move(handler); }

    /// From the page: the film is whole, or ended by itself.
    void ended(const std::string& failure, bool hasFilm);
    /// From the page: the user closed the player.
    void previewFinished();

  private:
    class Clip;

    Stopped _stopped;
    Stopped _interrupted;
    std::weak_ptr<Clip> _clip;
};
