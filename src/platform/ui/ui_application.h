// The running app: a host hands it every event and every frame, and it does the rest in one order.
// It draws nothing itself: a presenter does, so that the layer of views knows no GL.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/ns_url.h"
#include "platform/foundation/ns_user_activity.h"
#include "platform/host/host_event.h"
#include "platform/host/window_control.h"
#include "platform/ui/frame_interval.h"
#include "platform/ui/ui_window.h"

/// What a host tells the app's own delegate about its life.
class UIApplicationDelegate {
  public:
    virtual ~UIApplicationDelegate() = default;
    virtual bool applicationDidFinishLaunching() = 0;
    /// A link as the user handed it over, which may be any text. What it is decides which of the two below
    /// gets it.
    virtual void applicationOpenLink(const std::string& /*text*/) {}
    /// A file as the user handed it over. texts: those of a picture, which may say anything; nothing for
    /// another kind of file.
    virtual void applicationOpenPicture(const std::string& /*name*/,
                                        const std::optional<PictureTexts>& /*texts*/) {}
    /// A URL of the app's own scheme. NO if nothing handles it.
    virtual bool applicationOpenURL(const NSURL& /*url*/) { return false; }
    /// A web page of the app's own host, among others. NO if nothing handles it.
    virtual bool applicationContinueUserActivity(const NSUserActivity& /*activity*/) { return false; }
    virtual void applicationWillResignActive() {}
    virtual void applicationDidEnterBackground() {}
    virtual void applicationWillEnterForeground() {}
    virtual void applicationDidBecomeActive() {}
    virtual void applicationWillTerminate() {}
    virtual std::shared_ptr<UIWindow> window() const = 0;
};

/// Draws the frame: the GL view below, the overlay above (platform/gl implements it; ui/ knows no GL).
class FramePresenter {
  public:
    virtual ~FramePresenter() = default;
    /// overlayChanged: a view changed since the last frame.
    virtual void presentFrame(UIWindow& window, double time, bool overlayChanged) = 0;
    /// The GL context died with all its objects: whoever owns some makes them anew.
    virtual void contextLost(UIWindow& window) = 0;
};

enum class UIApplicationState : int64_t { active = 0, inactive = 1, background = 2 };

class UIApplication {
  public:
    UIApplication(std::shared_ptr<UIApplicationDelegate> delegate, WindowControl* control,
                  std::unique_ptr<FramePresenter> presenter);
    ~UIApplication();
    UIApplication(const UIApplication&) = delete;
    UIApplication& operator=(const UIApplication&) = delete;

    /// The one that lives now; there is at most one.
    static UIApplication* sharedApplication();

    /// Starts the delegate and makes the app active. NO if the delegate refused.
    bool launch();
    /// NO for a key press that nothing answered: the host may give it a meaning of its own.
    bool handle(const HostEvent& event);
    /// Sees every event before it is handled; an empty function sees none.
    void setEventObserver(std::function<void(const HostEvent&)> observer) {
        _eventObserver = std::move(observer);
    }
    /// One frame at the host's time (seconds, monotonic; a step back counts as standing still): main queue,
    /// display links, view animations, the root controller's per-frame update, drawing. Nothing while hidden:
    /// the app's clock stands still then.
    void frame(HostTime time);

    /// The app's own clock: the host's time less what was spent hidden. Seconds from launch.
    double time() const { return _time; }
    bool isVisible() const { return _visible; }
    /// Still background while the return from there is announced.
    UIApplicationState applicationState() const;
    void setIdleTimerDisabled(bool disabled);
    bool isIdleTimerDisabled() const { return _idleTimerDisabled; }
    const std::shared_ptr<UIApplicationDelegate>& delegate() const { return _delegate; }
    WindowControl* windowControl() const { return _control; }
    /// The screen that lies above all others; null before there is one.
    std::shared_ptr<UIViewController> topViewController() const;
    /// Hands a web page or another program's link to the system. completion: on the main thread, with a later
    /// frame; NO if nothing opened it.
    void openURL(const NSURL& url, std::function<void(bool success)> completion);

    /// Called once per frame with the app's time, in the order of adding, between the view animations and the
    /// drawing. Answers a token for removal.
    int addFrameCallback(std::function<void(double time)> callback);
    void removeFrameCallback(int token);

  private:
    std::shared_ptr<UIApplicationDelegate> _delegate;
    WindowControl* _control;
    std::unique_ptr<FramePresenter> _presenter;
    std::function<void(const HostEvent&)> _eventObserver;
    double _time = 0;
    bool _visible = true;
    bool _inBackground = false;
    bool _firstFrameShown = false;
    bool _idleTimerDisabled = false;

    struct FrameCallback {
        int token = 0;
        std::function<void(double)> block;
        bool removed = false;
    };

    /// One per type of event, called by handle.
    struct EventHandler;

    void advanceClock(HostTime time);
    void runCallbacks();
    void becomeActive();
    void resignActive();
    void setVisible(bool visible);
    void terminate();
    void resize(const HostResize& event);
    bool pressKey(const HostKeyPress& press);
    std::shared_ptr<UIWindow> window() const;

    bool _launched = false;
    bool _active = false;
    bool _terminated = false;
    /// The host's time of the last frame; nothing before the first one and after having been hidden.
    std::optional<HostTime> _lastFrame;
    FrameInterval _frameInterval;
    /// Shared, so that one that is removed while it runs lives to its end.
    std::vector<std::shared_ptr<FrameCallback>> _callbacks;
    int _lastToken = 0;
};
