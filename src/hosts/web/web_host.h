// The web host: the app on a page, from its start until the tab is closed.
// The browser calls: a frame when the display wants one, and every event as it happens.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "hosts/web/accessibility_mirror.h"
#include "hosts/web/web_capture.h"
#include "hosts/web/web_http_client.h"
#include "hosts/web/web_share.h"
#include "hosts/web/web_surface.h"
#include "hosts/web/web_window.h"
#include "platform/ui/ui_application.h"

/// What the app itself has to do with the page. Called between frames, on the one thread there is.
class WebHostClient {
  public:
    virtual ~WebHostClient() = default;
    virtual std::shared_ptr<UIApplicationDelegate> makeDelegate() = 0;
    /// A frame was drawn. time: the app's, in seconds.
    virtual void frameShown(double time) = 0;
};

class WebHost {
  public:
    /// Puts the shared services in place for good: a page has one app.
    explicit WebHost(std::unique_ptr<WebHostClient> client);
    WebHost(const WebHost&) = delete;
    WebHost& operator=(const WebHost&) = delete;

    /// Launches the app and lets frames come; tells the page the first one, or why there will be none.
    void start();

    /// NO for a key press that the app has no use for.
    bool handle(const HostEvent& event);
    /// The canvas has its new size already.
    void resize(CGSize points, double scale);
    void setVisible(bool visible);
    void shareAnswered(int number, const ShareOutcome& outcome) { _share->answered(number, outcome); }
    void activate(int id) { _mirror.activate(id); }
    void reached(int id) { _mirror.focus(id); }
    WebHTTPClient& network() { return *_network; }
    WebCapture& capture() { return *_capture; }
    /// Those that the page loads late.
    void fontsArrived();
    /// Nothing is drawn until the browser gives the context back.
    void contextLost();
    void contextRestored();

    /// The browser's milliseconds as seconds that never go back, from event to event.
    HostTime eventTime(double milliseconds);

  private:
    class Presenter;

    std::string launch();
    void fail(const std::string& reason);
    void requestFrames();
    static EM_BOOL frameCalled(double milliseconds, void* host);
    bool drawsFrames() const { return _running && !_contextLost && _application->isVisible(); }
    void drawFrame(HostTime time);
    void tellStepsBack();

    std::unique_ptr<WebHostClient> _client;
    std::shared_ptr<WebCapture> _capture = std::make_shared<WebCapture>();
    WebSurface _surface;
    WebWindow _window;
    std::shared_ptr<WebShare> _share = std::make_shared<WebShare>();
    std::shared_ptr<WebHTTPClient> _network = std::make_shared<WebHTTPClient>();
    AccessibilityMirror _mirror;
    std::unique_ptr<UIApplication> _application;
    HostTime _lastEvent = 0;
    HostTime _lastFrame = 0;
    bool _running = false;
    bool _contextLost = false;
    /// Whether the browser has been asked for frames and not been told to stop.
    bool _framesRequested = false;
    bool _startTold = false;
    std::size_t _toldStepsBack = 0;
};
