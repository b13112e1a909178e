// A screen: the owner of a view tree, told when it loads, appears and goes.
// The app derives its screens from it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_view.h"

enum UIInterfaceOrientationMask : uint32_t {
    UIInterfaceOrientationMaskLandscapeLeft = 16,
    UIInterfaceOrientationMaskAll = 30,
};

/// How a presented screen lies over the one that presents it.
enum class UIModalPresentationStyle : int64_t {
    fullScreen = 0,      ///< covers it: that screen disappears
    pageSheet = 1,       ///< as a form sheet
    formSheet = 2,       ///< of its preferred size: at the lower edge on phones, else in the middle
    overFullScreen = 5,  ///< fills the screen, what lies below shines through
};

enum class UIModalTransitionStyle : int64_t { coverVertical = 0, crossDissolve = 2 };

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
    /// Of this screen or, if it is part of another one, of that.
    std::shared_ptr<UIViewController> presentingViewController() const;
    /// Makes a screen part of this one, which shows its view and tells it what happens.
    void addChildViewController(const std::shared_ptr<UIViewController>& child);
    void removeChildViewController(const std::shared_ptr<UIViewController>& child);
    std::shared_ptr<UIViewController> parentViewController() const { return _parent.lock(); }
    const std::vector<std::shared_ptr<UIViewController>>& childViewControllers() const { return _children; }
    UIModalPresentationStyle modalPresentationStyle() const { return _presentationStyle; }
    void setModalPresentationStyle(UIModalPresentationStyle style) { _presentationStyle = style; }
    UIModalTransitionStyle modalTransitionStyle() const { return _transitionStyle; }
    void setModalTransitionStyle(UIModalTransitionStyle style) { _transitionStyle = style; }
    /// YES: neither the escape key nor a tap beside the sheet takes this screen away.
    bool isModalInPresentation() const { return _modalInPresentation; }
    void setModalInPresentation(bool modal) { _modalInPresentation = modal; }
    /// Points; what a sheet or a popover takes at most. Zero for as much as there is.
    CGSize preferredContentSize() const { return _preferredContentSize; }
    /// Where it is shown it follows.
    void setPreferredContentSize(CGSize size);
    /// Shows another screen over this one, as its styles say; fingers that lie on the screen are cancelled,
    /// and touches, keys and screen readers reach the other alone. completion: once it has appeared. Nothing,
    /// with a log line, if this one is not on a window or presents already, or the other is presented.
    void presentViewController(const std::shared_ptr<UIViewController>& controller, bool animated,
                               std::function<void()> completion = {});
    /// Takes the presented screen, and what that presents in turn, away again; without one, this screen from
    /// the one that presents it. Nothing without either. completion: once it has gone.
    void dismissViewControllerAnimated(bool animated, std::function<void()> completion = {});
    /// Asked before it is presented: YES if the system shows it in its own way, and nothing is presented;
    /// presentView then shows the view after all.
    virtual bool presentsItself(const std::function<void()>& /*presentView*/) { return false; }
    /// Where the style puts the view on a screen of these bounds, of which the safe part is not covered by
    /// notches and bars. A sheet at the lower edge reaches under the bar there.
    CGRect presentedFrame(CGRect screen, CGRect safe) const;
    const std::string& title() const { return _title; }
    /// What bars call the screen.
    void setTitle(std::string title) { _title = std::move(title); }
    using Sender = std::shared_ptr<KeyValueCoding>;
    using Segue = std::function<void(UIViewController& source, const Sender& sender)>;
    /// A way from this screen to another one; a storyboard lays them.
    void setSegue(const std::string& identifier, Segue segue) { _segues[identifier] = std::move(segue); }
    /// Goes that way; nothing, with a log line, if there is none.
    void performSegueWithIdentifier(const std::string& identifier, const Sender& sender);
    /// Back to the nearest screen below that has the action: whatever lies over that one is dismissed, then
    /// the action runs. Nothing, with a log line, if none has it.
    void unwind(const std::string& action, const UIStoryboardSegue& segue);
    /// Whether this screen has the action by which others return to it.
    virtual bool canPerformUnwindAction(const std::string& /*name*/) const { return false; }
    virtual void performUnwindAction(const std::string& /*name*/, const UIStoryboardSegue& /*segue*/) {}
    /// How many times the user can go back from here before the screen below shows.
    virtual std::size_t stepsBack() const;
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

    /// A key press that no view wanted. YES if it was used. Escape and a device's way back take a presented
    /// screen away.
    virtual bool keyPressed(const HostKeyPress& press);
    /// A key press that the screens presented over this one have no use for. NO: it ends here.
    virtual bool keyPressedAbove(const HostKeyPress& /*press*/) { return false; }
    /// An action by its name in the storyboard ("toggleFractal:"). NO for an unknown name.
    virtual bool performAction(const std::string& /*name*/,
                               const std::shared_ptr<KeyValueCoding>& /*sender*/) {
        return false;
    }

  private:
    /// Whether the screen below is gone while this one is there.
    bool covers() const { return _presentationStyle == UIModalPresentationStyle::fullScreen; }
    void appear(bool animated, std::function<void()> appeared);
    void disappear(bool animated, std::function<void()> gone);
    CGRect frameBelowScreen() const;

    std::shared_ptr<UIView> _view;
    bool _loaded = false;
    std::shared_ptr<UIViewController> _presented;
    std::weak_ptr<UIViewController> _presenting;
    std::weak_ptr<UIViewController> _parent;
    std::vector<std::shared_ptr<UIViewController>> _children;
    /// Between this screen, while it is presented, and the one below.
    std::shared_ptr<UIView> _backdrop;
    UIModalPresentationStyle _presentationStyle = UIModalPresentationStyle::fullScreen;
    UIModalTransitionStyle _transitionStyle = UIModalTransitionStyle::coverVertical;
    bool _modalInPresentation = false;
    CGSize _preferredContentSize;
    std::string _title;
    std::map<std::string, Segue> _segues;
};
