// Tour: the toolbar's buttons one after the other, on the first appearance of the screen and whenever it is
// asked for. Where the buttons are is looked up when the tour is made, and again only if the screen's layout
// changed since.
#include <any>
#include <utility>

#include "main_screen/commands.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_user_defaults.h"
#include "platform/media/rp_screen_recorder.h"

namespace {

constexpr const char* shownKey = "MPCoachMarksShown";
constexpr UIColor tourMask{0.6, 0.3, 1.0, 0.8};
constexpr double tourFade = 0.1;
constexpr CGFloat tourSpacing = 2;

/// Where a button is on the screen, and in its bar.
struct Target {
    CGRect onScreen;
    CGFloat x = 0;
};

Target targetOf(const std::shared_ptr<UIBarButtonItem>& item, const UIView& screen) {
    const std::any value = item ? item->valueForKey("view") : std::any();
    const auto* const found = std::any_cast<std::shared_ptr<UIView>>(&value);
    if (!found || !*found) return {};
    const UIView& button = **found;
    const CGRect inWindow = button.convertRectToWindow(button.bounds());
    return {{screen.convertPointFromWindow(inWindow.origin), inWindow.size}, button.frame().origin.x};
}

/// The buttons stand to one another as in their bar, whatever moves the bar just now.
CGRect alignedTo(const Target& first, const Target& target) {
    const CGFloat dx = (target.x - first.x) - (target.onScreen.origin.x - first.onScreen.origin.x);
    return CGRectOffset(target.onScreen, dx, 0);
}

MPCoachMark markAbove(CGRect rect, const char* caption) {
    return {{"rect", rect},
            {"caption", std::string(caption)},
            {"position", static_cast<int32_t>(MPCoachMarkPosition::top)}};
}

}  // namespace

void GameViewController::showTutorialOnce() {
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    if (defaults.boolForKey(shownKey)) return;
    // Before it runs: a tour that is broken off does not come again.
    defaults.setBool(true, shownKey);
    defaults.synchronize();
    showTutorial(this);
}

/// Buttons that are explained must be there; what flies meanwhile waits.
void GameViewController::showTutorial(Sender) {
    if (menuHiding && !snapshots) togglePilot(nullptr);
    if (!coachMarksView) makeTutorial();
    view()->addSubview(coachMarksView);
    coachMarksView->start();
}

void GameViewController::makeTutorial() {
    coachMarksView = MPCoachMarks::initWithFrame(view()->bounds(), tutorialMarks());
    coachMarksView->continueLocation = MPCoachMarksContinueLocation::top;
    coachMarksView->setMaskColor(tourMask);
    coachMarksView->maxLblWidth = view()->bounds().size.width / 2;
    coachMarksView->animationDuration = tourFade;
    coachMarksView->lblSpacing = tourSpacing;
    coachMarksView->enableContinueLabel = false;
    coachMarksView->lblCaption->setFont(
        UIFont::fontWithName("AmericanTypewriter-Bold", UIFont::preferredFontForTextStyleBody().pointSize));
    // Before the first frame the toolbar waits for its layout, which loads fonts: the marks follow it then.
    const bool isLaidOut = xButton && xButton->view() && !CGRectIsEmpty(xButton->view()->frame());
    _tutorialLayout = isLaidOut ? tutorialLayout() : TutorialLayout{};
}

std::vector<MPCoachMark> GameViewController::tutorialMarks() {
    const UIView& screen = *view();
    const Target first = targetOf(xButton, screen);
    const auto rectOf = [&](const auto& item) { return alignedTo(first, targetOf(item, screen)); };
    std::vector<MPCoachMark> marks = {
        markAbove(first.onScreen, "This will bring you back to the top of the fractal."),
        markAbove(rectOf(shareButton),
                  "Open a share sheet with a snapshot of the fractal and its coordinates!"),
        markAbove(rectOf(fractalButton), "Toggle between Mandelbrot and Julia sets."),
        markAbove(rectOf(colorButton), "Pick through a few predefined color palettes."),
        markAbove(rectOf(colorCyclingButton), "Animate the color palettes!"),
    };
    if (RPScreenRecorder::sharedRecorder().isAvailable())
        marks.push_back(markAbove(rectOf(toggleRecordButton), "Toggle ReplayKit recording."));
    marks.push_back(markAbove(rectOf(infoButton), "And finally, more\nabout this app."));
    return marks;
}

GameViewController::TutorialLayout GameViewController::tutorialLayout() {
    return {view()->bounds().size, view()->safeAreaInsets(), menuView ? menuView->frame() : CGRectZero};
}

void GameViewController::layOutTutorial() {
    if (!coachMarksView) return;
    const TutorialLayout now = tutorialLayout();
    if (std::exchange(_tutorialLayout, now) == now) return;
    if (menuView) menuView->layoutIfNeeded();
    coachMarksView->coachMarks = tutorialMarks();
    coachMarksView->maxLblWidth = now.screen.width / 2;
    coachMarksView->setFrame(view()->bounds());
    coachMarksView->layOutCurrentMark();
}

bool GameViewController::isTutorialRunning() const {
    return coachMarksView && coachMarksView->isRunning();
}

/// What the tour has no use for does nothing under it, as taps do.
bool GameViewController::guideByKey(const HostKeyPress& press) {
    switch (press.key) {
        case HostKey::escape:
            coachMarksView->skipCoach();
            return true;
        case HostKey::space:
        case HostKey::right:
        case HostKey::down:
            if (!press.repeated) coachMarksView->userDidTap();
            return true;
        case HostKey::left:
        case HostKey::up:
            if (!press.repeated && coachMarksView->markIndex() > 0)
                coachMarksView->goToCoachMarkIndexed(coachMarksView->markIndex() - 1);
            return true;
        default:
            return commandForKey(press) != nullptr;
    }
}
