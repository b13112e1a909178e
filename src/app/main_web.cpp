// The entry of the page: the app in its host, and the path of the view that it
// came to rest on. main returns at once; the browser calls from then on.
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/ios_app_delegate.h"
#include "app/linked_view.h"
#include "hosts/web/web_exports.h"
#include "hosts/web/web_host.h"
#include "hosts/web/web_page.h"
#include "main_screen/fractal_bounds.h"
#include "main_screen/game_view_controller.h"
#include "main_screen/link_host.h"

namespace {

constexpr double kRest = 0.5;  // seconds

/// Tells where the view came to rest, once for each place.
class SettledView {
  public:
    /// time: seconds, growing.
    void look(int32_t type, CGRect bounds, double time) {
        if (type != _type || bounds != _bounds) {
            _type = type;
            _bounds = bounds;
            _changed = time;
            _isTold = false;
        }
        if (_isTold || time < _changed + kRest) return;
        _isTold = true;
        tell(deepLinkPath(type, bounds));
    }

  private:
    void tell(std::string path) {
        // Views too large or too small for a link leave the address of the last one.
        if (path == _told || !linkedViewOfPath(path)) return;
        _told = std::move(path);
        WebPage::viewSettled(_told);
    }

    int32_t _type = 0;
    CGRect _bounds;
    double _changed = 0;
    bool _isTold = false;
    std::string _told;
};

class PageClient : public WebHostClient {
  public:
    std::shared_ptr<UIApplicationDelegate> makeDelegate() override {
        _delegate = std::make_shared<iOSAppDelegate>();
        return _delegate;
    }

    void frameShown(double time) override {
        if (const auto* screen = mainScreen())
            _settled.look(screen->fractalType(), screen->shader()->fractalBounds(), time);
    }

  private:
    GameViewController* mainScreen() const {
        const auto window = _delegate->window();
        return window ? dynamic_cast<GameViewController*>(window->rootViewController().get()) : nullptr;
    }

    std::shared_ptr<iOSAppDelegate> _delegate;
    SettledView _settled;
};

}  // namespace

int main() {
    setLinkHost(WebPage::host());
    // Lives as long as the page.
    static auto* const host = new WebHost(std::make_unique<PageClient>());
    setExportedWebHost(host);
    host->start();
}
