// A tour of the screen: everything is darkened but a hole over one place at a time, with a caption beside it.
// A view that knows nothing of what it explains: rectangles and texts come from outside.
#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/ca_shape_layer.h"
#include "platform/ui/ui_control.h"

enum class MPCoachMarkShape : int32_t { roundedRect = 0, circle = 1, square = 2 };
/// Where a caption stands from left to right, as far as its position leaves that open.
enum class MPCoachMarkAlignment : int32_t { center = 0, left = 1, right = 2 };
/// Where the caption stands from the mark's rectangle.
enum class MPCoachMarkPosition : int32_t {
    bottom = 0,
    left = 1,
    top = 2,
    right = 3,
    bottomRight = 4,
    bottomLeft = 5
};
enum class MPCoachMarksContinueLocation : int32_t { top = 0, center = 1, bottom = 2 };

/// By key: "rect" (CGRect, points of the overlay), "caption" (std::string), "shape", "alignment" and
/// "position" (the enumerations above or numbers), "cutoutRadius" (a number), "showArrow" (bool, or a number
/// that is not 0). Absent ones, and values of other types, read as nothing, "" and 0; an absent radius as 5.
using MPCoachMark = std::map<std::string, std::any>;

class MPCoachMarks;

/// What it leaves empty it does not want to know.
struct MPCoachMarksViewDelegate {
    std::function<void(MPCoachMarks& view, uint32_t index)> coachMarksViewWillNavigateToIndex;
    std::function<void(MPCoachMarks& view, uint32_t index)> coachMarksViewDidNavigateToIndex;
    std::function<void(MPCoachMarks& view)> coachMarksViewWillCleanup;
    std::function<void(MPCoachMarks& view)> coachMarksViewDidCleanup;
    /// With it a tap into the hole ends the tour instead of going on.
    std::function<void(MPCoachMarks& view, uint32_t index)> coachMarksViewDidClickedAtIndex;
    std::function<void(MPCoachMarks& view)> coachMarksViewSkipButtonClicked;
};

class MPCoachMarks : public UIView, public CAAnimationDelegate {
  public:
    /// Hidden until it is started. Views need an owner before they can be put together, hence no
    /// constructors.
    static std::shared_ptr<MPCoachMarks> initWithFrame(CGRect frame);
    static std::shared_ptr<MPCoachMarks> initWithFrame(CGRect frame, std::vector<MPCoachMark> coachMarks);

    /// Fades in, then shows the first mark. The overlay has a superview by then.
    void start();
    /// To the mark, or out of the tour if there is none.
    void goToCoachMarkIndexed(uint32_t index);
    void userDidTap();
    void skipCoach();
    /// Without a fade.
    void end();
    void cleanup(bool animated);
    /// Whether a mark shows, or the first one is about to.
    bool isRunning() const;
    /// The mark on screen in its place, without any animation: its rectangle, the screen or the fonts
    /// changed.
    void layOutCurrentMark();

    UIImageRef fetchImage(const std::string& name) const;
    UIEdgeInsets getSafeAreaInsets();
    CGFloat yOriginForContinueLabel();
    void setCutoutToRect(CGRect rect, MPCoachMarkShape shape);
    void animateCutoutToRect(CGRect rect, MPCoachMarkShape shape);

    const std::shared_ptr<CAShapeLayer>& mask() const { return _mask; }
    uint32_t markIndex() const { return _markIndex; }
    const std::shared_ptr<UIView>& currentView() const { return _currentView; }
    const std::shared_ptr<UILabel>& lblContinue() const { return _lblContinue; }
    const std::shared_ptr<UIButton>& btnSkipCoach() const { return _btnSkipCoach; }
    const std::shared_ptr<UIImageView>& arrowImage() const { return _arrowImage; }
    void setArrowImage(std::shared_ptr<UIImageView> image) { _arrowImage = std::move(image); }
    /// Nothing until it is set; the mask has a colour of its own from the start.
    const std::optional<UIColor>& maskColor() const { return _maskColor; }
    void setMaskColor(UIColor color);

    std::weak_ptr<MPCoachMarksViewDelegate> delegate;
    std::vector<MPCoachMark> coachMarks;
    std::shared_ptr<UILabel> lblCaption;
    bool enableContinueLabel = true;
    bool enableSkipButton = true;
    double animationDuration = 0.3;  ///< seconds
    CGFloat cutoutRadius = 5;        ///< points; each mark sets it
    CGFloat maxLblWidth = 230;       ///< points
    CGFloat lblSpacing = 35;         ///< points between a rectangle and a caption under it
    std::string continueLabelText;
    std::string skipButtonText;
    MPCoachMarksContinueLocation continueLocation = MPCoachMarksContinueLocation::bottom;

    void animationDidStop(const CABasicAnimation& animation, bool finished) override;
    /// Nothing below is touched.
    bool swallowsTouches() const override { return true; }
    bool drawsContent() const override { return false; }
    void layoutSubviews() override;
    /// What lies below cannot be used: screen readers find the tour alone, with a button that goes on.
    bool accessibilityViewIsModal() const override { return true; }
    UIAccessibilityTraits accessibilityTraits() const override { return UIAccessibilityTraitButton; }
    bool accessibilityActivate() override;
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}
    void touchesCancelled(const UITouches&, const UIEvent&) override {}

  protected:
    explicit MPCoachMarks(CGRect frame) : UIView(frame) {}

  private:
    struct Mark;
    struct Layout;

    void setup();
    void handleSingleTap();
    Mark readMark(uint32_t index) const;
    Layout layOutCaption(const Mark& mark);
    void layOutTapView(const Mark& mark);
    void layOutArrow(const Layout& layout);
    void showContinueLabel();
    void showSkipButton();
    void placeContinueLine();
    CGFloat continueLabelWidth() const;
    UIBezierPath cutoutPath(CGRect rect, MPCoachMarkShape shape) const;

    std::shared_ptr<CAShapeLayer> _mask;
    uint32_t _markIndex = 0;
    std::shared_ptr<UIView> _currentView;
    std::shared_ptr<UILabel> _lblContinue;
    std::shared_ptr<UIButton> _btnSkipCoach;
    std::optional<UIColor> _maskColor;
    std::shared_ptr<UIImageView> _arrowImage;
    bool _isFadingIn = false;
    /// Whether a mark was shown since the start.
    bool _showsMark = false;
    CGSize _laidOutSize;
};
