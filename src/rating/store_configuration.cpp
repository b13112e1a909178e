// What the build says of the store.
// Names under "example" and "invalid" belong to nobody (RFC 2606); CMakeLists.txt has the same rule for the
// page's policy.
#include "rating/store_configuration.h"

#include "platform/foundation/ascii_text.h"

StoreConfiguration StoreConfiguration::ofBuild() {
    return {ZENTARO_STORE_HOST, ZENTARO_STORE_LOOKUP_SCHEME, ZENTARO_STORE_RATINGS_SCHEME};
}

bool StoreConfiguration::isConfigured() const {
    std::string name = asciiLowercase(host.substr(0, host.find(':')));
    if (name.ends_with('.')) name.pop_back();
    const std::string top = name.substr(name.rfind('.') + 1);
    return !name.empty() && top != "example" && top != "invalid";
}
