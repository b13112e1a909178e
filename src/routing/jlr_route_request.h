// One incoming URL, cut into what routes are matched against: path components and query parameters.
// Made once for each routing, however many routes are tried.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "routing/jlr_route_value.h"

/// A set of the bits below.
using JLRRouteRequestOptions = uint32_t;
inline constexpr JLRRouteRequestOptions JLRRouteRequestOptionsNone = 0;
/// "+" means a space in queries and variables.
inline constexpr JLRRouteRequestOptions JLRRouteRequestOptionDecodePlusSymbols = 1;
/// The host is the first path component whatever it is; else only a single word other than "localhost" is.
inline constexpr JLRRouteRequestOptions JLRRouteRequestOptionTreatHostAsPathComponent = 2;

class JLRRouteRequest {
  public:
    explicit JLRRouteRequest(std::optional<NSURL> url,
                             JLRRouteRequestOptions options = JLRRouteRequestOptionsNone,
                             std::optional<JLRRouteParameters> additionalParameters = std::nullopt);

    const std::optional<NSURL>& URL() const { return _url; }
    /// Percent-encoded, as they stand in the URL; a fragment is the end of the last one.
    const std::vector<std::string>& pathComponents() const { return _pathComponents; }
    /// Percent-decoded texts, or lists of texts for names that come again.
    const JLRRouteParameters& queryParams() const { return _queryParams; }
    JLRRouteRequestOptions options() const { return _options; }
    bool decodesPlusSymbols() const { return (_options & JLRRouteRequestOptionDecodePlusSymbols) != 0; }
    const std::optional<JLRRouteParameters>& additionalParameters() const { return _additionalParameters; }
    std::string description() const;

  private:
    std::optional<NSURL> _url;
    std::vector<std::string> _pathComponents;
    JLRRouteParameters _queryParams;
    JLRRouteRequestOptions _options;
    std::optional<JLRRouteParameters> _additionalParameters;
};
