// The registries of routes: one for each URL scheme, and a global one for URLs of all other schemes.
// Everything happens on the main thread. Handlers may add and remove routes, and route other URLs.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "routing/jlr_route_definition.h"

/// Scheme of the global registry.
inline const std::string JLRoutesGlobalRoutesScheme = "JLRoutesGlobalRoutesScheme";

/// Makes the definitions of new routes.
using JLRRouteDefinitionClass = std::shared_ptr<JLRRouteDefinition> (*)(std::string pattern,
                                                                        uint64_t priority,
                                                                        JLRRouteHandlerBlock handlerBlock);

template <typename Definition>
std::shared_ptr<JLRRouteDefinition> JLRRouteDefinitionOfClass(std::string pattern, uint64_t priority,
                                                              JLRRouteHandlerBlock handlerBlock) {
    return std::make_shared<Definition>(std::move(pattern), priority, std::move(handlerBlock));
}

class JLRoutes : public std::enable_shared_from_this<JLRoutes> {
  public:
    using Parameters = std::optional<JLRRouteParameters>;
    using Routes = std::vector<std::shared_ptr<JLRRouteDefinition>>;
    using UnmatchedURLHandler =
        std::function<void(JLRoutes& routes, const std::optional<NSURL>& url, const Parameters& parameters)>;

    /// Operations of the class itself that share their names with those of its instances: adding and removing
    /// act on the global registry, routing picks the registry for the URL's scheme.
    struct Class {
        static void addRoute(const std::string& pattern, const JLRRouteHandlerBlock& handler);
        static void addRoute(const std::string& pattern, uint64_t priority,
                             const JLRRouteHandlerBlock& handler);
        static void addRoutes(const std::vector<std::string>& patterns, const JLRRouteHandlerBlock& handler);
        static void removeRoute(const std::string& pattern);
        static void removeAllRoutes();
        static bool canRouteURL(const std::optional<NSURL>& url, const Parameters& parameters = std::nullopt);
        static bool routeURL(const std::optional<NSURL>& url, const Parameters& parameters = std::nullopt);
    };

    static std::shared_ptr<JLRoutes> globalRoutes();
    /// Made on first use.
    static std::shared_ptr<JLRoutes> routesForScheme(const std::string& scheme);
    static void unregisterRouteScheme(const std::string& scheme);
    static void unregisterAllRouteSchemes();
    /// Schemes without routes included, the global one too once it was used.
    static std::map<std::string, Routes> allRoutes();

    /// NO by default.
    static bool isVerboseLoggingEnabled();
    static void setVerboseLoggingEnabled(bool enabled);
    /// YES by default.
    static bool shouldDecodePlusSymbols();
    static void setShouldDecodePlusSymbols(bool shouldDecode);
    /// NO by default.
    static bool alwaysTreatsHostAsPathComponent();
    static void setAlwaysTreatsHostAsPathComponent(bool treatsHostAsPathComponent);
    /// JLRRouteDefinition by default, and again if set to nothing.
    static JLRRouteDefinitionClass defaultRouteDefinitionClass();
    static void setDefaultRouteDefinitionClass(JLRRouteDefinitionClass definitionClass);

    JLRoutes(const JLRoutes&) = delete;
    JLRoutes& operator=(const JLRoutes&) = delete;

    const std::string& scheme() const { return _scheme; }
    /// In the order in which they are tried; later changes do not show in it.
    Routes routes() const { return *_routes; }
    std::string description() const;

    bool shouldFallbackToGlobalRoutes() const { return _shouldFallbackToGlobalRoutes; }
    void setShouldFallbackToGlobalRoutes(bool shouldFallback) {
        _shouldFallbackToGlobalRoutes = shouldFallback;
    }
    const UnmatchedURLHandler& unmatchedURLHandler() const { return _unmatchedURLHandler; }
    void setUnmatchedURLHandler(UnmatchedURLHandler handler) { _unmatchedURLHandler = std::move(handler); }

    /// As it is, optional parts not expanded. It comes before the first route of lower priority, or, with
    /// priority 0, to the end.
    void addRoute(std::shared_ptr<JLRRouteDefinition> definition);
    /// One route for each expansion of the pattern's optional parts. An empty pattern, and one with more
    /// optional parts than can be expanded, is refused with a line in the log.
    void addRoute(const std::string& pattern, const JLRRouteHandlerBlock& handler) {
        addRoute(pattern, 0, handler);
    }
    void addRoute(const std::string& pattern, uint64_t priority, const JLRRouteHandlerBlock& handler);
    void addRoutes(const std::vector<std::string>& patterns, const JLRRouteHandlerBlock& handler);
    /// `routes["/pattern"] = handler` adds a route.
    class Subscript;
    Subscript operator[](std::string pattern);

    /// Every route that is equal.
    void removeRoute(const JLRRouteDefinition& definition);
    /// The first one with this pattern, after expansion.
    void removeRouteWithPattern(const std::string& pattern);
    void removeAllRoutes();

    /// Whether a route matches. No handler is called.
    bool canRouteURL(const std::optional<NSURL>& url, const Parameters& parameters = std::nullopt);
    /// Whether the handler of a route that matches took the URL. The parameters are added to the route's.
    bool routeURL(const std::optional<NSURL>& url, const Parameters& parameters = std::nullopt);

  private:
    struct Shared;
    static Shared& shared();
    static std::shared_ptr<JLRoutes> routesControllerForURL(const std::optional<NSURL>& url);

    explicit JLRoutes(std::string scheme) : _scheme(std::move(scheme)) {}
    bool isGlobalRoutesController() const { return _scheme == JLRoutesGlobalRoutesScheme; }
    void _registerRoute(std::shared_ptr<JLRRouteDefinition> definition);
    bool _routeURL(const std::optional<NSURL>& url, const Parameters& parameters, bool executeRouteBlock);
    bool tryRoutes(const JLRRouteRequest& request, bool executeRouteBlock) const;
    Routes& mutableRoutes();

    std::string _scheme;
    /// Shared with the walks under way, see mutableRoutes.
    std::shared_ptr<Routes> _routes = std::make_shared<Routes>();
    bool _shouldFallbackToGlobalRoutes = false;
    UnmatchedURLHandler _unmatchedURLHandler;
};

class JLRoutes::Subscript {
  public:
    Subscript& operator=(const JLRRouteHandlerBlock& handler) {
        _routes.addRoute(_pattern, handler);
        return *this;
    }

  private:
    friend class JLRoutes;
    Subscript(JLRoutes& routes, std::string pattern) : _routes(routes), _pattern(std::move(pattern)) {}

    JLRoutes& _routes;
    std::string _pattern;
};
