// URLs against patterns: which match, and with which parameters.
// Expected values are worked out by hand.
#include "routing/jlr_route_definition.h"

#include <gmock/gmock.h>

#include "routing/jlr_route_handler.h"

namespace {

using Strings = std::vector<std::string>;

constexpr auto plus = JLRRouteRequestOptionDecodePlusSymbols;
constexpr auto hostToo = JLRRouteRequestOptionTreatHostAsPathComponent;

JLRRouteRequest requestFor(const std::string& url,
                           JLRRouteRequestOptions options = JLRRouteRequestOptionsNone,
                           std::optional<JLRRouteParameters> additional = std::nullopt) {
    return JLRRouteRequest(NSURL::URLWithString(url), options, std::move(additional));
}

JLRRouteDefinition route(const std::string& pattern) {
    return {pattern, 0, nullptr};
}

/// Each after a "|", as none of them can hold it.
std::string componentsOf(const char* url, JLRRouteRequestOptions options) {
    std::string text;
    const JLRRouteRequest request = requestFor(url, options);
    for (const std::string& component : request.pathComponents())
        text.append("|").append(component);
    return text;
}

TEST(JLRRouteRequest, FindsPathComponents) {
    using Table = std::vector<std::pair<const char*, const char*>>;
    const Table hosts = {{"app://a/b/c", "|a|b|c"},
                         {"app:///a/b", "|a|b"},
                         {"app://a%2Eb/c", "|c"},
                         {"app://localhost/c", "|c"},
                         {"app://LOCALHOST/c", "|LOCALHOST|c"},
                         {"app://%FF/c", "|c"},
                         {"app://u:p@w%20d:1/c", "|w%20d|c"},
                         {"app://a", "|a"}};
    const Table paths = {{"a/b", "|a|b"},
                         {"http://h.x", "|"},
                         {"http://h.x//", "|"},
                         {"http://h.x/a//b//", "|a||b|"},
                         {"http://h.x/%61%2Fb", "|%61%2Fb"}};
    // A path, nothing, a query, both, and what is neither.
    const Table fragments = {{"/a#/b/c/", "|a#|b|c"}, {"/a/#b%20", "|a|#b%20"}, {"/a#", "|a#"},
                             {"/a#k=1&l", "|a"},      {"/a#/b?k=1", "|a#|b"},   {"/a#?k=1", "|a#"},
                             {"/a#k=", "|a#k="},      {"/a#b?k", "|a#b"}};
    for (const Table& table : {hosts, paths, fragments}) {
        for (const auto& [url, components] : table)
            EXPECT_EQ(componentsOf(url, plus), components) << url;
    }
    EXPECT_EQ(componentsOf("app://a.b/c", hostToo), "|a.b|c");
    EXPECT_EQ(componentsOf("app://localhost:80/c", hostToo | plus), "|localhost|c");
    EXPECT_EQ(componentsOf("app:///c", hostToo), "|c");
    EXPECT_THAT(JLRRouteRequest(std::nullopt).pathComponents(), testing::IsEmpty());
}

TEST(JLRRouteRequest, CollectsQueryItems) {
    const struct {
        const char* url;
        JLRRouteParameters query;
    } cases[] = {{"/a?k=1&k=2&k=3", {{"k", Strings{"1", "2", "3"}}}},
                 {"/a?k&l=&m=x+y%2B%26", {{"l", ""}, {"m", "x+y+&"}}},
                 {"/a?k=1#k=2&l=3", {{"k", Strings{"1", "2"}}, {"l", "3"}}},
                 {"/a?k=1#/b?m=2", {{"k", "1"}, {"m", "2"}}},
                 {"/a#k=&l=1", {}},
                 {"/a?=1&%6B=%FF&%6B=2", {{"", "1"}, {"k", "2"}}}};
    for (const auto& each : cases)
        EXPECT_EQ(requestFor(each.url, plus).queryParams(), each.query) << each.url;
}

TEST(JLRRouteDefinition, MatchesComponentByComponent) {
    const struct {
        const char* pattern;
        const char* url;
        std::optional<JLRRouteParameters> variables;
    } cases[] = {{"/:type/:x1", "app://word/a/b", std::nullopt},
                 {"/:type/:x1", "app:///a/b", {{{"type", "a"}, {"x1", "b"}}}},
                 {"/:type/:x1", "http://h.x/a/b/", {{{"type", "a"}, {"x1", "b"}}}},
                 {"/files/*", "/files", {{{"JLRouteWildcardComponents", Strings{}}}}},
                 {"/files/*", "/files/a/%62", {{{"JLRouteWildcardComponents", Strings{"a", "%62"}}}}},
                 {"/*/b/:c", "/a", {{{"JLRouteWildcardComponents", Strings{"a"}}}}},
                 {":a/*", "/x//y", {{{"a", "x"}, {"JLRouteWildcardComponents", Strings{"", "y"}}}}},
                 {"/a/b", "/a/B", std::nullopt},
                 {"/%61", "/%61", {JLRRouteParameters{}}},
                 {"/:a/:a", "/1/2", {{{"a", "2"}}}},
                 {"/:a#", "/b%23", {{{"a", "b"}}}},
                 {"/:a", "/#", {{{"a", "#"}}}},
                 {"/:/:#", "/x/y", {{{":", "x"}, {"#", "y"}}}},
                 {"/:a/:a", "/x/%FF", {JLRRouteParameters{}}},
                 {"/:a", "/a%20b+c%2B", {{{"a", "a b c "}}}}};
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.pattern) + " against " + each.url);
        const JLRRouteRequest request = requestFor(each.url, plus);
        const JLRRouteResponse response = route(each.pattern).routeResponseForRequest(request);
        auto expected = each.variables;
        if (expected)
            expected->insert({{"JLRoutePattern", each.pattern},
                              {"JLRouteURL", *request.URL()},
                              {"JLRouteScheme", NSNull()}});
        EXPECT_EQ(response.isMatch(), expected.has_value());
        EXPECT_EQ(response.parameters(), expected);
    }
    EXPECT_EQ(route("/:a").routeVariablesForRequest(requestFor("/a%20b+c")),
              (JLRRouteParameters{{"a", "a b+c"}}));
}

TEST(JLRRouteDefinition, LaterSourcesWin) {
    JLRRouteDefinition definition = route("/:a/:b/:c/:JLRouteScheme");
    definition.didBecomeRegisteredForScheme("app");
    const auto object = std::make_shared<int>(7);
    const JLRRouteRequest request = requestFor(
        "/1/2/3/4?a=q&q=q&b=q&c=q&JLRoutePattern=q", plus,
        JLRRouteParameters{{"b", int64_t{5}}, {"object", object}, {"JLRouteURL", "mine"}, {"q", "+"}});
    EXPECT_EQ(definition.routeResponseForRequest(request).parameters(),
              (JLRRouteParameters{{"a", "1"},
                                  {"b", int64_t{5}},
                                  {"c", "3"},
                                  {"q", "+"},
                                  {"object", object},
                                  {"JLRoutePattern", "/:a/:b/:c/:JLRouteScheme"},
                                  {"JLRouteURL", *request.URL()},
                                  {"JLRouteScheme", "app"}}));
}

struct Page {
    explicit Page(const JLRRouteParameters& parameters)
        : name(stringForKey(parameters, "name").value_or("")) {}
    std::string name;
};

TEST(JLRRouteHandler, AsksAnObjectWhileItLivesOrOneMadeForTheLink) {
    struct Target : JLRRouteHandlerTarget {
        bool handleRouteWithParameters(const JLRRouteParameters&) override { return true; }
    };
    auto target = std::make_shared<Target>();
    const JLRRouteHandlerBlock weak = JLRRouteHandler::handlerBlockForWeakTarget(target);
    EXPECT_TRUE(weak({}));
    target.reset();
    EXPECT_FALSE(weak({}));

    const auto made = JLRRouteHandler::handlerBlockForTargetClass<Page>(
        [](const std::shared_ptr<Page>& page) { return page->name == "home"; });
    EXPECT_TRUE(made({{"name", "home"}}));
    EXPECT_FALSE(made({{"name", "away"}}));
}

}  // namespace
