// What the user was doing elsewhere and goes on with here: for this app a web page, that is a link of its own
// web host.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/ns_url.h"

inline const std::string NSUserActivityTypeBrowsingWeb = "NSUserActivityTypeBrowsingWeb";

struct NSUserActivity {
    std::string activityType;
    std::optional<NSURL> webpageURL;
};
