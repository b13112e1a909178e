// A screen that draws a frame at every display refresh: update() first, then its GLKView's drawing.
// Its clock starts with its first frame and stands still while the app is hidden.
#pragma once

#include <memory>

#include "platform/gl/glk_view.h"
#include "platform/ui/ui_view_controller.h"

class GLKViewController : public UIViewController, public GLKViewDelegate {
  public:
    ~GLKViewController() override;

    void loadView() override;
    void viewWillAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    /// The controller's own view as what it is; null if a storyboard gave another class.
    std::shared_ptr<GLKView> glkView();

    /// Called once per frame before drawing, unless another screen is presented over this one.
    virtual void update() {}
    /// Seconds of the app's clock since the controller first drew.
    double timeSinceFirstResume() const { return _timeSinceFirstResume; }
    /// YES while another screen covers this one wholly: nothing of it needs to be drawn.
    bool isCovered() const { return _covered; }
    /// One refresh at the app's time: update().
    void step(double time);
    /// The context and all GL objects died, and the view has forgotten them; the next frame needs new ones.
    virtual void contextLost() {}

  private:
    void stopFrames();

    /// 0 while no frames come.
    int _frameToken = 0;
    bool _covered = false;
    double _timeSinceFirstResume = 0;
    /// App time of the first frame, negative before it.
    double _firstResume = -1;
};
