// The device: its kind, and which way it is held, told by the host.
// Changes are announced only while somebody asked for that.
#pragma once

#include <string>

#include "platform/host/host_event.h"

inline const std::string UIDeviceOrientationDidChangeNotification =
    "UIDeviceOrientationDidChangeNotification";

/// What kind of device the screen is laid out for.
enum class UIUserInterfaceIdiom : int64_t { phone = 0, pad = 1 };

class UIDevice {
  public:
    static UIDevice& currentDevice();

    /// By the screen: whatever has a short side of less than 600 points has the room of a phone.
    UIUserInterfaceIdiom userInterfaceIdiom() const;

    /// Unknown where the host cannot tell.
    UIDeviceOrientation orientation() const { return _orientation; }
    /// From the host; announces a change.
    void setOrientation(UIDeviceOrientation orientation);

    /// Calls nest: as many ends as begins stop the announcements.
    void beginGeneratingDeviceOrientationNotifications() { ++_listeners; }
    void endGeneratingDeviceOrientationNotifications();
    bool isGeneratingDeviceOrientationNotifications() const { return _listeners > 0; }

  private:
    UIDeviceOrientation _orientation = UIDeviceOrientation::unknown;
    int _listeners = 0;
};
