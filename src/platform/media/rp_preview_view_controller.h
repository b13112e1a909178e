// The preview of a finished recording: plays it, trims it, and saves, shares or discards it.
// Where the host shows films itself, as a browser does, its own player takes this screen's place.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/host/screen_capture.h"
#include "platform/media/clip_timeline_view.h"
#include "platform/ui/ui_control.h"
#include "platform/ui/ui_view_controller.h"

class RPPreviewViewController;

class RPPreviewViewControllerDelegate {
  public:
    virtual ~RPPreviewViewControllerDelegate() = default;
    /// The user is done with it: it is to be dismissed.
    virtual void previewControllerDidFinish(RPPreviewViewController& preview) = 0;
};

class RPPreviewViewController : public UIViewController {
  public:
    explicit RPPreviewViewController(std::shared_ptr<CapturedClip> clip) : _clip(std::move(clip)) {}
    ~RPPreviewViewController() override;

    void setPreviewControllerDelegate(std::weak_ptr<RPPreviewViewControllerDelegate> delegate) {
        _delegate = std::move(delegate);
    }

    void loadView() override;
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    bool keyPressed(const HostKeyPress& press) override;

    bool isPlaying() const { return _playing; }
    const std::shared_ptr<ClipTimelineView>& timeline() const { return _timeline; }
    /// What the last button did, as the user reads it.
    const std::string& message() const { return _message->text(); }

  private:
    void addButton(const std::string& title, std::function<void()> action);
    void play(bool playing);
    void step(double time);
    void showPicture();
    void save();
    void share();
    void discard();
    void finish();
    void stopFrames();

    std::shared_ptr<CapturedClip> _clip;
    std::weak_ptr<RPPreviewViewControllerDelegate> _delegate;
    std::shared_ptr<UIImageView> _picture;
    CGImageRef _shown;
    std::shared_ptr<ClipTimelineView> _timeline;
    std::shared_ptr<UIButton> _playButton;
    std::shared_ptr<UILabel> _message;
    bool _playing = false;
    /// The part that lies where the user keeps films; nothing is lost when the clip goes.
    bool _saved = false;
    double _lastTime = -1;
    int _frameToken = 0;
};
