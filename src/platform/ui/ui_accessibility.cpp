// Walks the views as touches do, at the values last set: what fades out is gone from the beginning.
// Bars keep their labels and name what is in them.
#include "platform/ui/ui_accessibility.h"

#include <algorithm>
#include <optional>

#include "platform/foundation/ns_notification_center.h"
#include "platform/ui/ui_view_controller.h"

namespace {

bool reduceMotionEnabled = false;

bool isShown(const std::shared_ptr<UIView>& view) {
    return !view->isHidden() && view->alpha() >= UIView::minimumTouchableAlpha;
}

/// Where the user meets things, and what of it is scrolled through.
struct Room {
    CGRect screen;
    std::optional<CGRect> scrolled;
};

/// Empty for what nobody can come to.
CGRect shownPart(CGRect frame, const Room& room) {
    if (!room.scrolled) return CGRectIntersection(frame, room.screen);
    const CGRect part = CGRectIntersection(frame, *room.scrolled);
    if (!CGRectIsEmpty(part) || CGRectIsEmpty(frame)) return part;
    const CGRect edges = *room.scrolled;
    const CGFloat y = std::clamp(frame.origin.y, CGRectGetMinY(edges), CGRectGetMaxY(edges) - 1);
    return CGRectIntersection({{frame.origin.x, y}, {frame.size.width, 1}}, edges);
}

void addElements(const std::shared_ptr<UIView>& view, const Room& room,
                 std::vector<UIAccessibilityElement>& elements) {
    if (!isShown(view)) return;
    const CGRect whole = view->convertRectToWindow(view->bounds());
    const CGRect frame = shownPart(whole, room);
    if (!view->accessibilityLabel().empty() && !CGRectIsEmpty(frame))
        elements.push_back(
            {view, view->accessibilityTraits(), view->accessibilityLabel(), frame, view->isFocused()});
    if (view->isAccessibilityElement()) return;
    const Room within{room.screen, view->clipsToBounds() && !CGRectIsEmpty(frame) ? frame : room.scrolled};
    const auto& subviews = view->subviews();
    const auto modal = std::find_if(subviews.rbegin(), subviews.rend(), [](const auto& below) {
        return below->accessibilityViewIsModal() && isShown(below);
    });
    if (modal != subviews.rend()) return addElements(*modal, within, elements);
    for (const auto& below : subviews)
        addElements(below, within, elements);
}

}  // namespace

bool UIAccessibilityIsReduceMotionEnabled() {
    return reduceMotionEnabled;
}

void setReduceMotionEnabled(bool enabled) {
    if (enabled == reduceMotionEnabled) return;
    reduceMotionEnabled = enabled;
    UIView::setAnimationsEnabled(!enabled);
    NSNotificationCenter::defaultCenter().postNotificationName(
        UIAccessibilityReduceMotionStatusDidChangeNotification);
}

std::vector<UIAccessibilityElement> accessibilityElements(const UIWindow& window) {
    std::vector<UIAccessibilityElement> elements;
    const auto top = window.topViewController();
    if (top && top->isViewLoaded()) addElements(top->view(), {window.bounds(), std::nullopt}, elements);
    return elements;
}
