// The application delegate: makes the window with its main screen, opens links, and holds the rectangle of
// the last one. It is the only place that knows both the framework's storyboard and the app's classes.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "main_screen/deep_link_delegate.h"
#include "platform/ui/ui_application.h"
#include "routing/jlr_route_value.h"

class iOSAppDelegate : public UIResponder,
                       public UIApplicationDelegate,
                       public DeepLinkDelegate,
                       public std::enable_shared_from_this<iOSAppDelegate> {
  public:
    iOSAppDelegate();
    ~iOSAppDelegate() override;

    bool applicationDidFinishLaunching() override;
    void applicationOpenLink(const std::string& text) override;
    void applicationOpenPicture(const std::string& name, const std::optional<PictureTexts>& texts) override;
    bool applicationOpenURL(const NSURL& url) override;
    bool applicationContinueUserActivity(const NSUserActivity& activity) override;
    std::shared_ptr<UIWindow> window() const override { return _window; }

    CGRect launchRect() const override { return _launchRect; }
    bool loadDeeplink(const std::optional<NSURL>& url) override;
    /// Before the launch: the log says what the rating request decides, and why.
    void setVerbose() { _verbose = true; }
    /// Factory reset of the main screen.
    void resetCrap();

  private:
    bool loadMainScreen();
    void startRating();
    bool openView(const JLRRouteParameters& parameters);
    void show(int32_t fractalType, CGRect bounds, std::optional<int32_t> palette);

    std::shared_ptr<UIWindow> _window;
    CGRect _launchRect = CGRectNull;
    bool _isRouted = false;
    bool _verbose;
};
