// The developers' overlay over the main screen: its coming and going, and what it reads.
// While it is away it costs the frame one test.
#include "main_screen/game_view_controller.h"
#include "platform/ui/ui_application.h"
#include "tween/gs_tween.h"

namespace {

void observeEvents(const std::shared_ptr<DeveloperOverlayView>& overlay) {
    UIApplication* application = UIApplication::sharedApplication();
    if (!application) return;
    if (!overlay) return application->setEventObserver({});
    application->setEventObserver([seen = std::weak_ptr(overlay)](const HostEvent& event) {
        if (const auto view = seen.lock()) view->noteEvent(event);
    });
}

}  // namespace

void GameViewController::toggleDeveloperOverlay(Sender) {
    if (_developerOverlay) {
        _developerOverlay->removeFromSuperview();
        _developerOverlay = nullptr;
    } else {
        _developerOverlay = std::make_shared<DeveloperOverlayView>(view()->bounds(), [this] {
            return DeveloperFigures{_shader->dwell(), _shader->fractalBounds(),
                                    std::vector<CGRect>(_targets.begin(), _targets.end()),
                                    GSTween::runningTweens()};
        });
        view()->addSubview(_developerOverlay);
    }
    observeEvents(_developerOverlay);
}
