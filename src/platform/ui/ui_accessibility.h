// The screen in words, for who does not see it: every labelled view that shows, in reading order.
// Hosts hand the list to whatever reads screens where they run.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_window.h"

inline const std::string UIAccessibilityReduceMotionStatusDidChangeNotification =
    "UIAccessibilityReduceMotionStatusDidChangeNotification";

/// Whether the user has asked the system for less motion.
bool UIAccessibilityIsReduceMotionEnabled();
/// For the application object: turns animations off or on, then posts the notification, if that is a change.
void setReduceMotionEnabled(bool enabled);

struct UIAccessibilityElement {
    std::shared_ptr<UIView> view;
    UIAccessibilityTraits traits = UIAccessibilityTraitNone;
    std::string label;
    CGRect frame;  ///< what of it lies on the screen; points of the window
    bool isFocused = false;
};

/// Of the screen in front, views before those in them. What is hidden, too transparent to be touched, or not
/// on the screen has none; what is scrolled out of sight lies at the edge that it would come from.
std::vector<UIAccessibilityElement> accessibilityElements(const UIWindow& window);
