// Orientation and its announcements.
// The same orientation twice is no change.
#include "platform/ui/ui_device.h"

#include <algorithm>

#include "platform/foundation/ns_notification_center.h"
#include "platform/ui/ui_screen.h"

namespace {

constexpr CGFloat shortSideOfTablets = 600;

}  // namespace

UIDevice& UIDevice::currentDevice() {
    static UIDevice device;
    return device;
}

UIUserInterfaceIdiom UIDevice::userInterfaceIdiom() const {
    const CGSize size = UIScreen::mainScreen().bounds().size;
    const bool isSmall = std::min(size.width, size.height) < shortSideOfTablets;
    return isSmall ? UIUserInterfaceIdiom::phone : UIUserInterfaceIdiom::pad;
}

void UIDevice::setOrientation(UIDeviceOrientation orientation) {
    if (orientation == _orientation) return;
    _orientation = orientation;
    if (!isGeneratingDeviceOrientationNotifications()) return;
    NSNotificationCenter::defaultCenter().postNotificationName(UIDeviceOrientationDidChangeNotification,
                                                               this);
}

void UIDevice::endGeneratingDeviceOrientationNotifications() {
    _listeners = std::max(_listeners - 1, 0);
}
