// Walks the views as touches do, at the values last set: what fades out is gone from the beginning.
// Bars keep their labels and name what is in them.
#include "platform/ui/ui_accessibility.h"

#include "platform/ui/ui_view_controller.h"

namespace {

void addElements(const std::shared_ptr<UIView>& view, CGRect screen,
                 std::vector<UIAccessibilityElement>& elements) {
    if (view->isHidden() || view->alpha() < UIView::minimumTouchableAlpha) return;
    const CGRect frame = CGRectIntersection(view->convertRectToWindow(view->bounds()), screen);
    if (!view->accessibilityLabel().empty() && !CGRectIsEmpty(frame))
        elements.push_back({view, view->accessibilityTraits(), view->accessibilityLabel(), frame});
    for (const auto& below : view->subviews())
        addElements(below, screen, elements);
}

}  // namespace

std::vector<UIAccessibilityElement> accessibilityElements(const UIWindow& window) {
    std::vector<UIAccessibilityElement> elements;
    const auto top = window.topViewController();
    if (top && top->isViewLoaded()) addElements(top->view(), window.bounds(), elements);
    return elements;
}
