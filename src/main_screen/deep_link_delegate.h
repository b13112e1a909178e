// What the main screen asks of the application delegate: the rectangle of the last link, and to open another.
// An interface, so that the main screen does not depend on how the app starts.
#pragma once

#include <optional>

#include "platform/foundation/geometry.h"
#include "platform/foundation/ns_url.h"

class DeepLinkDelegate {
  public:
    virtual ~DeepLinkDelegate() = default;
    /// The rectangle of the last link that was opened; CGRectNull before one was.
    virtual CGRect launchRect() const = 0;
    /// Opens a link. NO if nothing handles it; nothing stands for a malformed one.
    virtual bool loadDeeplink(const std::optional<NSURL>& url) = 0;
};
