// The main bundle's strings decide: it knows which of the user's languages it has.
// Mirrored are places, never drawings of words.
#include "platform/ui/ui_layout_direction.h"

#include "platform/foundation/ns_bundle.h"

UIUserInterfaceLayoutDirection userInterfaceLayoutDirection() {
    return NSBundle::mainBundle().localizedStringForKey("layout direction", "") == "rtl"
               ? UIUserInterfaceLayoutDirection::rightToLeft
               : UIUserInterfaceLayoutDirection::leftToRight;
}

CGRect directed(CGRect rect, CGFloat width, UIUserInterfaceLayoutDirection direction) {
    if (direction == UIUserInterfaceLayoutDirection::leftToRight) return rect;
    rect.origin.x = width - CGRectGetMaxX(rect);
    return rect;
}
