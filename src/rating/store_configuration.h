// The store that the app is in, as the build was configured.
// A build without a store of its own has a host reserved for examples, and contacts nobody.
#pragma once

#include <string>

struct StoreConfiguration {
    std::string host;  ///< with its port where it needs one
    std::string lookupScheme;
    std::string ratingsScheme;

    /// The build's.
    static StoreConfiguration ofBuild();
    bool isConfigured() const;
};
