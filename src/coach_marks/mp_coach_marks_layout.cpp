// What a mark looks like: caption, arrow, hole, and the line with the hint and the skip button.
// The same steps put a mark on screen and lay it out anew when the screen changes.
#include <cmath>
#include <optional>
#include <utility>

#include "coach_marks/mp_caption_layout.h"
#include "coach_marks/mp_coach_marks.h"
#include "platform/ui/ui_gesture_recognizer.h"

namespace {

constexpr float defaultRadius = 5;
constexpr double captionFade = 0.3;
constexpr double hintDelay = 1.0;
constexpr double hintFade = 0.3;
constexpr CGFloat hintHeight = 30;
constexpr CGFloat hintFontSize = 13;
/// How much of the width the hint has beside the skip button.
constexpr CGFloat hintShare = 0.7;

const std::any* valueOf(const MPCoachMark& mark, const char* key) {
    const auto found = mark.find(key);
    return found == mark.end() ? nullptr : &found->second;
}

template <typename Value>
Value valueOr(const MPCoachMark& mark, const char* key, Value otherwise) {
    const std::any* const value = valueOf(mark, key);
    const auto* const typed = value ? std::any_cast<Value>(value) : nullptr;
    return typed ? *typed : otherwise;
}

/// The number in a value that has one of the types.
template <typename... Types>
std::optional<double> numberOf(const std::any& value) {
    std::optional<double> found;
    const auto read = [&found](const auto* typed) {
        if (typed) found = static_cast<double>(*typed);
    };
    (read(std::any_cast<Types>(&value)), ...);
    return found;
}

std::optional<double> number(const MPCoachMark& mark, const char* key) {
    const std::any* const value = valueOf(mark, key);
    return value ? numberOf<bool, int32_t, uint32_t, int64_t, float, double, MPCoachMarkShape,
                            MPCoachMarkAlignment, MPCoachMarkPosition>(*value)
                 : std::nullopt;
}

/// 0 for what is no number of an enumeration.
template <typename Enumeration>
Enumeration choice(const MPCoachMark& mark, const char* key) {
    const double value = number(mark, key).value_or(0);
    return std::abs(value) < 1000 ? static_cast<Enumeration>(static_cast<int32_t>(value)) : Enumeration{};
}

void fadeInLate(const std::shared_ptr<UIView>& view) {
    view->setAlpha(0);
    UIView::animateWithDuration(hintFade, hintDelay, UIViewAnimationOptionNone,
                                [&view] { view->setAlpha(1); });
}

}  // namespace

struct MPCoachMarks::Mark {
    std::string caption;
    CGRect rect;
    MPCoachMarkShape shape = MPCoachMarkShape::roundedRect;
    MPCoachMarkAlignment alignment = MPCoachMarkAlignment::center;
    MPCoachMarkPosition position = MPCoachMarkPosition::bottom;
    CGFloat cutoutRadius = 0;
    bool showArrow = false;
};

struct MPCoachMarks::Layout {
    MPCaptionPlaces places;
    UIImageRef arrow;
};

MPCoachMarks::Mark MPCoachMarks::readMark(uint32_t index) const {
    const MPCoachMark& mark = coachMarks[index];
    const auto rect = valueOr(mark, "rect", CGRectZero);
    const auto radius = number(mark, "cutoutRadius");
    return {valueOr(mark, "caption", std::string()),
            isFinite(rect) ? rect : CGRectZero,
            choice<MPCoachMarkShape>(mark, "shape"),
            choice<MPCoachMarkAlignment>(mark, "alignment"),
            choice<MPCoachMarkPosition>(mark, "position"),
            static_cast<CGFloat>(radius ? static_cast<float>(*radius) : defaultRadius),
            number(mark, "showArrow").value_or(0) != 0};
}

void MPCoachMarks::goToCoachMarkIndexed(uint32_t index) {
    if (index >= coachMarks.size()) return cleanup(true);
    _markIndex = index;
    _showsMark = true;
    setAccessibilityLabel(index + 1 < coachMarks.size() ? "Next" : "Done");
    const Mark mark = readMark(index);
    cutoutRadius = mark.cutoutRadius;
    layOutTapView(mark);
    lblCaption->setAlpha(0);
    layOutArrow(layOutCaption(mark));
    UIView::animateWithDuration(captionFade, 0, UIViewAnimationOptionNone,
                                [this] { lblCaption->setAlpha(1); });
    if (const auto told = delegate.lock(); told && told->coachMarksViewWillNavigateToIndex)
        told->coachMarksViewWillNavigateToIndex(*this, index);
    if (index == 0) {
        // The hole grows out of the first rectangle's middle.
        const CGPoint middle{std::floor(CGRectGetMidX(mark.rect)), std::floor(CGRectGetMidY(mark.rect))};
        setCutoutToRect({middle, CGSizeZero}, mark.shape);
    }
    animateCutoutToRect(mark.rect, mark.shape);
    if (enableContinueLabel) showContinueLabel();
    if (enableSkipButton && index == 0) showSkipButton();
}

/// Over the hole, for who wants taps there.
void MPCoachMarks::layOutTapView(const Mark& mark) {
    const auto told = delegate.lock();
    if (!told || !told->coachMarksViewDidClickedAtIndex) return;
    if (_currentView) _currentView->removeFromSuperview();
    _currentView = std::make_shared<UIView>(mark.rect);
    _currentView->addGestureRecognizer(
        std::make_shared<UITapGestureRecognizer>([this](UIGestureRecognizer&) { handleSingleTap(); }));
    addSubview(_currentView);
}

/// The caption in its place.
MPCoachMarks::Layout MPCoachMarks::layOutCaption(const Mark& mark) {
    lblCaption->setFrame(CGRectMake(0, 0, maxLblWidth, 0));
    lblCaption->setText(mark.caption);
    lblCaption->sizeToFit();
    MPCaptionRequest request{mark.rect,   lblCaption->frame().size, bounds().size,
                             lblSpacing,  mark.alignment,           mark.position,
                             std::nullopt};
    UIImageRef arrow;
    if (const char* name = mark.showArrow ? arrowImageName(mark.position) : nullptr) {
        arrow = fetchImage(name);
        request.arrow = arrow ? arrow->size() : CGSizeZero;
    }
    Layout layout{placeCaption(request), arrow};
    lblCaption->setFrame(layout.places.caption);
    return layout;
}

void MPCoachMarks::layOutArrow(const Layout& layout) {
    if (_arrowImage) _arrowImage->removeFromSuperview();
    if (!layout.places.arrow) return;
    auto image = std::make_shared<UIImageView>(*layout.places.arrow);
    image->setImage(layout.arrow);
    setArrowImage(std::move(image));
    addSubview(_arrowImage);
}

UIImageRef MPCoachMarks::fetchImage(const std::string& name) const {
    return UIImage::imageNamed(name);
}

CGFloat MPCoachMarks::continueLabelWidth() const {
    return enableSkipButton ? hintShare * bounds().size.width : bounds().size.width;
}

/// For the first mark alone.
void MPCoachMarks::showContinueLabel() {
    if (_lblContinue) _lblContinue->removeFromSuperview();
    _lblContinue = nullptr;
    if (_markIndex != 0) return;
    _lblContinue = std::make_shared<UILabel>();
    _lblContinue->setFont(UIFont::boldSystemFontOfSize(hintFontSize));
    _lblContinue->setTextAlignment(NSTextAlignment::center);
    _lblContinue->setText(continueLabelText);
    _lblContinue->setTextColor(UIColor::black());
    _lblContinue->setBackgroundColor(UIColor::white());
    placeContinueLine();
    addSubview(_lblContinue);
    fadeInLate(_lblContinue);
}

/// It stays until the overlay goes.
void MPCoachMarks::showSkipButton() {
    if (_btnSkipCoach) _btnSkipCoach->removeFromSuperview();
    _btnSkipCoach = std::make_shared<UIButton>();
    _btnSkipCoach->setAction([this] { skipCoach(); });
    _btnSkipCoach->setTitle(skipButtonText);
    _btnSkipCoach->setFont(UIFont::boldSystemFontOfSize(hintFontSize));
    _btnSkipCoach->setTintColor(UIColor::white());
    placeContinueLine();
    addSubview(_btnSkipCoach);
    fadeInLate(_btnSkipCoach);
}

void MPCoachMarks::placeContinueLine() {
    const CGFloat y = yOriginForContinueLabel();
    const CGFloat width = continueLabelWidth();
    if (_lblContinue) _lblContinue->setFrame(CGRectMake(0, y, width, hintHeight));
    if (_btnSkipCoach) _btnSkipCoach->setFrame(CGRectMake(width, y, bounds().size.width - width, hintHeight));
}

UIEdgeInsets MPCoachMarks::getSafeAreaInsets() {
    return safeAreaInsets();
}

CGFloat MPCoachMarks::yOriginForContinueLabel() {
    const UIEdgeInsets insets = getSafeAreaInsets();
    switch (continueLocation) {
        case MPCoachMarksContinueLocation::top:
            return static_cast<CGFloat>(static_cast<float>(insets.top + 20));
        case MPCoachMarksContinueLocation::center:
            return bounds().size.height / 2 - hintHeight / 2;
        case MPCoachMarksContinueLocation::bottom:
            break;
    }
    return bounds().size.height - static_cast<CGFloat>(static_cast<float>(insets.bottom + hintHeight));
}

UIBezierPath MPCoachMarks::cutoutPath(CGRect rect, MPCoachMarkShape shape) const {
    UIBezierPath path = UIBezierPath::bezierPathWithRect(bounds());
    switch (shape) {
        case MPCoachMarkShape::square:
            path.appendPath(UIBezierPath::bezierPathWithRect(rect));
            return path;
        case MPCoachMarkShape::circle:
            path.appendPath(UIBezierPath::bezierPathWithOvalInRect(rect));
            return path;
        case MPCoachMarkShape::roundedRect:
            break;
    }
    path.appendPath(UIBezierPath::bezierPathWithRoundedRect(rect, cutoutRadius));
    return path;
}

void MPCoachMarks::setCutoutToRect(CGRect rect, MPCoachMarkShape shape) {
    _mask->setPath(cutoutPath(rect, shape));
}

void MPCoachMarks::animateCutoutToRect(CGRect rect, MPCoachMarkShape shape) {
    UIBezierPath path = cutoutPath(rect, shape);
    CABasicAnimation animation = CABasicAnimation::animationWithKeyPath("path");
    animation.delegate = std::static_pointer_cast<MPCoachMarks>(shared_from_this());
    animation.timingFunction = CAMediaTimingFunction::easeOut();
    animation.duration = animationDuration;
    animation.fromValue = _mask->path();
    animation.toValue = path;
    _mask->addAnimation(std::move(animation), "path");
    _mask->setPath(std::move(path));
}

void MPCoachMarks::layOutCurrentMark() {
    _mask->setFrame(bounds());
    placeContinueLine();
    if (!_showsMark || _markIndex >= coachMarks.size()) return;
    const Mark mark = readMark(_markIndex);
    if (_currentView) _currentView->setFrame(mark.rect);
    layOutArrow(layOutCaption(mark));
    _mask->removeAllAnimations();
    setCutoutToRect(mark.rect, mark.shape);
}

void MPCoachMarks::layoutSubviews() {
    if (std::exchange(_laidOutSize, bounds().size) != bounds().size) layOutCurrentMark();
}
