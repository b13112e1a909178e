// Turns SDL's events into the host contract's: one mouse button is one touch, fingers are touches with ids of
// their own, keys arrive as what they type. Pure but for one bit of memory; needs neither window nor display.
#pragma once

#include <SDL_events.h>
#include <cstdint>
#include <vector>

#include "platform/host/host_event.h"

/// How SDL's coordinates become points, at the time of an event.
struct WindowGeometry {
    CGSize size{1280, 720};    ///< points
    double scale = 1;          ///< pixels per point
    double pointsPerUnit = 1;  ///< points per SDL window coordinate
};

class SdlEventTranslator {
  public:
    /// The mouse's touch id; fingers have others.
    static constexpr int64_t kMouseTouch = 0;

    /// Appends what the event means to the app, nothing for most. time: the event's, on the host's clock.
    void translate(const SDL_Event& event, const WindowGeometry& geometry, HostTime time,
                   std::vector<HostEvent>& out);

  private:
    /// SDL says with the key, but not with the text it types, that the press repeats itself.
    bool _repeated = false;
};
