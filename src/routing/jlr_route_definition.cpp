// Matching of one pattern, component by component.
// Words are compared percent-encoded and case-sensitively; only the values of variables are decoded.
#include "routing/jlr_route_definition.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/ns_assert.h"
#include "platform/foundation/ns_percent_encoding.h"
#include "routing/jlr_collections.h"
#include "routing/jlr_parsing_utilities.h"

namespace {

constexpr std::string_view wildcard = "*";

template <typename Value>
JLRRouteValue valueOrNull(const std::optional<Value>& value) {
    return value ? JLRRouteValue(*value) : JLRRouteValue(NSNull());
}

}  // namespace

JLRRouteDefinition::JLRRouteDefinition(std::string pattern, uint64_t priority,
                                       JLRRouteHandlerBlock handlerBlock)
    : _pattern(std::move(pattern)), _priority(priority), _handlerBlock(std::move(handlerBlock)) {
    NSCAssert(!_pattern.empty(), "JLRRouteDefinition");
    std::string_view path = _pattern;
    if (path.starts_with('/')) path.remove_prefix(1);
    _patternPathComponents = JLRoutes_pathComponents(path);
    _hasWildcard = std::find(_patternPathComponents.begin(), _patternPathComponents.end(), wildcard) !=
                   _patternPathComponents.end();
}

std::shared_ptr<JLRRouteDefinition> JLRRouteDefinition::copy() const {
    return std::make_shared<JLRRouteDefinition>(*this);
}

JLRRouteResponse JLRRouteDefinition::routeResponseForRequest(const JLRRouteRequest& request) const {
    if (!_hasWildcard && request.pathComponents().size() != _patternPathComponents.size())
        return JLRRouteResponse::invalidMatchResponse();
    const auto variables = routeVariablesForRequest(request);
    if (!variables) return JLRRouteResponse::invalidMatchResponse();
    return JLRRouteResponse::validMatchResponseWithParameters(matchParametersForRequest(request, *variables));
}

bool JLRRouteDefinition::callHandlerBlockWithParameters(const JLRRouteParameters& parameters) const {
    return !_handlerBlock || _handlerBlock(parameters);
}

std::optional<JLRRouteParameters> JLRRouteDefinition::routeVariablesForRequest(
    const JLRRouteRequest& request) const {
    const std::vector<std::string>& components = request.pathComponents();
    JLRRouteParameters variables;
    for (std::size_t i = 0; i < _patternPathComponents.size(); ++i) {
        const std::string& patternComponent = _patternPathComponents[i];
        if (patternComponent == wildcard) {
            const auto first =
                components.begin() + static_cast<std::ptrdiff_t>(std::min(i, components.size()));
            variables[JLRouteWildcardComponents] = std::vector(first, components.end());
            return variables;
        }
        if (i >= components.size()) return std::nullopt;
        if (patternComponent.starts_with(':'))
            setVariable(variables, patternComponent, components[i], request.decodesPlusSymbols());
        else if (patternComponent != components[i])
            return std::nullopt;
    }
    return variables;
}

void JLRRouteDefinition::setVariable(JLRRouteParameters& variables, std::string_view patternComponent,
                                     std::string_view component, bool decodePlusSymbols) const {
    std::string name = routeVariableNameForValue(patternComponent);
    auto value = routeVariableValueForValue(component);
    if (value)
        variables[std::move(name)] =
            JLRParsingUtilities::variableValueFrom(*std::move(value), decodePlusSymbols);
    else
        variables.erase(name);
}

std::string JLRRouteDefinition::routeVariableNameForValue(std::string_view value) const {
    if (value.size() > 1 && value.starts_with(':')) value.remove_prefix(1);
    if (value.size() > 1 && value.ends_with('#')) value.remove_suffix(1);
    return std::string(value);
}

std::optional<std::string> JLRRouteDefinition::routeVariableValueForValue(std::string_view value) const {
    auto decoded = stringByRemovingPercentEncoding(value);
    if (decoded && decoded->size() > 1 && decoded->ends_with('#')) decoded->pop_back();
    return decoded;
}

JLRRouteParameters JLRRouteDefinition::matchParametersForRequest(
    const JLRRouteRequest& request, const JLRRouteParameters& routeVariables) const {
    // map::merge adds only what is not there, so the strongest source comes first.
    JLRRouteParameters parameters = defaultMatchParametersForRequest(request);
    if (const auto& additional = request.additionalParameters())
        parameters.insert(additional->begin(), additional->end());
    parameters.insert(routeVariables.begin(), routeVariables.end());
    parameters.merge(JLRParsingUtilities::queryParams(request.queryParams(), request.decodesPlusSymbols()));
    return parameters;
}

JLRRouteParameters JLRRouteDefinition::defaultMatchParametersForRequest(
    const JLRRouteRequest& request) const {
    JLRRouteParameters parameters;
    parameters.emplace(JLRoutePattern, _pattern);
    parameters.emplace(JLRouteURL, valueOrNull(request.URL()));
    parameters.emplace(JLRouteScheme, valueOrNull(_scheme));
    return parameters;
}

std::size_t JLRRouteDefinition::hash() const {
    return std::hash<std::string>{}(_pattern) ^ std::hash<uint64_t>{}(_priority) ^
           (_scheme ? std::hash<std::string>{}(*_scheme) : 0) ^ JLRoutes_hash(_patternPathComponents);
}

std::string JLRRouteDefinition::description() const {
    return "<" + className() + " " + JLRoutes_addressOf(this) + "> - " + _pattern +
           " (priority: " + std::to_string(_priority) + ")";
}

bool operator==(const JLRRouteDefinition& a, const JLRRouteDefinition& b) {
    return a._pattern == b._pattern && a._scheme == b._scheme && a._priority == b._priority &&
           a._patternPathComponents == b._patternPathComponents;
}
