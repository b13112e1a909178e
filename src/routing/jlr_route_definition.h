// One registered pattern with its priority and handler, and the rules by which a request matches it.
// Other rules are a derived class, see JLRoutes::setDefaultRouteDefinitionClass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "routing/jlr_route_request.h"
#include "routing/jlr_route_response.h"
#include "routing/jlr_route_value.h"

/// Keys in the parameters of every match, which nothing overrides: the route's pattern, the URL, the route's
/// scheme.
inline const std::string JLRoutePattern = "JLRoutePattern";
inline const std::string JLRouteURL = "JLRouteURL";
inline const std::string JLRouteScheme = "JLRouteScheme";
/// The list of path components, percent-encoded, that a "*" stands for.
inline const std::string JLRouteWildcardComponents = "JLRouteWildcardComponents";

/// NO declines: the next route that matches is asked.
using JLRRouteHandlerBlock = std::function<bool(const JLRRouteParameters& parameters)>;

class JLRRouteDefinition {
  public:
    /// The pattern is not empty and has no optional parts; higher priorities are asked first.
    JLRRouteDefinition(std::string pattern, uint64_t priority, JLRRouteHandlerBlock handlerBlock);
    JLRRouteDefinition(const JLRRouteDefinition&) = default;
    JLRRouteDefinition& operator=(const JLRRouteDefinition&) = delete;
    virtual ~JLRRouteDefinition() = default;
    /// Of the same class: derived classes answer one of theirs.
    virtual std::shared_ptr<JLRRouteDefinition> copy() const;

    /// Nothing before the registration.
    const std::optional<std::string>& scheme() const { return _scheme; }
    const std::string& pattern() const { return _pattern; }
    uint64_t priority() const { return _priority; }
    const std::vector<std::string>& patternPathComponents() const { return _patternPathComponents; }
    const JLRRouteHandlerBlock& handlerBlock() const { return _handlerBlock; }

    virtual JLRRouteResponse routeResponseForRequest(const JLRRouteRequest& request) const;
    /// The handler's answer; YES without a handler.
    virtual bool callHandlerBlockWithParameters(const JLRRouteParameters& parameters) const;
    virtual void didBecomeRegisteredForScheme(const std::string& scheme) { _scheme = scheme; }

    /// Variables and the wildcard's components; nothing if the components differ. A value that is no UTF-8
    /// once decoded leaves its variable away.
    virtual std::optional<JLRRouteParameters> routeVariablesForRequest(const JLRRouteRequest& request) const;
    /// ":name#" as "name".
    virtual std::string routeVariableNameForValue(std::string_view value) const;
    /// Percent-decoded, without a "#" at its end.
    virtual std::optional<std::string> routeVariableValueForValue(std::string_view value) const;
    /// Later ones win: query, variables, the caller's additions, the default ones.
    virtual JLRRouteParameters matchParametersForRequest(const JLRRouteRequest& request,
                                                         const JLRRouteParameters& routeVariables) const;
    virtual JLRRouteParameters defaultMatchParametersForRequest(const JLRRouteRequest& request) const;

    std::size_t hash() const;
    std::string description() const;
    /// Handlers do not count.
    friend bool operator==(const JLRRouteDefinition& a, const JLRRouteDefinition& b);

  protected:
    virtual std::string className() const { return "JLRRouteDefinition"; }

  private:
    void setVariable(JLRRouteParameters& variables, std::string_view patternComponent,
                     std::string_view component, bool decodePlusSymbols) const;

    std::optional<std::string> _scheme;
    std::string _pattern;
    uint64_t _priority;
    std::vector<std::string> _patternPathComponents;
    bool _hasWildcard;
    JLRRouteHandlerBlock _handlerBlock;
};
