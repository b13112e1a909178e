// What all registries share: the table of schemes and the settings, and the operations of the class on them.
// It is made on first use and never destroyed: objects that die at exit may still remove their routes.
#include <utility>

#include "routing/jl_routes.h"

struct JLRoutes::Shared {
    std::map<std::string, std::shared_ptr<JLRoutes>, std::less<>> registries;
    bool isVerboseLoggingEnabled = false;
    bool shouldDecodePlusSymbols = true;
    bool alwaysTreatsHostAsPathComponent = false;
    JLRRouteDefinitionClass defaultRouteDefinitionClass = JLRRouteDefinitionOfClass<JLRRouteDefinition>;
};

JLRoutes::Shared& JLRoutes::shared() {
    static auto* const instance = new Shared;
    return *instance;
}

std::shared_ptr<JLRoutes> JLRoutes::globalRoutes() {
    return routesForScheme(JLRoutesGlobalRoutesScheme);
}

std::shared_ptr<JLRoutes> JLRoutes::routesForScheme(const std::string& scheme) {
    std::shared_ptr<JLRoutes>& registry = shared().registries[scheme];
    if (!registry) registry.reset(new JLRoutes(scheme));
    return registry;
}

std::shared_ptr<JLRoutes> JLRoutes::routesControllerForURL(const std::optional<NSURL>& url) {
    if (!url) return nullptr;
    const auto& registries = shared().registries;
    const auto scheme = url->scheme();
    const auto found = scheme ? registries.find(*scheme) : registries.end();
    return found != registries.end() ? found->second : globalRoutes();
}

// Registries go after the table has changed: what dies with their handlers may ask for it.
void JLRoutes::unregisterRouteScheme(const std::string& scheme) {
    const auto former = shared().registries.extract(scheme);
}

void JLRoutes::unregisterAllRouteSchemes() {
    const auto former = std::exchange(shared().registries, {});
}

std::map<std::string, JLRoutes::Routes> JLRoutes::allRoutes() {
    std::map<std::string, Routes> all;
    for (const auto& [scheme, registry] : shared().registries)
        all.emplace(scheme, registry->routes());
    return all;
}

bool JLRoutes::isVerboseLoggingEnabled() {
    return shared().isVerboseLoggingEnabled;
}

void JLRoutes::setVerboseLoggingEnabled(bool enabled) {
    shared().isVerboseLoggingEnabled = enabled;
}

bool JLRoutes::shouldDecodePlusSymbols() {
    return shared().shouldDecodePlusSymbols;
}

void JLRoutes::setShouldDecodePlusSymbols(bool shouldDecode) {
    shared().shouldDecodePlusSymbols = shouldDecode;
}

bool JLRoutes::alwaysTreatsHostAsPathComponent() {
    return shared().alwaysTreatsHostAsPathComponent;
}

void JLRoutes::setAlwaysTreatsHostAsPathComponent(bool treatsHostAsPathComponent) {
    shared().alwaysTreatsHostAsPathComponent = treatsHostAsPathComponent;
}

JLRRouteDefinitionClass JLRoutes::defaultRouteDefinitionClass() {
    return shared().defaultRouteDefinitionClass;
}

void JLRoutes::setDefaultRouteDefinitionClass(JLRRouteDefinitionClass definitionClass) {
    shared().defaultRouteDefinitionClass =
        definitionClass ? definitionClass : JLRRouteDefinitionOfClass<JLRRouteDefinition>;
}

void JLRoutes::Class::addRoute(const std::string& pattern, const JLRRouteHandlerBlock& handler) {
    globalRoutes()->addRoute(pattern, handler);
}

void JLRoutes::Class::addRoute(const std::string& pattern, uint64_t priority,
                               const JLRRouteHandlerBlock& handler) {
    globalRoutes()->addRoute(pattern, priority, handler);
}

void JLRoutes::Class::addRoutes(const std::vector<std::string>& patterns,
                                const JLRRouteHandlerBlock& handler) {
    globalRoutes()->addRoutes(patterns, handler);
}

void JLRoutes::Class::removeRoute(const std::string& pattern) {
    globalRoutes()->removeRouteWithPattern(pattern);
}

void JLRoutes::Class::removeAllRoutes() {
    globalRoutes()->removeAllRoutes();
}

bool JLRoutes::Class::canRouteURL(const std::optional<NSURL>& url, const Parameters& parameters) {
    const auto registry = routesControllerForURL(url);
    return registry && registry->canRouteURL(url, parameters);
}

bool JLRoutes::Class::routeURL(const std::optional<NSURL>& url, const Parameters& parameters) {
    const auto registry = routesControllerForURL(url);
    return registry && registry->routeURL(url, parameters);
}
