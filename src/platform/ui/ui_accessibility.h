// The screen in words, for who does not see it: every labelled view that shows, in reading order.
// Hosts hand the list to whatever reads screens where they run.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_window.h"

struct UIAccessibilityElement {
    std::shared_ptr<UIView> view;
    UIAccessibilityTraits traits = UIAccessibilityTraitNone;
    std::string label;
    CGRect frame;  ///< what of it lies on the screen; points of the window
};

/// Of the screen in front, views before those in them. What is hidden, too transparent to be touched, or not
/// on the screen has none.
std::vector<UIAccessibilityElement> accessibilityElements(const UIWindow& window);
