// What a route says to a request: no match, or a match with its parameters.
// A value: copies are equal to their original.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "routing/jlr_route_value.h"

class JLRRouteResponse {
  public:
    static JLRRouteResponse invalidMatchResponse() { return {false, std::nullopt}; }
    static JLRRouteResponse validMatchResponseWithParameters(JLRRouteParameters parameters) {
        return {true, std::move(parameters)};
    }

    bool isMatch() const { return _match; }
    const std::optional<JLRRouteParameters>& parameters() const { return _parameters; }

    std::size_t hash() const;
    std::string description() const;
    friend bool operator==(const JLRRouteResponse&, const JLRRouteResponse&) = default;

  private:
    JLRRouteResponse(bool match, std::optional<JLRRouteParameters> parameters)
        : _match(match), _parameters(std::move(parameters)) {}

    bool _match;
    std::optional<JLRRouteParameters> _parameters;
};
