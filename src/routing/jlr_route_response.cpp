// Hash and printed form of responses.
// Both follow equality: what is equal hashes the same.
#include "routing/jlr_route_response.h"

#include <functional>

std::size_t JLRRouteResponse::hash() const {
    return std::hash<bool>{}(_match) ^ (_parameters ? JLRoutes_hash(*_parameters) : 0);
}

std::string JLRRouteResponse::description() const {
    return "<JLRRouteResponse " + JLRoutes_addressOf(this) + "> - match: " + (_match ? "YES" : "NO") +
           ", params: " + JLRoutes_description(_parameters);
}
