// The application delegate: makes the window with its main screen, and holds the rectangle of the last link.
// It is the only place that knows both the framework's storyboard and the app's classes.
#pragma once

#include <memory>
#include <string>

#include "main_screen/deep_link_delegate.h"
#include "platform/ui/ui_application.h"

class iOSAppDelegate : public UIResponder, public UIApplicationDelegate, public DeepLinkDelegate {
  public:
    bool applicationDidFinishLaunching() override;
    std::shared_ptr<UIWindow> window() const override { return _window; }
    CGRect launchRect() const override { return _launchRect; }
    /// No route takes links yet: every answer is NO.
    bool loadDeeplink(const std::string& url) override;
    /// Factory reset of the main screen.
    void resetCrap();

  private:
    std::shared_ptr<UIWindow> _window;
    CGRect _launchRect = CGRectNull;
};
