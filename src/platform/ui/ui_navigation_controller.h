// Screens one after the other under a bar with their title: the bar's button, the escape key and a device's
// way back lead from each to the one before, and from the first to the screen that presented them.
#pragma once

#include <memory>
#include <vector>

#include "platform/ui/ui_control.h"
#include "platform/ui/ui_view_controller.h"

class NavigationView;

class UINavigationController : public UIViewController {
  public:
    /// Before it is shown: the first screen.
    void setRootViewController(const std::shared_ptr<UIViewController>& controller);
    /// The first one first.
    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const { return _stack; }
    std::shared_ptr<UIViewController> topScreen() const { return _stack.empty() ? nullptr : _stack.back(); }
    void pushViewController(const std::shared_ptr<UIViewController>& controller, bool animated);
    /// Nothing on the first screen.
    void popViewController(bool animated);
    /// Of the stack that the screen is in; null for none.
    static std::shared_ptr<UINavigationController> of(const UIViewController& controller);

    void loadView() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    bool keyPressed(const HostKeyPress& press) override;
    std::size_t stepsBack() const override { return _stack.size(); }
    void didReceiveMemoryWarning() override;

  private:
    void goBack();
    void show(const std::shared_ptr<UIViewController>& from, const std::shared_ptr<UIViewController>& to,
              bool forward, bool animated);
    void dressBar();

    std::vector<std::shared_ptr<UIViewController>> _stack;
    std::shared_ptr<NavigationView> _navigationView;
};
