// Passes the recorder's questions on to the page, and the page's answers back.
// The page keeps the last film alone.
#include "hosts/web/web_capture.h"

#include <utility>

#include "hosts/web/web_page.h"
#include "platform/foundation/dispatch_queue.h"

/// The page's film, which the page alone saves and shares.
class WebCapture::Clip : public CapturedClip {
  public:
    double duration() const override { return 0; }
    CGImageRef pictureAt(double, CGSize) override { return nullptr; }
    Outcome save(double, double) override { return {}; }
    void discard() override {}
    bool showPreview(const std::function<void()>& finished) override {
        _finished = finished;
        WebPage::showPreview();
        return true;
    }
    void hidePreview() override { WebPage::hidePreview(); }
    void finish() {
        if (const auto finished = std::exchange(_finished, nullptr)) finished();
    }

  private:
    std::function<void()> _finished;
};

bool WebCapture::isAvailable() const {
    return WebPage::canRecord();
}

void WebCapture::start(Started handler) {
    DispatchQueue::mainQueue().async(
        [handler = std::move(handler), failure = WebPage::startRecording()] { handler(failure); });
}

void WebCapture::stop(Stopped handler) {
    if (WebPage::stopRecording()) {
        _stopped = std::move(handler);
        return;
    }
    DispatchQueue::mainQueue().async(
        [handler = std::move(handler)] { handler(nullptr, "nothing is being filmed"); });
}

void WebCapture::ended(const std::string& failure, bool hasFilm) {
    const auto clip = hasFilm ? std::make_shared<Clip>() : nullptr;
    _clip = clip;
    const auto handler = _stopped ? std::exchange(_stopped, nullptr) : _interrupted;
    if (handler) DispatchQueue::mainQueue().async([handler, clip, failure] { handler(clip, failure); });
}

void WebCapture::previewFinished() {
    if (const auto clip = _clip.lock()) clip->finish();
}
