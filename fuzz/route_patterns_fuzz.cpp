// Any bytes as a route's pattern. Where there are few parts, the expansions must be those of the plain way:
// every combination of the parts, less those that lack a required one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "routing/jlr_collections.h"
#include "routing/jlr_parsing_utilities.h"

namespace {

using Subpath = JLRParsingUtilities_RouteSubpath;

/// The fuzzer likes what is expensive, and would do nothing else: of patterns with more parts only some are
/// expanded.
constexpr std::size_t mostParts = 7;
constexpr std::size_t oneIn = 64;
constexpr std::size_t mostBytes = std::size_t{1} << 22;

std::vector<std::string> plainExpansions(const std::vector<Subpath>& subpaths) {
    std::vector<std::string> expansions;
    for (const auto& combination : JLRoutes_allOrderedCombinations(subpaths)) {
        const bool lacksNone = std::ranges::all_of(subpaths, [&combination](const Subpath& subpath) {
            return subpath.isOptionalSubpath || std::ranges::find(combination, subpath) != combination.end();
        });
        if (!lacksNone) continue;
        std::string pattern;
        for (const Subpath& subpath : combination)
            for (const std::string& component : subpath.subpathComponents)
                pattern += component.empty() ? "" : "/" + component;
        expansions.push_back(pattern.empty() ? "/" : pattern);
    }
    return expansions;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string pattern(data, data + size);
    const auto subpaths = JLRParsingUtilities::_routeSubpathsForPattern(pattern);
    if (subpaths.size() > mostParts && JLRParsingUtilities::canExpandPattern(pattern) &&
        std::hash<std::string>{}(pattern) % oneIn != 0)
        return 0;
    auto expansions = JLRParsingUtilities::expandOptionalRoutePatternsForPattern(pattern);
    if (pattern.find('(') == std::string::npos) FUZZ_CHECK(expansions.empty());
    std::size_t bytes = 0;
    for (const std::string& expansion : expansions) {
        FUZZ_CHECK(expansion.starts_with('/') && expansion.find("//") == std::string::npos);
        FUZZ_CHECK(expansion == "/" || !expansion.ends_with('/'));
        bytes += expansion.size();
    }
    FUZZ_CHECK(expansions.size() <= 1 || bytes <= 2 * mostBytes);
    if (expansions.empty() || subpaths.size() > mostParts) return 0;
    auto plain = plainExpansions(subpaths);
    std::ranges::sort(plain);
    std::ranges::sort(expansions);
    FUZZ_CHECK(expansions == plain);
    return 0;
}
