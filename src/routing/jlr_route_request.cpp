// Set-up of a request: where the host belongs, what a fragment means, how query items become a dictionary.
// Everything is done on the percent-encoded forms; values are decoded last.
#include "routing/jlr_route_request.h"

#include <string_view>
#include <utility>

#include "routing/jlr_collections.h"

namespace {

using QueryItems = std::vector<NSURLQueryItem>;

bool isPathComponent(const std::string& host, JLRRouteRequestOptions options) {
    if (host.empty()) return false;
    if ((options & JLRRouteRequestOptionTreatHostAsPathComponent) != 0) return true;
    return host != "localhost" && host.find('.') == std::string::npos;
}

std::string pathWithHost(const NSURLComponents& components, JLRRouteRequestOptions options) {
    const std::string_view path = components.percentEncodedPath();
    if (!isPathComponent(components.host().value_or(""), options)) return std::string(path);
    return std::string(*components.percentEncodedHost()).append(path);
}

/// "#a=1" adds to the query, "#/a" to the path, "#/a?b=1" to both.
void addFragment(std::string_view encodedFragment, std::string& path, QueryItems& items) {
    const auto fragment = NSURLComponents::componentsWithString(std::string(encodedFragment));
    if (!fragment) return;
    const std::string_view fragmentPath = fragment->percentEncodedPath();
    const std::string_view query = fragment->percentEncodedQuery().value_or(fragmentPath);
    QueryItems more = NSURLComponents::queryItemsOf(query);
    const bool isQuery = !more.empty() && !more.front().value.value_or("").empty();
    if (isQuery)
        items.insert(items.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    if (!isQuery || fragmentPath != query) path.append("#").append(fragmentPath);
}

std::vector<std::string> componentsOf(std::string_view path) {
    if (path.starts_with('/')) path.remove_prefix(1);
    if (path.ends_with('/')) path.remove_suffix(1);
    return JLRoutes_pathComponents(path);
}

void addValue(JLRRouteParameters& parameters, NSURLQueryItem item) {
    const auto [entry, isFirst] = parameters.try_emplace(std::move(item.name), *item.value);
    if (isFirst) return;
    JLRRouteValue& former = entry->second;
    if (auto* const text = std::get_if<std::string>(&former)) former = std::vector{std::move(*text)};
    std::get<std::vector<std::string>>(former).push_back(*std::move(item.value));
}

}  // namespace

JLRRouteRequest::JLRRouteRequest(std::optional<NSURL> url, JLRRouteRequestOptions options,
                                 std::optional<JLRRouteParameters> additionalParameters)
    : _url(std::move(url)), _options(options), _additionalParameters(std::move(additionalParameters)) {
    if (!_url) return;
    const NSURLComponents& components = _url->components();
    std::string path = pathWithHost(components, options);
    QueryItems items = components.queryItems().value_or(QueryItems());
    if (const auto fragment = components.percentEncodedFragment()) addFragment(*fragment, path, items);
    _pathComponents = componentsOf(path);
    for (NSURLQueryItem& item : items) {
        if (item.value) addValue(_queryParams, std::move(item));
    }
}

std::string JLRRouteRequest::description() const {
    return "<JLRRouteRequest " + JLRoutes_addressOf(this) +
           "> - URL: " + (_url ? _url->absoluteString() : "(null)");
}
