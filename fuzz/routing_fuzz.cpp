// A pattern in the first line, a URL in the rest: set-up of the request, matching, the walk of a registry.
// The registry must agree with the route, and asking whether a URL can be routed must call nobody.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "platform/foundation/ns_log.h"
#include "routing/jl_routes.h"

namespace {

constexpr std::ptrdiff_t mostParts = 3;

void checkMatch(const std::string& pattern, const NSURL& url, JLRRouteRequestOptions options) {
    const JLRRouteRequest request(url, options);
    FUZZ_CHECK(!request.pathComponents().empty());
    const JLRRouteDefinition definition(pattern, 0, nullptr);
    const JLRRouteResponse response = definition.routeResponseForRequest(request);
    FUZZ_CHECK(response.isMatch() == response.parameters().has_value());
    FUZZ_CHECK(!response.description().empty() && response == response);
    if (!response.isMatch()) return;
    FUZZ_CHECK(stringForKey(*response.parameters(), JLRoutePattern) == pattern);
    FUZZ_CHECK(std::get<NSURL>(response.parameters()->at(JLRouteURL)) == url);
}

/// A URL always matches its own path, and "*" takes all of it.
void checkOwnPath(const NSURL& url, JLRRouteRequestOptions options) {
    const JLRRouteRequest request(url, options);
    std::string own;
    for (const std::string& component : request.pathComponents())
        own.append("/").append(component);
    FUZZ_CHECK(JLRRouteDefinition(own, 0, nullptr).routeResponseForRequest(request).isMatch());
    const auto all = JLRRouteDefinition("/*", 0, nullptr).routeVariablesForRequest(request);
    FUZZ_CHECK(all && all->at(JLRouteWildcardComponents) == JLRRouteValue(request.pathComponents()));
}

void checkRegistry(const std::string& pattern, const NSURL& url) {
    JLRoutes::unregisterAllRouteSchemes();
    int calls = 0;
    JLRoutes::Class::addRoute(pattern, [&calls](const JLRRouteParameters&) { return ++calls == 2; });
    JLRoutes::Class::addRoute("/:type/:x1/:y1/:x2/:y2", 1, [&calls](const JLRRouteParameters&) {
        ++calls;
        return false;
    });
    const bool canRoute = JLRoutes::Class::canRouteURL(url);
    FUZZ_CHECK(calls == 0);
    const bool routed = JLRoutes::Class::routeURL(url);
    FUZZ_CHECK(canRoute == (calls > 0) && (!routed || canRoute));
    JLRoutes::unregisterAllRouteSchemes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static const bool isSilent = (NSLogSetSink([](std::string_view) {}), true);
    const std::string text(data, data + size);
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string pattern = text.substr(0, end);
    const auto url = NSURL::URLWithString(text.substr(std::min(end + 1, text.size())));
    if (!isSilent || !url || pattern.empty()) return 0;
    for (JLRRouteRequestOptions options = 0; options < 4; ++options) {
        checkMatch(pattern, *url, options);
        checkOwnPath(*url, options);
    }
    // Each part doubles the list, and the fuzzer finds expensive ones: they are route_patterns_fuzz's.
    if (std::ranges::count(pattern, '(') <= mostParts) checkRegistry(pattern, *url);
    return 0;
}
