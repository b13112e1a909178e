// The per-frame clock of a GL screen.
// Frames come from the application while the screen is shown; drawing comes from the compositor.
#include "platform/gl/glk_view_controller.h"

#include "platform/ui/ui_application.h"
#include "platform/ui/ui_screen.h"

GLKViewController::~GLKViewController() {
    stopFrames();
}

void GLKViewController::loadView() {
    setView(std::make_shared<GLKView>(UIScreen::mainScreen().bounds()));
}

std::shared_ptr<GLKView> GLKViewController::glkView() {
    return std::dynamic_pointer_cast<GLKView>(view());
}

void GLKViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    _covered = false;
    UIApplication* application = UIApplication::sharedApplication();
    if (!application || _frameToken != 0) return;
    _frameToken = application->addFrameCallback([this](double time) { step(time); });
}

void GLKViewController::viewDidDisappear(bool animated) {
    UIViewController::viewDidDisappear(animated);
    _covered = true;
    stopFrames();
}

void GLKViewController::stopFrames() {
    UIApplication* application = UIApplication::sharedApplication();
    if (application && _frameToken != 0) application->removeFrameCallback(_frameToken);
    _frameToken = 0;
}

void GLKViewController::step(double time) {
    if (_firstResume < 0) _firstResume = time;
    _timeSinceFirstResume = time - _firstResume;
    // What lies under another screen is seen, but rests.
    if (!presentedViewController()) update();
}
