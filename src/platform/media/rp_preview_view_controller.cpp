// The film in the middle, what can be done with it above, its strip below.
// A preview that is closed keeps its clip for the next start, unless that was saved or discarded.
#include "platform/media/rp_preview_view_controller.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/file_url.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_screen.h"

namespace {

constexpr CGFloat barHeight = 48;
constexpr CGFloat margin = 12;
constexpr CGFloat gap = 8;
constexpr CGFloat playWidth = 76;
constexpr CGFloat buttonFont = 18;
constexpr double keyStep = 1.0 / 30;
constexpr UIColor barColor{0.1, 0.11, 0.14, 1};

/// Lays its parts out: above the buttons from the right and the message, below play and strip.
class PreviewView : public UIView {
  public:
    using UIView::UIView;
    void layoutSubviews() override {
        const CGRect safe = safeBounds();
        CGFloat right = CGRectGetMaxX(safe) - margin;
        for (auto button = buttons.rbegin(); button != buttons.rend(); ++button) {
            const CGFloat width = (*button)->contentSize().width + 2 * margin;
            right -= width;
            (*button)->setFrame(CGRectMake(right, CGRectGetMinY(safe), width, barHeight));
            right -= gap;
        }
        CGFloat left = CGRectGetMinX(safe) + margin;
        message->setFrame(CGRectMake(left, CGRectGetMinY(safe), std::max(right - left, 0.0), barHeight));
        picture->setFrame(place());
        const CGFloat lower = CGRectGetMaxY(safe) - barHeight;
        play->setFrame(CGRectMake(left, lower, playWidth, barHeight));
        left += playWidth + gap;
        timeline->setFrame(
            CGRectMake(left, lower, std::max(CGRectGetMaxX(safe) - left - margin, 1.0), barHeight));
    }
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}

    /// The room for the film.
    CGRect room() {
        const CGRect safe = safeBounds();
        return CGRectMake(safe.origin.x, safe.origin.y + barHeight, safe.size.width,
                          std::max(safe.size.height - 2 * barHeight, 1.0));
    }

    std::vector<std::shared_ptr<UIButton>> buttons;
    std::shared_ptr<UILabel> message;
    std::shared_ptr<UIImageView> picture;
    std::shared_ptr<UIButton> play;
    std::shared_ptr<UIView> timeline;

  private:
    CGRect safeBounds() { return UIEdgeInsetsInsetRect(bounds(), safeAreaInsets()); }

    CGRect place() {
        const CGRect free = room();
        const auto* shown = picture->image() ? picture->image()->image().get() : nullptr;
        if (!shown) return free;
        const double scale = std::min(free.size.width / shown->width(), free.size.height / shown->height());
        const CGSize size{shown->width() * scale, shown->height() * scale};
        return CGRectMake(CGRectGetMidX(free) - size.width / 2, CGRectGetMidY(free) - size.height / 2,
                          size.width, size.height);
    }
};

class FilmItem : public UIActivityItemProvider {
  public:
    explicit FilmItem(NSURL url) : UIActivityItemProvider(std::move(url)) {}
    std::string activityViewControllerSubjectForActivityType(UIActivityViewController&,
                                                             const UIActivityType&) override {
        return "Recorded in Zentaro";
    }
};

std::shared_ptr<UIButton> makeButton(const std::string& title, std::function<void()> action) {
    auto button = std::make_shared<UIButton>();
    button->setTitle(title);
    button->setFont(UIFont::systemFontOfSize(buttonFont));
    button->setAction(std::move(action));
    return button;
}

}  // namespace

RPPreviewViewController::~RPPreviewViewController() {
    stopFrames();
    if (_saved) _clip->discard();
}

void RPPreviewViewController::loadView() {
    setView(std::make_shared<PreviewView>(UIScreen::mainScreen().bounds()));
}

void RPPreviewViewController::addButton(const std::string& title, std::function<void()> action) {
    auto& all = static_cast<PreviewView&>(*view()).buttons;
    all.push_back(makeButton(title, std::move(action)));
    view()->addSubview(all.back());
}

void RPPreviewViewController::viewDidLoad() {
    auto& screen = static_cast<PreviewView&>(*view());
    screen.setBackgroundColor(barColor);
    _picture = screen.picture = std::make_shared<UIImageView>();
    _message = screen.message = std::make_shared<UILabel>();
    _message->setFont(UIFont::systemFontOfSize(buttonFont - 3));
    _timeline = std::make_shared<ClipTimelineView>(_clip->duration());
    screen.timeline = _timeline;
    _playButton = screen.play = makeButton("Play", [this] { play(!_playing); });
    screen.addSubview(_picture);
    screen.addSubview(_message);
    screen.addSubview(_timeline);
    screen.addSubview(_playButton);
    addButton("Discard", [this] { discard(); });
    if (_clip->canShare()) addButton("Share", [this] { share(); });
    addButton("Save", [this] { save(); });
    addButton("Done", [this] { finish(); });
    _timeline->setOnScrub([this] {
        play(false);
        showPicture();
    });
    _message->setText("Your recording");
}

void RPPreviewViewController::viewDidAppear(bool animated) {
    UIViewController::viewDidAppear(animated);
    UIApplication* application = UIApplication::sharedApplication();
    const auto finished = [self = weak_from_this()] {
        if (const auto preview = self.lock()) static_cast<RPPreviewViewController&>(*preview).finish();
    };
    if (_clip->showPreview(finished) || !application || _frameToken != 0) return;
    _frameToken = application->addFrameCallback([this](double time) { step(time); });
    play(true);
}

void RPPreviewViewController::viewWillDisappear(bool animated) {
    UIViewController::viewWillDisappear(animated);
    play(false);
    stopFrames();
    if (std::exchange(_saved, false)) _clip->discard();
    _clip->hidePreview();
}

void RPPreviewViewController::stopFrames() {
    UIApplication* application = UIApplication::sharedApplication();
    if (application && _frameToken != 0) application->removeFrameCallback(_frameToken);
    _frameToken = 0;
}

void RPPreviewViewController::play(bool playing) {
    if (playing && _timeline->position() >= _timeline->trimEnd())
        _timeline->setPosition(_timeline->trimStart());
    _playing = playing;
    _lastTime = -1;
    _playButton->setTitle(playing ? "Pause" : "Play");
    view()->setNeedsLayout();
}

void RPPreviewViewController::step(double time) {
    if (_playing) {
        if (_lastTime >= 0) _timeline->setPosition(_timeline->position() + time - _lastTime);
        _lastTime = time;
        if (_timeline->position() >= _timeline->trimEnd()) play(false);
    }
    if (_playing || !_shown) showPicture();
}

void RPPreviewViewController::showPicture() {
    const double scale = UIScreen::mainScreen().scale();
    const CGSize room = static_cast<PreviewView&>(*view()).room().size;
    CGImageRef picture = _clip->pictureAt(_timeline->position(), {room.width * scale, room.height * scale});
    if (!picture || picture == _shown) return;
    _shown = std::move(picture);
    _picture->setImage(UIImage::imageWithCGImage(_shown));
    view()->setNeedsLayout();
}

void RPPreviewViewController::save() {
    const auto [succeeded, line] = _clip->save(_timeline->trimStart(), _timeline->trimEnd());
    _saved = _saved || succeeded;
    _message->setText(line);
}

void RPPreviewViewController::share() {
    play(false);
    const auto [succeeded, line] = _clip->fileToShare(_timeline->trimStart(), _timeline->trimEnd());
    const auto url = succeeded ? NSURL::URLWithString(fileURLOfPath(line)) : std::nullopt;
    if (!url) return _message->setText("Not shared: " + line);
    presentViewController(UIActivityViewController::initWithActivityItems({std::make_shared<FilmItem>(*url)}),
                          true);
}

void RPPreviewViewController::discard() {
    _saved = true;
    finish();
}

void RPPreviewViewController::finish() {
    if (const auto delegate = _delegate.lock()) delegate->previewControllerDidFinish(*this);
}

bool RPPreviewViewController::keyPressed(const HostKeyPress& press) {
    const auto scrubBy = [this](double seconds) {
        play(false);
        _timeline->setPosition(_timeline->position() + seconds);
        showPicture();
    };
    switch (press.key) {
        case HostKey::space:
            if (!press.repeated) play(!_playing);
            return true;
        case HostKey::left:
            scrubBy(-keyStep);
            return true;
        case HostKey::right:
            scrubBy(keyStep);
            return true;
        case HostKey::escape:
        case HostKey::back:
            finish();
            return true;
        default:
            return UIViewController::keyPressed(press);
    }
}
