// The tour's life: from mark to mark, and out. What the marks look like is in mp_coach_marks_layout.cpp.
// A tour that is started anew while it fades out goes on living: only an unbroken fade takes it away.
#include "coach_marks/mp_coach_marks.h"

#include <utility>

#include "platform/ui/ui_gesture_recognizer.h"

namespace {

constexpr CGFloat captionFontSize = 20;
constexpr UIColor defaultMask = UIColor::black().withAlpha(0.75);

}  // namespace

std::shared_ptr<MPCoachMarks> MPCoachMarks::initWithFrame(CGRect frame) {
    return initWithFrame(frame, {});
}

std::shared_ptr<MPCoachMarks> MPCoachMarks::initWithFrame(CGRect frame, std::vector<MPCoachMark> coachMarks) {
    struct Made : MPCoachMarks {
        explicit Made(CGRect place) : MPCoachMarks(place) {}
    };
    std::shared_ptr<MPCoachMarks> made = std::make_shared<Made>(frame);
    made->coachMarks = std::move(coachMarks);
    made->setup();
    return made;
}

void MPCoachMarks::setup() {
    animationDuration = 0.3;
    cutoutRadius = 5.0;
    maxLblWidth = 230.0;
    lblSpacing = 35.0;
    enableContinueLabel = true;
    enableSkipButton = true;
    continueLabelText = "Tap to continue";
    skipButtonText = "Skip";

    _mask = std::make_shared<CAShapeLayer>(bounds());
    _mask->setFillRule(FillRule::evenOdd);
    _mask->setFillColor(defaultMask);
    addSubview(_mask);

    addGestureRecognizer(
        std::make_shared<UITapGestureRecognizer>([this](UIGestureRecognizer&) { userDidTap(); }));

    lblCaption = std::make_shared<UILabel>(CGRectMake(0, 0, maxLblWidth, 0));
    lblCaption->setTextColor(UIColor::white());
    lblCaption->setFont(UIFont::systemFontOfSize(captionFontSize));
    lblCaption->setNumberOfLines(0);
    lblCaption->setTextAlignment(NSTextAlignment::center);
    lblCaption->setAlpha(0);
    addSubview(lblCaption);

    continueLocation = MPCoachMarksContinueLocation::bottom;
    setHidden(true);
}

void MPCoachMarks::setMaskColor(UIColor color) {
    _maskColor = color;
    _mask->setFillColor(color);
}

bool MPCoachMarks::isRunning() const {
    return superview() && !isHidden() && alpha() > 0;
}

/// Nothing of an earlier tour is left to see meanwhile.
void MPCoachMarks::start() {
    _showsMark = false;
    _markIndex = 0;
    _mask->removeAllAnimations();
    _mask->setPath({});
    lblCaption->setAlpha(0);
    for (const std::shared_ptr<UIView>& former :
         {std::shared_ptr<UIView>(_arrowImage), _currentView, std::shared_ptr<UIView>(_lblContinue),
          std::shared_ptr<UIView>(_btnSkipCoach)}) {
        if (former) former->removeFromSuperview();
    }
    _isFadingIn = true;
    setAlpha(0);
    setHidden(false);
    UIView::animateWithDuration(
        animationDuration, 0, UIViewAnimationOptionNone, [this] { setAlpha(1); },
        [life = weak_from_this(), this](bool finished) {
            if (life.expired() || !finished) return;
            _isFadingIn = false;
            goToCoachMarkIndexed(0);
        });
}

/// Views that fade in answer no touches yet.
void MPCoachMarks::userDidTap() {
    if (!_isFadingIn) goToCoachMarkIndexed(_markIndex + 1);
}

bool MPCoachMarks::accessibilityActivate() {
    userDidTap();
    return true;
}

void MPCoachMarks::skipCoach() {
    if (const auto told = delegate.lock(); told && told->coachMarksViewSkipButtonClicked)
        told->coachMarksViewSkipButtonClicked(*this);
    goToCoachMarkIndexed(static_cast<uint32_t>(coachMarks.size()));
}

void MPCoachMarks::handleSingleTap() {
    if (const auto told = delegate.lock(); told && told->coachMarksViewDidClickedAtIndex)
        told->coachMarksViewDidClickedAtIndex(*this, _markIndex);
    cleanup(true);
}

void MPCoachMarks::end() {
    cleanup(false);
}

void MPCoachMarks::cleanup(bool animated) {
    _isFadingIn = false;
    if (const auto told = delegate.lock(); told && told->coachMarksViewWillCleanup)
        told->coachMarksViewWillCleanup(*this);
    UIView::animateWithDuration(
        animated ? animationDuration : 0, 0, UIViewAnimationOptionNone, [this] { setAlpha(0); },
        [life = weak_from_this(), this](bool finished) {
            const auto self = life.lock();
            if (!self || !finished) return;
            _showsMark = false;
            removeFromSuperview();
            if (const auto told = delegate.lock(); told && told->coachMarksViewDidCleanup)
                told->coachMarksViewDidCleanup(*this);
        });
}

void MPCoachMarks::animationDidStop(const CABasicAnimation&, bool) {
    if (const auto told = delegate.lock(); told && told->coachMarksViewDidNavigateToIndex)
        told->coachMarksViewDidNavigateToIndex(*this, _markIndex);
}
