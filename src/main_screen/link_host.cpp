// One host for the whole program.
// The build's own is ZENTARO_WEB_HOST.
#include "main_screen/link_host.h"

#include <utility>

namespace {

std::string& presentHost() {
    static std::string host = ZENTARO_WEB_HOST;
    return host;
}

}  // namespace

const std::string& linkHost() {
    return presentHost();
}

void setLinkHost(std::string host) {
    presentHost() = host.empty() ? std::string(ZENTARO_WEB_HOST) : std::move(host);
}
