// Expansion of optional parts and "+" decoding.
// The number of expansions is known before any is made, so that a hostile pattern costs no memory.
#include "routing/jlr_parsing_utilities.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "routing/jlr_collections.h"

namespace {

using Subpath = JLRParsingUtilities_RouteSubpath;
using Subpaths = std::vector<Subpath>;

/// Bytes of all expansions together: fourteen optional parts of a few letters each.
constexpr std::size_t mostExpandedBytes = std::size_t{1} << 22;

/// Tells parts that every expansion has from those that it may lack. Required parts that are equal stand in
/// for each other: an expansion needs one of them.
class ExpansionPlan {
  public:
    explicit ExpansionPlan(const Subpaths& subpaths) {
        for (const Subpath& subpath : subpaths) {
            if (!subpath.isOptionalSubpath) ++_occurrences[subpath.subpathComponents];
        }
        for (const Subpath& subpath : subpaths)
            _choices += isAlwaysThere(subpath) ? 0U : 1U;
    }

    bool isAlwaysThere(const Subpath& subpath) const {
        return !subpath.isOptionalSubpath && _occurrences.at(subpath.subpathComponents) == 1;
    }
    bool isComplete(const std::vector<const Subpath*>& combination) const {
        return std::all_of(_occurrences.begin(), _occurrences.end(), [&combination](const auto& required) {
            return required.second == 1 ||
                   std::any_of(combination.begin(), combination.end(), [&required](const Subpath* subpath) {
                       return !subpath->isOptionalSubpath && subpath->subpathComponents == required.first;
                   });
        });
    }
    /// The expansions number two to this power at most.
    std::size_t choices() const { return _choices; }

  private:
    std::map<std::vector<std::string>, std::size_t> _occurrences;
    std::size_t _choices = 0;
};

bool isWithinBounds(std::size_t patternLength, std::size_t choices) {
    return choices == 0 || (choices < 32 && patternLength <= mostExpandedBytes >> choices);
}

/// As the platform joins paths: no slash is doubled, none stays at the end.
void appendPathComponents(std::string& path, const std::vector<std::string>& components) {
    for (const std::string& component : components) {
        if (component.empty()) continue;
        if (!path.ends_with('/')) path += '/';
        path += component;
    }
}

std::string patternOf(const std::vector<const Subpath*>& combination) {
    std::string pattern = "/";
    for (const Subpath* subpath : combination)
        appendPathComponents(pattern, subpath->subpathComponents);
    return pattern;
}

/// In UTF-16 units, the platform's measure of texts.
std::size_t lengthOf(const std::string& text) {
    std::size_t length = 0;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isContinuation = (byte & 0xC0) == 0x80;
        length += isContinuation ? 0U : (byte >= 0xF0 ? 2U : 1U);
    }
    return length;
}

std::vector<std::string> longestFirst(std::vector<std::string> patterns) {
    std::stable_sort(patterns.begin(), patterns.end(),
                     [](const std::string& a, const std::string& b) { return lengthOf(a) > lengthOf(b); });
    return patterns;
}

/// Cuts `rest` behind the next delimiter and answers what stands before it, all of it if there is none.
std::string_view scanUpTo(std::string_view& rest, char delimiter) {
    const std::size_t at = std::min(rest.find(delimiter), rest.size());
    const std::string_view scanned = rest.substr(0, at);
    rest.remove_prefix(std::min(at + 1, rest.size()));
    return scanned;
}

struct DecodedValue {
    std::optional<JLRRouteValue> operator()(const std::string& text) const {
        return JLRParsingUtilities::variableValueFrom(text, true);
    }
    std::optional<JLRRouteValue> operator()(const std::vector<std::string>& list) const {
        return JLRoutes_map(
            list, [](const std::string& text) { return JLRParsingUtilities::variableValueFrom(text, true); });
    }
    std::optional<JLRRouteValue> operator()(const auto& /*other*/) const { return std::nullopt; }
};

}  // namespace

std::size_t JLRParsingUtilities_RouteSubpath::hash() const {
    return JLRoutes_hash(subpathComponents) ^ std::hash<bool>{}(isOptionalSubpath);
}

std::string JLRParsingUtilities_RouteSubpath::description() const {
    std::string path;
    for (const std::string& component : subpathComponents)
        path.append(&component == subpathComponents.data() ? "" : "/").append(component);
    return std::string("JLRParsingUtilities_RouteSubpath - ") +
           (isOptionalSubpath ? "OPTIONAL" : "REQUIRED") + ": " + path;
}

bool JLRParsingUtilities::canExpandPattern(std::string_view pattern) {
    return isWithinBounds(pattern.size(), ExpansionPlan(_routeSubpathsForPattern(pattern)).choices());
}

std::vector<std::string> JLRParsingUtilities::expandOptionalRoutePatternsForPattern(
    std::string_view pattern) {
    if (pattern.find('(') == std::string_view::npos) return {};
    const Subpaths subpaths = _routeSubpathsForPattern(pattern);
    const ExpansionPlan plan(subpaths);
    if (subpaths.empty() || !isWithinBounds(pattern.size(), plan.choices())) return {};
    const auto members = JLRoutes_map(subpaths, [](const Subpath& subpath) { return &subpath; });
    const auto combinations = JLRoutes_orderedCombinations(
        members, [&plan](const Subpath* subpath) { return plan.isAlwaysThere(*subpath); });
    const auto complete = JLRoutes_filter(
        combinations, [&plan](const auto& combination) { return plan.isComplete(combination); });
    return longestFirst(JLRoutes_map(complete, patternOf));
}

std::vector<Subpath> JLRParsingUtilities::_routeSubpathsForPattern(std::string_view pattern) {
    Subpaths subpaths;
    std::string_view rest = pattern;
    while (!rest.empty()) {
        const std::string_view required = scanUpTo(rest, '(');
        if (!required.empty() && required != ")" && required != "/")
            subpaths.push_back({JLRoutes_trimmedPathComponents(required), false});
        const std::string_view optional = scanUpTo(rest, ')');
        if (!optional.empty()) subpaths.push_back({JLRoutes_trimmedPathComponents(optional), true});
    }
    return subpaths;
}

std::string JLRParsingUtilities::variableValueFrom(std::string value, bool decodePlusSymbols) {
    if (decodePlusSymbols) std::replace(value.begin(), value.end(), '+', ' ');
    return value;
}

JLRRouteParameters JLRParsingUtilities::queryParams(const JLRRouteParameters& parameters,
                                                    bool decodePlusSymbols) {
    if (!decodePlusSymbols) return parameters;
    JLRRouteParameters decodedParameters;
    for (const auto& [key, value] : parameters) {
        if (auto decoded = std::visit(DecodedValue{}, value))
            decodedParameters.emplace(key, *std::move(decoded));
    }
    return decodedParameters;
}
