// A screen: the owner of a view tree, told when it loads, appears and goes.
// The app derives its screens from it.
#pragma once

#include <memory>
#include <string>

#include "platform/ui/ui_view.h"

enum UIInterfaceOrientationMask : uint32_t {
    UIInterfaceOrientationMaskLandscapeLeft = 16,
    UIInterfaceOrientationMaskAll = 30,
};

struct UIStoryboardSegue {
    std::string identifier;
};

class UIViewController : public UIResponder, public std::enable_shared_from_this<UIViewController> {
  public:
    ~UIViewController() override;

    /// The view, loaded (loadView, then viewDidLoad) at the first call.
    std::shared_ptr<UIView> view();
    bool isViewLoaded() const { return _loaded && _view != nullptr; }
    /// Takes the place of the present view where that one is shown.
    void setView(std::shared_ptr<UIView> view);
    std::shared_ptr<UIViewController> presentedViewController() const { return _presented; }
    /// Shows another screen over this one, faded in if animated. Nothing, with a log line, if this one is not
    /// on a window or presents already.
    void presentViewController(const std::shared_ptr<UIViewController>& controller, bool animated);
    /// Takes the presented screen, and what that presents in turn, away again. Nothing without one.
    void dismissViewController(bool animated);
    /// The view's superview.
    UIResponder* nextResponder() override;

    /// Makes a plain view unless a storyboard gave one.
    virtual void loadView();
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool /*animated*/) {}
    virtual void viewDidAppear(bool /*animated*/) {}
    virtual void viewWillDisappear(bool /*animated*/) {}
    virtual void viewDidDisappear(bool /*animated*/) {}
    /// The view's size changed; its subviews follow through autoresizing and layoutSubviews.
    virtual void viewDidLayoutSubviews() {}
    virtual void didReceiveMemoryWarning() {}
    virtual bool prefersStatusBarHidden() const { return false; }
    virtual uint32_t supportedInterfaceOrientations() const { return UIInterfaceOrientationMaskAll; }

    /// A key press that no view wanted. YES if it was used.
    virtual bool keyPressed(const HostKeyPress&) { return false; }
    /// An action by its name in the storyboard ("toggleFractal:"). NO for an unknown name.
    virtual bool performAction(const std::string& /*name*/,
                               const std::shared_ptr<KeyValueCoding>& /*sender*/) {
        return false;
    }

  private:
    std::shared_ptr<UIView> _view;
    bool _loaded = false;
    std::shared_ptr<UIViewController> _presented;
};
