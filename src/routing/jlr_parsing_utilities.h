// Texts of the router: patterns with optional parts, and "+" for a space.
// A pattern is a path of words, ":name" for a variable, "*" for any rest, and "(...)" around what may be
// absent.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "routing/jlr_route_value.h"

/// One stretch of a pattern, between parentheses or outside of them.
struct JLRParsingUtilities_RouteSubpath {
    std::vector<std::string> subpathComponents;
    bool isOptionalSubpath = false;

    std::size_t hash() const;
    /// "CLASS - OPTIONAL: a/b", or REQUIRED.
    std::string description() const;
    friend bool operator==(const JLRParsingUtilities_RouteSubpath&,
                           const JLRParsingUtilities_RouteSubpath&) = default;
};

class JLRParsingUtilities {
  public:
    /// Every concrete pattern that the pattern stands for, the longest first. Nothing if there are no
    /// parentheses, or nothing but parentheses, or too many (see canExpandPattern).
    static std::vector<std::string> expandOptionalRoutePatternsForPattern(std::string_view pattern);
    /// NO if the expansion would take megabytes: each optional part doubles it.
    static bool canExpandPattern(std::string_view pattern);
    /// Parentheses do not nest; a missing ")" stands at the end.
    static std::vector<JLRParsingUtilities_RouteSubpath> _routeSubpathsForPattern(std::string_view pattern);

    /// "+" as " ", if asked for. Percent escapes are somebody else's.
    static std::string variableValueFrom(std::string value, bool decodePlusSymbols);
    /// Texts and lists decoded and any other value dropped, if asked for; else as they are.
    static JLRRouteParameters queryParams(const JLRRouteParameters& parameters, bool decodePlusSymbols);
};
