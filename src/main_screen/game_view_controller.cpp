// Loading of the main screen and its life: settings, sampling bitmap, GL, first view.
// The order of viewDidLoad matters: each step uses what the ones before it made.
#include "main_screen/game_view_controller.h"

#include <algorithm>

#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_assert.h"
#include "platform/foundation/ns_notification_center.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/media/rp_screen_recorder.h"
#include "platform/ui/text_measure.h"
#include "platform/ui/ui_accessibility.h"

namespace {

/// The saved speed, which a wish for less motion leaves as it is.
int32_t cyclingAtStart() {
    if (UIAccessibilityIsReduceMotionEnabled()) return 0;
    return static_cast<int32_t>(NSUserDefaults::standardUserDefaults().integerForKey("fractalColorCycling"));
}

}  // namespace

void GameViewController::viewDidLoad() {
    GLKViewController::viewDidLoad();
    restoreSettings();
    removeRecordButtonIfUnavailable();
    _targets.clear();
    measureScreen();
    interfaceScale = 1.0F;
    texture_depth = 1;
    sourceBounds = topView;
    makeSamplingBitmap();
    textureImage = UIImage::imageWithCGImage(_textureImageRef);
    textureImageView = std::make_shared<UIImageView>(view()->frame());
    textureImageView->setAlpha(1.0);
    textureImageView->setImage(textureImage);
    setUpGL();
    resetScreen(this);
    copyStateToShader();
    observeTheSystem();
    measureMenuMargins();
    addShowButtons();
    menuAlpha = menuView ? static_cast<float>(menuView->alpha()) : 1.0F;
    attachGestures();
}

void GameViewController::viewWillAppear(bool animated) {
    GLKViewController::viewWillAppear(animated);
}

void GameViewController::viewDidAppear(bool animated) {
    GLKViewController::viewDidAppear(animated);
    showTutorialOnce();
    // Not from within: this screen may be just coming out from under another one.
    DispatchQueue::mainQueue().async([self = std::weak_ptr(sharedFromThis())] {
        if (const auto screen = self.lock(); screen && !screen->presentedViewController())
            screen->offerLeftRecording();
    });
}

void GameViewController::viewWillDisappear(bool animated) {
    GLKViewController::viewWillDisappear(animated);
}

void GameViewController::restoreSettings() {
    const NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    fractalColoring = static_cast<int32_t>(defaults.integerForKey("fractalColoring"));
    setFractalType(static_cast<int32_t>(defaults.integerForKey("fractalType")));
    fractalColorCycling = cyclingAtStart();
    setColorCyclingButtonTitleForCycling(fractalColorCycling);
}

void GameViewController::removeRecordButtonIfUnavailable() {
    if (RPScreenRecorder::sharedRecorder().isAvailable() || !menuView) return;
    UIToolbar::Items items = menuView->items();
    std::erase(items, toggleRecordButton);
    menuView->setItems(std::move(items));
}

void GameViewController::measureScreen() {
    const auto width = static_cast<float>(view()->frame().size.width);
    const auto height = static_cast<float>(view()->frame().size.height);
    texture_width = static_cast<int32_t>(std::max(width, height));
    texture_height = static_cast<int32_t>(std::min(width, height));
}

void GameViewController::makeSamplingBitmap() {
    const auto size = static_cast<std::size_t>(texture_width) * static_cast<std::size_t>(texture_height);
    _textureBuffer.reset(new uint8_t[size]);
    _textureProviderRef = CGDataProviderCreateWithData(_textureBuffer.get(), size);
    NSCAssert(texture_depth == 1, "GameViewController");
    _textureColorSpaceRef = CGColorSpace::deviceGray;
    _textureImageRef =
        CGImageCreate(texture_width, texture_height, 8, 8 * texture_depth, texture_width * texture_depth,
                      _textureColorSpaceRef, _textureProviderRef);
}

/// Where somebody turned cycling on in spite of it, that was saved and comes back.
void GameViewController::reduceMotionChanged() {
    fractalColorCycling = cyclingAtStart();
    setColorCyclingButtonTitleForCycling(fractalColorCycling);
    _shader->setFractalColorCycling(fractalColorCycling);
}

void GameViewController::observeTheSystem() {
    NSNotificationCenter& center = NSNotificationCenter::defaultCenter();
    center.addObserver(weak_from_this(), UIApplicationWillResignActiveNotification, nullptr,
                       [this](const NSNotification&) { willResignActive(); });
    center.addObserver(weak_from_this(), UIApplicationDidBecomeActiveNotification, nullptr,
                       [this](const NSNotification&) { didBecomeActive(); });
    center.addObserver(weak_from_this(), UIAccessibilityReduceMotionStatusDidChangeNotification, nullptr,
                       [this](const NSNotification&) { reduceMotionChanged(); });
    center.addObserver(weak_from_this(), UIContentSizeCategoryDidChangeNotification, nullptr,
                       [this](const NSNotification&) {
                           if (coachMarksView) coachMarksView->layOutCurrentMark();
                       });
}

void GameViewController::viewDidLayoutSubviews() {
    GLKViewController::viewDidLayoutSubviews();
    if (!_shader) return;
    placeMenu();
    const int32_t formerWidth = texture_width;
    const int32_t formerHeight = texture_height;
    measureScreen();
    if (texture_width != formerWidth || texture_height != formerHeight) refitToScreen();
    layOutTutorial();
}

void GameViewController::measureMenuMargins() {
    if (!menuView) return;
    const CGRect screen = view()->bounds();
    const CGRect menu = menuView->frame();
    _menuMargins = {0, CGRectGetMinX(menu), CGRectGetMaxY(screen) - CGRectGetMaxY(menu),
                    CGRectGetMaxX(screen) - CGRectGetMaxX(menu)};
}

/// Clear of what covers the screen's edges; margins and covers do not add up.
void GameViewController::placeMenu() {
    if (!menuView) return;
    const UIEdgeInsets covered = view()->safeAreaInsets();
    const CGSize screen = view()->bounds().size;
    const CGFloat left = std::max(_menuMargins.left, covered.left);
    const CGFloat right = screen.width - std::max(_menuMargins.right, covered.right);
    const CGFloat bottom = screen.height - std::max(_menuMargins.bottom, covered.bottom);
    const CGFloat height = menuView->frame().size.height;
    menuView->setFrame(CGRectMake(left, bottom - height, std::max(right - left, 0.0), height));
    if (_showButtons) _showButtons->setFrame(menuView->frame());
}

/// Flights and glides to views of the former shape end here.
void GameViewController::refitToScreen() {
    takeFromPilot();
    makeSamplingBitmap();
    textureImageView->setFrame(view()->frame());
    const CGRect before = _shader->fractalBounds();
    const CGFloat width =
        before.size.height * static_cast<double>(texture_width) / static_cast<double>(texture_height);
    _shader->setFractalBounds(
        CGRectMake(CGRectGetMidX(before) - 0.5 * width, before.origin.y, width, before.size.height));
}

KeyValueTable GameViewController::makeKeyValueTable() {
    const auto outlet = [](auto& field) {
        using Pointer = std::remove_reference_t<decltype(field)>;
        return KeyValueAccess<std::any>{
            [&field] { return std::any(field); },
            setterOf<Pointer>([&field](const Pointer& object) { field = object; })};
    };
    const auto view = [this] {
        return KeyValueAccess<std::any>{[this] { return std::any(std::shared_ptr<UIView>(menuView)); },
                                        setterOf<std::shared_ptr<UIView>>([this](const auto& object) {
                                            menuView = std::dynamic_pointer_cast<SwallowTouchesView>(object);
                                        })};
    };
    return {{"menuView", view()},
            {"xButton", outlet(xButton)},
            {"shareButton", outlet(shareButton)},
            {"fractalButton", outlet(fractalButton)},
            {"colorButton", outlet(colorButton)},
            {"colorCyclingButton", outlet(colorCyclingButton)},
            {"toggleRecordButton", outlet(toggleRecordButton)},
            {"infoButton", outlet(infoButton)}};
}
