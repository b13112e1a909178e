// Orientation and its announcements.
// The same orientation twice is no change.
#include "platform/ui/ui_device.h"

#include <algorithm>

#include "platform/foundation/ns_notification_center.h"

UIDevice& UIDevice::currentDevice() {
    static UIDevice device;
    return device;
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
