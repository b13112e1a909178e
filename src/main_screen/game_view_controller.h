// The main screen: the fractal over the whole screen with a toolbar laid over it.
// One class, a file for each concern: loading, view state, drawing, menu, targets, pilot, touch, recording,
// tour.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "coach_marks/mp_coach_marks.h"
#include "main_screen/developer_overlay_view.h"
#include "main_screen/fractal_bounds.h"
#include "main_screen/key_help_view.h"
#include "main_screen/show_buttons_view.h"
#include "main_screen/target_search.h"
#include "platform/gl/drawable_scale.h"
#include "platform/gl/glk_view_controller.h"
#include "platform/graphics/cg_bitmap_context.h"
#include "platform/media/rp_screen_recorder.h"
#include "platform/ui/ui_control.h"
#include "platform/ui/ui_magnification_gesture_recognizer.h"
#include "platform/ui/ui_pan_gesture_recognizer.h"
#include "platform/ui/ui_pinch_gesture_recognizer.h"
#include "platform/ui/ui_toolbar.h"
#include "render/rwt_base_shader.h"
#include "screens/swallow_touches_view.h"
#include "tween/gs_tween.h"

class UIActivityViewController;

class GameViewController : public GLKViewController,
                           public RPScreenRecorderDelegate,
                           public RPPreviewViewControllerDelegate {
  public:
    /// Who asks for an action: a bar button item, the controller itself, the application delegate; null for a
    /// key.
    using Sender = const KeyValueCoding*;

    GameViewController() = default;
    ~GameViewController() override;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidLayoutSubviews() override;
    uint32_t supportedInterfaceOrientations() const override {
        return UIInterfaceOrientationMaskLandscapeLeft;
    }
    bool prefersStatusBarHidden() const override { return true; }
    bool keyPressed(const HostKeyPress& press) override;
    bool keyPressedAbove(const HostKeyPress& press) override;
    bool performAction(const std::string& name, const std::shared_ptr<KeyValueCoding>& sender) override;

    // View state
    int32_t fractalType() const { return _fractalType; }
    /// Kept, shown and saved.
    void setFractalType(int32_t fractalType);
    CGRect rectifiedBoundsFor(CGRect r) const;
    /// Kept, shown and saved.
    void setFractalColoring(int32_t palette);
    /// Jumps to the top view, or to the last link's rectangle if the application delegate asks.
    void resetScreen(Sender sender);
    /// Shows the rectangle between (x1, y1) and (x2, y2) in palette `color`. NO, and nothing changes, unless
    /// both sides are above 0 and below 10. The type is not touched, whatever fracType says.
    bool jumpTox1(float x1, float y1, float x2, float y2, int32_t fracType, int32_t color);
    /// The link that shows a rectangle: "http://host/type/x1/y1/x2/y2".
    std::string coordinatesForDeeplink(CGRect r) const;
    void loadURL(const std::string& url);
    void toggleFractal(Sender sender);
    void toggleColoring(Sender sender);
    void toggleColorCycling(Sender sender);
    /// Takes the title from the field fractalColorCycling, whatever the argument.
    void setColorCyclingButtonTitleForCycling(int32_t cycling);
    /// Settings back to those of a fresh install, tour counted as seen, and on to snapshot mode until the app
    /// ends.
    void resetCrap();

    // Drawing
    void setUpGL();
    void glkViewDrawInRect(GLKView& view, CGRect rect) override;
    /// The fractal alone at the drawable's pixel size, one point a pixel, with pictureTexts().
    UIImageRef renderedImage();
    /// What names the view on screen in picture files of it: link, type, bounds and palette.
    PictureTexts pictureTexts() const;
    std::optional<NSData> imageAsJPEG(const UIImageRef& image) const;
    std::optional<NSData> imageAsPNG(const UIImageRef& image) const;
    void tearDownGL();
    void didReceiveMemoryWarning() override;
    void contextLost() override;
    const std::shared_ptr<EAGLContext>& context() const { return _context; }
    const std::shared_ptr<RWTBaseShader>& shader() const { return _shader; }

    // Pilot
    /// Why a flight goes home: nothing busy on the screen, or no candidate at a good distance (at the limit
    /// of the GPU's precision: always).
    enum class Bounce { none, noTargets, noGoodTargets };
    /// A flight that sets out from one rectangle to another.
    struct Flight {
        FractalBounds from;
        FractalBounds to;
        Bounce bounce = Bounce::none;
    };
    /// While the menu is hidden and no flight is under way: looks at the frame, chooses, sets out.
    void update() override;
    /// Flies to a rectangle in five seconds, in the place of whatever moves the view now.
    void tweenTo(FractalBounds destination);
    /// Whether the sampled frame is busy around a pixel.
    bool isInterestingX(int32_t x, int32_t y) const;
    /// Adds at most one target from the sampled frame; where the GPU's precision ends, the top view is left
    /// alone.
    void addNewTarget();
    /// Called with each flight that the pilot chooses. For the command line and developers.
    void setFlightObserver(std::function<void(const Flight&)> observer) {
        _flightObserver = std::move(observer);
    }

    // Touch
    void pan(UIPanGestureRecognizer& recognizer);
    /// Both sides become 2 - scale times as long: a step of 2 or more turns the view inside out.
    void pinch(UIPinchGestureRecognizer& recognizer);
    /// Wheel and trackpad: what lies under the pointer stays there.
    void magnify(UIMagnificationGestureRecognizer& recognizer);
    void moveLeft(Sender sender);
    void moveRight(Sender sender);
    void moveUp(Sender sender);
    void moveDown(Sender sender);
    void zoomIn(Sender sender);
    void zoomOut(Sender sender);
    /// Kept for who asks: no gesture heeds it.
    bool ignoreTouches() const { return _ignoreTouches; }
    void setIgnoreTouches(bool ignoreTouches) { _ignoreTouches = ignoreTouches; }

    // Recording
    void toggleRecording(Sender sender);
    void screenRecorderDidStopRecordingWithError(
        RPScreenRecorder& recorder, const NSErrorRef& error,
        const std::shared_ptr<RPPreviewViewController>& previewViewController) override;
    void previewControllerDidFinish(RPPreviewViewController& preview) override;
    /// Shows the preview of a film of an earlier run that was neither saved nor discarded, if there is one.
    void offerLeftRecording();
    /// Of the last recording; kept until the next one takes its place.
    std::shared_ptr<RPPreviewViewController> previewViewController;

    // Tour
    /// Explains the toolbar's buttons, which show by then. Once more from the beginning if it runs already.
    void showTutorial(Sender sender);
    /// Made by the first tour and used again by each.
    std::shared_ptr<MPCoachMarks> coachMarksView;

    // Menu
    void showMenu(bool animated);
    void hideMenu(bool animated);
    void togglePilot(Sender sender);
    /// Opens the share sheet: a popover at the share button, on phones from below.
    void shareScreen(Sender sender);
    void showAbout(Sender sender);
    void copyLink(Sender sender);
    void pasteLink(Sender sender);
    void toggleFullscreen(Sender sender);
    void toggleKeyHelp(Sender sender);
    void toggleDeveloperOverlay(Sender sender);
    /// Closes the list of keys, else leaves full screen, else quits.
    void leave(Sender sender);
    bool canPerformUnwindAction(const std::string& name) const override;
    void performUnwindAction(const std::string& name, const UIStoryboardSegue& segue) override;
    /// Other screens come back here.
    void done(const UIStoryboardSegue& segue);
    void didBecomeActive() {}
    void willResignActive() {}
    /// Debugging aid: shows the sampling bitmap as it is now in textureImageView.
    void updatetextureImage();

    std::shared_ptr<SwallowTouchesView> menuView;
    std::shared_ptr<UIBarButtonItem> xButton;
    std::shared_ptr<UIBarButtonItem> shareButton;
    std::shared_ptr<UIBarButtonItem> fractalButton;
    std::shared_ptr<UIBarButtonItem> colorButton;
    std::shared_ptr<UIBarButtonItem> colorCyclingButton;
    std::shared_ptr<UIBarButtonItem> toggleRecordButton;
    std::shared_ptr<UIBarButtonItem> infoButton;

    /// The flight under way or paused, and the glide after a gesture; empty for none.
    std::shared_ptr<GSTween> tween;
    std::shared_ptr<GSTween> animtween;

    /// The picture of the last share.
    UIImageRef imageForSharing;
    /// Nothing sets it: every share has a new sheet.
    std::shared_ptr<UIActivityViewController> shareSheet;

    bool isMenuHiding() const { return menuHiding; }
    std::vector<FractalBounds>& targets() { return _targets; }

  protected:
    KeyValueTable makeKeyValueTable() override;

  private:
    std::shared_ptr<GameViewController> sharedFromThis();
    void presentPreview(const std::shared_ptr<RPPreviewViewController>& preview);
    /// What the places of the tour's marks follow from.
    struct TutorialLayout {
        CGSize screen;
        UIEdgeInsets insets;
        CGRect menu;
        friend bool operator==(const TutorialLayout&, const TutorialLayout&) = default;
    };
    void showTutorialOnce();
    void makeTutorial();
    std::vector<MPCoachMark> tutorialMarks();
    TutorialLayout tutorialLayout();
    void layOutTutorial();
    bool isTutorialRunning() const;
    bool guideByKey(const HostKeyPress& press);
    void restoreSettings();
    void removeRecordButtonIfUnavailable();
    void measureScreen();
    void makeSamplingBitmap();
    void observeTheSystem();
    void reduceMotionChanged();
    void measureMenuMargins();
    void placeMenu();
    void addShowButtons();
    void tellStateOfFlight();
    void copyStateToShader();
    void refitToScreen();
    void makeContext();
    void adaptDrawableScale(GLKView& view);
    void save(const std::string& key, int32_t value);
    void sampleFrame();
    void drawFrameIntoSamplingBitmap();
    SamplingBitmap samplingBitmap() const { return {_textureBuffer.get(), texture_width, texture_height}; }
    int32_t shaderPrecisionBits();
    Flight chooseFlight();
    Flight flightHome(Bounce why) const;
    void jumpToNextSnapshotSpot();
    /// Ends flight and glide where they are.
    void stopTweens();
    void attachGestures();
    /// Ends flight and glide for good: the pilot starts afresh from wherever the view is then.
    void takeFromPilot();
    void startGlide(CGRect goal, double seconds);
    void glideBy(CGFloat dx, CGFloat dy);
    void glideZoom(CGFloat factor);

    std::shared_ptr<EAGLContext> _context;
    std::shared_ptr<RWTBaseShader> _shader;
    DrawableScale _drawableScale;
    int32_t _fractalType = 0;
    int32_t fractalColoring = 0;
    int32_t fractalColorCycling = 0;
    FractalBounds sourceBounds;
    /// Snapshot mode: one frame in 61 is drawn. Only resetCrap turns it on.
    bool snapshots = false;
    bool menuHiding = false;
    float menuAlpha = 0;
    /// The toolbar's distances from the screen's edges where nothing covers those.
    UIEdgeInsets _menuMargins;
    float interfaceScale = 0;
    std::vector<FractalBounds> _targets;
    /// Where animtween ends.
    CGRect _glideGoal;
    bool _ignoreTouches = false;
    /// Held by the pilot's step; the shader's own lock guards jumps.
    std::recursive_mutex _lock;
    std::function<void(const Flight&)> _flightObserver;
    /// As the driver of the present context says; it is asked once.
    std::optional<int32_t> _shaderPrecisionBits;

    int32_t texture_width = 0;   ///< the longer side of the view in points
    int32_t texture_height = 0;  ///< the shorter side
    int32_t texture_depth = 0;   ///< bytes a pixel
    /// Grey picture of the screen, texture_width * texture_height bytes.
    std::unique_ptr<uint8_t[]> _textureBuffer;
    CGDataProviderRef _textureProviderRef;
    CGColorSpace _textureColorSpaceRef = CGColorSpace::deviceGray;
    CGImageRef _textureImageRef;
    UIImageRef textureImage;
    std::shared_ptr<UIImageView> textureImageView;
    std::shared_ptr<ShowButtonsView> _showButtons;
    std::shared_ptr<KeyHelpView> _keyHelp;
    TutorialLayout _tutorialLayout;
    std::shared_ptr<DeveloperOverlayView> _developerOverlay;
};
