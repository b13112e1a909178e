// A registry: routes in the order of their priorities, and the walk that finds the one for a URL.
// What all registries share stands in jl_routes_class.cpp.
#include "routing/jl_routes.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/foundation/ns_log.h"
#include "routing/jlr_collections.h"
#include "routing/jlr_parsing_utilities.h"

namespace {

/// Texts of the steps are made only if somebody reads them.
template <typename MakeMessage>
void verboseLog(const MakeMessage& makeMessage) {
    if (!JLRoutes::isVerboseLoggingEnabled()) return;
    const std::string message = makeMessage();
    if (!message.empty()) NSLog("[JLRoutes]: %s", message.c_str());
}

void verboseLog(const char* message) {
    verboseLog([message] { return std::string(message); });
}

JLRRouteRequestOptions requestOptions() {
    return (JLRoutes::shouldDecodePlusSymbols() ? JLRRouteRequestOptionDecodePlusSymbols
                                                : JLRRouteRequestOptionsNone) |
           (JLRoutes::alwaysTreatsHostAsPathComponent() ? JLRRouteRequestOptionTreatHostAsPathComponent
                                                        : JLRRouteRequestOptionsNone);
}

/// Not a matter of verbose logging: the route that somebody asked for will be missing.
bool canRegister(const std::string& pattern) {
    const char* const fault = pattern.empty() ? "it is empty"
                              : !JLRParsingUtilities::canExpandPattern(pattern)
                                  ? "it has too many optional parts"
                                  : nullptr;
    if (fault)
        NSLog("[JLRoutes]: Could not add a route for the pattern '%.100s': %s", pattern.c_str(), fault);
    return fault == nullptr;
}

}  // namespace

std::string JLRoutes::description() const {
    return JLRoutes_description(
        JLRoutes_map(*_routes, [](const auto& route) { return route->description(); }));
}

JLRoutes::Routes& JLRoutes::mutableRoutes() {
    if (_routes.use_count() > 1) _routes = std::make_shared<Routes>(*_routes);
    return *_routes;
}

void JLRoutes::addRoute(std::shared_ptr<JLRRouteDefinition> definition) {
    if (definition) _registerRoute(std::move(definition));
}

void JLRoutes::addRoute(const std::string& pattern, uint64_t priority, const JLRRouteHandlerBlock& handler) {
    if (!canRegister(pattern)) return;
    const JLRRouteDefinitionClass makeDefinition = defaultRouteDefinitionClass();
    const auto expansions = JLRParsingUtilities::expandOptionalRoutePatternsForPattern(pattern);
    if (expansions.empty()) _registerRoute(makeDefinition(pattern, priority, handler));
    for (const std::string& expansion : expansions) {
        const auto definition = makeDefinition(expansion, priority, handler);
        _registerRoute(definition);
        verboseLog([&] { return "Automatically created optional route: " + definition->description(); });
    }
}

void JLRoutes::addRoutes(const std::vector<std::string>& patterns, const JLRRouteHandlerBlock& handler) {
    for (const std::string& pattern : patterns)
        addRoute(pattern, handler);
}

JLRoutes::Subscript JLRoutes::operator[](std::string pattern) {
    return {*this, std::move(pattern)};
}

void JLRoutes::_registerRoute(std::shared_ptr<JLRRouteDefinition> definition) {
    JLRRouteDefinition& registered = *definition;
    Routes& list = mutableRoutes();
    const uint64_t priority = registered.priority();
    auto place = list.end();
    if (priority != 0)
        place = std::find_if(list.begin(), list.end(),
                             [priority](const auto& route) { return route->priority() < priority; });
    list.insert(place, std::move(definition));
    registered.didBecomeRegisteredForScheme(_scheme);
}

void JLRoutes::removeRoute(const JLRRouteDefinition& definition) {
    // Routes go after the list has changed: the argument may be one of them, and handlers may own what
    // removes routes.
    const std::shared_ptr<const Routes> former = _routes;
    std::erase_if(mutableRoutes(), [&definition](const auto& route) { return *route == definition; });
}

void JLRoutes::removeRouteWithPattern(const std::string& pattern) {
    Routes& list = mutableRoutes();
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&pattern](const auto& route) { return route->pattern() == pattern; });
    if (found == list.end()) return;
    const auto removed = std::move(*found);
    list.erase(found);
}

void JLRoutes::removeAllRoutes() {
    _routes = std::make_shared<Routes>();
}

bool JLRoutes::canRouteURL(const std::optional<NSURL>& url, const Parameters& parameters) {
    return _routeURL(url, parameters, false);
}

bool JLRoutes::routeURL(const std::optional<NSURL>& url, const Parameters& parameters) {
    return _routeURL(url, parameters, true);
}

bool JLRoutes::_routeURL(const std::optional<NSURL>& url, const Parameters& parameters,
                         bool executeRouteBlock) {
    if (!url) return false;
    const auto self = shared_from_this();  // a handler may unregister this registry
    verboseLog([&] { return "Trying to route URL " + url->absoluteString(); });
    if (tryRoutes(JLRRouteRequest(url, requestOptions(), parameters), executeRouteBlock)) return true;
    verboseLog("Could not find a matching route");
    if (_shouldFallbackToGlobalRoutes && !isGlobalRoutesController()) {
        verboseLog("Falling back to global routes...");
        if (globalRoutes()->_routeURL(url, parameters, executeRouteBlock)) return true;
    }
    if (executeRouteBlock && _unmatchedURLHandler) {
        verboseLog("Falling back to the unmatched URL handler");
        const UnmatchedURLHandler handler = _unmatchedURLHandler;  // which may set another one
        handler(*this, url, parameters);
    }
    return false;
}

bool JLRoutes::tryRoutes(const JLRRouteRequest& request, bool executeRouteBlock) const {
    static const JLRRouteParameters none;
    const std::shared_ptr<const Routes> snapshot = _routes;
    for (const auto& route : *snapshot) {
        const JLRRouteResponse response = route->routeResponseForRequest(request);
        if (!response.isMatch()) continue;
        verboseLog([&] { return "Successfully matched " + route->description(); });
        if (!executeRouteBlock) return true;
        verboseLog([&] { return "Match parameters are " + JLRoutes_description(response.parameters()); });
        if (route->callHandlerBlockWithParameters(response.parameters() ? *response.parameters() : none))
            return true;
    }
    return false;
}
