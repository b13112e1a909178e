// The main bundle: a name in front of the host's reader.
// Callers say what is missing themselves; they know what it was for.
#include "platform/foundation/ns_bundle.h"

NSBundle& NSBundle::mainBundle() {
    static NSBundle bundle;
    return bundle;
}

std::optional<std::string> NSBundle::stringForResource(const std::string& name,
                                                       const std::string& type) const {
    if (!_reader) return std::nullopt;
    return _reader(type.empty() ? name : name + "." + type);
}
