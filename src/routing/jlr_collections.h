// Small helpers on the platform's arrays and strings that the router's parsing is made of.
// Arrays keep their order everywhere.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Subsets of `elements` in which every element that `isKept` answers YES to is a member: first those of the
/// elements but the last, in the same order, then (alone, if it is kept) those with the last one appended.
template <typename Element, typename IsKept>
std::vector<std::vector<Element>> JLRoutes_orderedCombinations(const std::vector<Element>& elements,
                                                               const IsKept& isKept) {
    std::vector<std::vector<Element>> combinations(1);
    for (const Element& element : elements) {
        const std::size_t count = combinations.size();
        if (!isKept(element)) {
            combinations.reserve(2 * count);
            std::copy_n(combinations.begin(), count, std::back_inserter(combinations));
        }
        for (auto with = combinations.end() - static_cast<std::ptrdiff_t>(count); with != combinations.end();
             ++with)
            with->push_back(element);
    }
    return combinations;
}

/// All 2^n subsets of n elements.
template <typename Element>
std::vector<std::vector<Element>> JLRoutes_allOrderedCombinations(const std::vector<Element>& elements) {
    return JLRoutes_orderedCombinations(elements, [](const Element&) { return false; });
}

template <typename Element, typename Test>
std::vector<Element> JLRoutes_filter(const std::vector<Element>& elements, const Test& test) {
    std::vector<Element> passed;
    std::copy_if(elements.begin(), elements.end(), std::back_inserter(passed), test);
    return passed;
}

template <typename Element, typename Function>
auto JLRoutes_map(const std::vector<Element>& elements, const Function& function) {
    std::vector<std::decay_t<decltype(function(elements.front()))>> results;
    results.reserve(elements.size());
    std::transform(elements.begin(), elements.end(), std::back_inserter(results), function);
    return results;
}

/// The text between the slashes; one empty component for an empty path.
inline std::vector<std::string> JLRoutes_pathComponents(std::string_view path) {
    std::vector<std::string> components;
    components.reserve(static_cast<std::size_t>(std::count(path.begin(), path.end(), '/')) + 1);
    for (std::size_t slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/')) {
        components.emplace_back(path.substr(0, slash));
        path.remove_prefix(slash + 1);
    }
    components.emplace_back(path);
    return components;
}

/// As above, without any slash at either end.
inline std::vector<std::string> JLRoutes_trimmedPathComponents(std::string_view path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return JLRoutes_pathComponents(path.substr(0, path.find_last_not_of('/') + 1));
}
