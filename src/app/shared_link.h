// What people hand over as a link: the text from a message, a browser, a command line.
// Decided here alone is whether it is one of ours; where it leads is the router's business.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/ns_url.h"

/// One line: why this is no link of ours, and what would be.
struct LinkMistake {
    std::string line;
};

/// Takes a web link of the app's own host (http or https; the scheme may be left out), a link of the app's
/// own scheme, and a bare path; white space and angle brackets around it are dropped. Of a longer text, as
/// one that was copied with its picture, the first web link or link of the own scheme that is ours counts.
std::variant<NSURL, LinkMistake> readSharedLink(std::string_view text);

/// Whether a browser would have opened it: its scheme is http or https.
bool isWebLink(const NSURL& url);
