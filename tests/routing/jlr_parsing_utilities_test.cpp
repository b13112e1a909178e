// Patterns and their expansions, and "+" in values.
// Expansions of equal length come in the order of the combinations.
#include "routing/jlr_parsing_utilities.h"

#include <gmock/gmock.h>

namespace {

using Strings = std::vector<std::string>;

TEST(JLRParsingUtilities, ExpandsOptionalParts) {
    const struct {
        const char* pattern;
        Strings expansions;
    } cases[] = {{"/a(/b)", {"/a/b", "/a"}},
                 {"(/x)", {"/x", "/"}},
                 {"/path/:thing(/a)(/b)(/c)",
                  {"/path/:thing/a/b/c", "/path/:thing/a/b", "/path/:thing/a/c", "/path/:thing/b/c",
                   "/path/:thing/a", "/path/:thing/b", "/path/:thing/c", "/path/:thing"}},
                 {"/(a/)b/(:c/*)", {"/a/b/:c/*", "/b/:c/*", "/a/b", "/b"}},
                 {"/a", {}},
                 {"/()", {}},
                 {"/a(/b", {"/a/b", "/a"}},
                 {"/a((b)c)", {"/a/(b/c)", "/a/c)"}},
                 {"a(//)(b//c/)", {"/a/b/c", "/a/b/c", "/a", "/a"}},
                 // Equal required parts stand in for each other.
                 {"/a(/bb)/a", {"/a/bb/a", "/a/bb", "/bb/a", "/a/a", "/a", "/a"}},
                 // The longest by characters, not by bytes: 2 + 2 against 2 + 1.
                 {"(/xx)(/\u20ac)", {"/xx/\u20ac", "/xx", "/\u20ac", "/"}}};
    for (const auto& each : cases)
        EXPECT_THAT(JLRParsingUtilities::expandOptionalRoutePatternsForPattern(each.pattern),
                    testing::ElementsAreArray(each.expansions))
            << each.pattern;
}

TEST(JLRParsingUtilities, DecodesPlusSymbols) {
    EXPECT_EQ(JLRParsingUtilities::variableValueFrom("a+b+c", true), "a b c");
    EXPECT_EQ(JLRParsingUtilities::variableValueFrom("a+b%2B", false), "a+b%2B");
    EXPECT_EQ(JLRParsingUtilities::variableValueFrom("%2B+", true), "%2B ");
    const JLRRouteParameters query = {
        {"text", "a+b"}, {"list", Strings{"c+", "d"}}, {"n+", 3.5}, {"null", NSNull()}};
    EXPECT_EQ(JLRParsingUtilities::queryParams(query, false), query);
    EXPECT_EQ(JLRParsingUtilities::queryParams(query, true),
              (JLRRouteParameters{{"text", "a b"}, {"list", Strings{"c ", "d"}}}));
}

}  // namespace
