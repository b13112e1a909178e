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
                 {"", {}},
                 {"(", {}},
                 {"/()", {}},
                 {"/a(", {"/a"}},
                 {"/a(/b", {"/a/b", "/a"}},
                 {"/a)(b)", {"/a)/b", "/a)"}},
                 {"/a((b)c)", {"/a/(b/c)", "/a/c)"}},
                 {"a(//)(b//c/)", {"/a/b/c", "/a/b/c", "/a", "/a"}},
                 // Equal required parts stand in for each other.
                 {"/a(/bb)/a", {"/a/bb/a", "/a/bb", "/bb/a", "/a/a", "/a", "/a"}},
                 {"/a(/a)", {"/a/a", "/a"}},
                 // The longest by characters, not by bytes: 2 + 2 against 2 + 1.
                 {"(/xx)(/\u20ac)", {"/xx/\u20ac", "/xx", "/\u20ac", "/"}}};
    for (const auto& each : cases)
        EXPECT_THAT(JLRParsingUtilities::expandOptionalRoutePatternsForPattern(each.pattern),
                    testing::ElementsAreArray(each.expansions))
            << each.pattern;
}

TEST(JLRParsingUtilities, RefusesMorePartsThanMemoryShouldHold) {
    std::string pattern;
    for (int i = 0; i < 11; ++i)
        pattern += "/r" + std::to_string(i) + "(/o)";
    EXPECT_EQ(JLRParsingUtilities::expandOptionalRoutePatternsForPattern(pattern).size(), 1U << 11);
    for (int i = 0; i < 50; ++i)
        pattern += "(/o)";
    const std::string longPart = "/" + std::string(100000, 'a') + "(/b)(/c)(/d)(/e)(/f)(/g)(/h)";
    std::string equalParts;
    for (int i = 0; i < 100; ++i)
        equalParts += "/a()";
    for (const std::string& refused : {pattern, longPart, equalParts}) {
        EXPECT_FALSE(JLRParsingUtilities::canExpandPattern(refused));
        EXPECT_THAT(JLRParsingUtilities::expandOptionalRoutePatternsForPattern(refused), testing::IsEmpty());
    }
    const std::string giantWord(5000000, 'a');
    EXPECT_EQ(JLRParsingUtilities::expandOptionalRoutePatternsForPattern(giantWord + "()").size(), 1U);
}

TEST(JLRParsingUtilities, FindsSubpaths) {
    const auto subpaths = JLRParsingUtilities::_routeSubpathsForPattern("/path/:thing/(/a//b/)");
    ASSERT_EQ(subpaths.size(), 2U);
    EXPECT_EQ(subpaths[0].description(), "JLRParsingUtilities_RouteSubpath - REQUIRED: path/:thing");
    EXPECT_EQ(subpaths[1].description(), "JLRParsingUtilities_RouteSubpath - OPTIONAL: a//b");
    auto other = subpaths[1];
    EXPECT_EQ(other, subpaths[1]);
    EXPECT_EQ(other.hash(), subpaths[1].hash());
    other.isOptionalSubpath = false;
    EXPECT_NE(other, subpaths[1]);
    EXPECT_NE(other.hash(), subpaths[1].hash());
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
