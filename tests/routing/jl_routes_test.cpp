// Registries: the order of routes, who takes a URL, what stays untouched.
// Each handler writes its name into one list, so that order and absence of calls show.
#include "routing/jl_routes.h"

#include <gmock/gmock.h>
#include <regex>

#include "routing/jlr_collections.h"
#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Strings = std::vector<std::string>;

std::optional<NSURL> url(const char* text) {
    return NSURL::URLWithString(text);
}

struct JLRoutesTest : testing::Test {
    JLRoutesTest() {
        backToDefaults();
        global = JLRoutes::globalRoutes();
    }
    ~JLRoutesTest() override { backToDefaults(); }

    static void backToDefaults() {
        JLRoutes::unregisterAllRouteSchemes();
        JLRoutes::setVerboseLoggingEnabled(false);
        JLRoutes::setShouldDecodePlusSymbols(true);
        JLRoutes::setAlwaysTreatsHostAsPathComponent(false);
        JLRoutes::setDefaultRouteDefinitionClass(nullptr);
    }
    JLRRouteHandlerBlock handler(const std::string& name, bool takes = true) {
        return [this, name, takes](const JLRRouteParameters& given) {
            calls.push_back(name);
            parameters = given;
            return takes;
        };
    }
    Strings patterns() const {
        return JLRoutes_map(global->routes(), [](const auto& route) { return route->pattern(); });
    }

    Strings calls;
    JLRRouteParameters parameters;
    LogCapture log;
    std::shared_ptr<JLRoutes> global;
};

TEST_F(JLRoutesTest, HigherPrioritiesComeFirst) {
    for (const auto& [name, priority] : std::vector<std::pair<std::string, uint64_t>>{
             {"0", 0}, {"5", 5}, {"5 again", 5}, {"10", 10}, {"0 again", 0}, {"3", 3}, {"most", UINT64_MAX}})
        global->addRoute("/a", priority, handler(name, false));
    EXPECT_FALSE(global->routeURL(url("/a")));
    EXPECT_THAT(calls, ElementsAre("most", "10", "5", "5 again", "3", "0", "0 again"));
}

TEST_F(JLRoutesTest, PatternsAreAddedAndRemoved) {
    (*global)["/a(/b)"] = handler("a");
    JLRoutes::Class::addRoutes({"/c", "/d"}, handler("cd"));
    JLRoutes::Class::addRoute("/e", 7, handler("e"));
    JLRoutes::Class::addRoute("/c", handler("c again"));
    global->addRoute(std::make_shared<JLRRouteDefinition>("/f(/g)", 0, nullptr));
    EXPECT_THAT(patterns(), ElementsAre("/e", "/a/b", "/a", "/c", "/d", "/c", "/f(/g)"));
    EXPECT_EQ(global->routes()[6]->scheme(), "JLRoutesGlobalRoutesScheme");

    JLRoutes::Class::removeRoute("/c");
    JLRoutes::Class::removeRoute("/a(/b)");
    EXPECT_THAT(patterns(), ElementsAre("/e", "/a/b", "/a", "/d", "/c", "/f(/g)"));
    EXPECT_TRUE(global->routeURL(url("/c")));
    EXPECT_THAT(calls, ElementsAre("c again"));
    global->addRoute("/a", handler("equal"));
    global->removeRoute(*global->routes()[2]->copy());
    global->removeRoute(*global->routes()[0]);
    EXPECT_THAT(patterns(), ElementsAre("/a/b", "/d", "/c", "/f(/g)"));
    global->removeAllRoutes();
    EXPECT_FALSE(JLRoutes::Class::canRouteURL(url("/d")));
    EXPECT_THAT(log.lines, IsEmpty());

    global->addRoute("", handler(""));
    std::string tooMany;
    for (int i = 0; i < 40; ++i)
        tooMany += "(/a)";
    global->addRoute(tooMany, handler(""));
    EXPECT_THAT(patterns(), IsEmpty());
    EXPECT_THAT(log.lines, ElementsAre("[JLRoutes]: Could not add a route for the pattern '': it is empty",
                                       testing::HasSubstr("it has too many optional parts")));
}

TEST_F(JLRoutesTest, ASchemeHasItsRegistry) {
    const auto app = JLRoutes::routesForScheme("app");
    EXPECT_EQ(JLRoutes::routesForScheme("app"), app);
    app->addRoute("/a", handler("app"));
    global->addRoute("/a", handler("global"));
    global->addRoute("/only", handler("only"));

    const struct {
        const char* url;
        Strings calls;
    } cases[] = {{"app:/a", {"app"}},    {"other:/a", {"global"}}, {"/a", {"global"}}, {"app:/only", {}},
                 {"APP:/a", {"global"}}, {"app:/b", {}},           {"not a url", {}}};
    for (const auto& each : cases) {
        calls.clear();
        EXPECT_EQ(JLRoutes::Class::canRouteURL(url(each.url)), !each.calls.empty()) << each.url;
        EXPECT_EQ(JLRoutes::Class::routeURL(url(each.url)), !each.calls.empty()) << each.url;
        EXPECT_EQ(calls, each.calls) << each.url;
    }
    EXPECT_TRUE(JLRoutes::Class::routeURL(url("app:/a")));
    EXPECT_EQ(parameters["JLRouteScheme"], JLRRouteValue("app"));

    app->setShouldFallbackToGlobalRoutes(true);
    global->setShouldFallbackToGlobalRoutes(true);
    calls.clear();
    EXPECT_TRUE(app->canRouteURL(url("app:/only")));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(JLRoutes::Class::routeURL(url("app:/only"), JLRRouteParameters{{"mine", true}}));
    EXPECT_EQ(parameters["JLRouteScheme"], JLRRouteValue("JLRoutesGlobalRoutesScheme"));
    EXPECT_EQ(parameters["mine"], JLRRouteValue(true));
    EXPECT_FALSE(JLRoutes::Class::routeURL(url("app:/b")));

    JLRoutes::routesForScheme("empty");
    const auto all = JLRoutes::allRoutes();
    EXPECT_THAT(all, testing::SizeIs(3));
    EXPECT_EQ(all.at("app").size(), 1U);
    EXPECT_EQ(all.at("JLRoutesGlobalRoutesScheme").size(), 2U);
    EXPECT_THAT(all.at("empty"), IsEmpty());
    JLRoutes::unregisterRouteScheme("app");
    EXPECT_TRUE(JLRoutes::Class::routeURL(url("app:/a")));
    EXPECT_EQ(calls.back(), "global");
    JLRoutes::unregisterAllRouteSchemes();
    EXPECT_THAT(JLRoutes::allRoutes(), IsEmpty());
    EXPECT_FALSE(JLRoutes::Class::routeURL(url("app:/a")));
}

TEST_F(JLRoutesTest, HandlersMayDecline) {
    const auto app = JLRoutes::routesForScheme("app");
    app->addRoute("/:a", handler("declines", false));
    app->addRoute("/a", handler("takes"));
    app->addRoute("/*", handler("also declines", false));
    app->setShouldFallbackToGlobalRoutes(true);
    global->addRoute("/:a", handler("global", false));
    const auto unmatched = [this](const char* name) {
        return [this, name](JLRoutes& routes, const std::optional<NSURL>& unmatchedURL,
                            const JLRoutes::Parameters& given) {
            calls.push_back(name + (" " + routes.scheme()) + " " + unmatchedURL->absoluteString() +
                            (given ? " with" : " without"));
            routes.setUnmatchedURLHandler(nullptr);
        };
    };
    app->setUnmatchedURLHandler(unmatched("unmatched"));
    global->setUnmatchedURLHandler(unmatched("too"));

    EXPECT_TRUE(app->canRouteURL(url("app:/b")));
    EXPECT_FALSE(app->canRouteURL(std::nullopt));
    EXPECT_FALSE(app->routeURL(std::nullopt));
    EXPECT_FALSE(global->canRouteURL(url("/a/b")));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(app->routeURL(url("app:/a")));
    EXPECT_THAT(calls, ElementsAre("declines", "takes"));
    calls.clear();
    EXPECT_FALSE(app->routeURL(url("app:/b"), JLRRouteParameters()));
    EXPECT_THAT(calls,
                ElementsAre("declines", "also declines", "global",
                            "too JLRoutesGlobalRoutesScheme app:/b with", "unmatched app app:/b with"));
    EXPECT_FALSE(app->unmatchedURLHandler());
}

TEST_F(JLRoutesTest, AHandlerMayChangeTheRoutes) {
    auto app = JLRoutes::routesForScheme("app");
    const std::weak_ptr<JLRoutes> weak = app;
    // Owned by its handler alone: it removes routes once more when the handler dies.
    const auto owned = std::shared_ptr<int>(new int(0), [](const int* number) {
        JLRoutes::Class::removeRoute("/gone");
        delete number;
    });
    app->addRoute("/a", [this, weak, owned](const JLRRouteParameters&) {
        calls.push_back("first");
        weak.lock()->removeRouteWithPattern("/a");
        weak.lock()->removeAllRoutes();
        weak.lock()->addRoute("/a", 9, handler("added"));
        JLRoutes::unregisterAllRouteSchemes();
        JLRoutes::Class::routeURL(url("app:/a"));
        return false;
    });
    app->addRoute("/a", handler("second"));
    app.reset();
    EXPECT_TRUE(JLRoutes::Class::routeURL(url("app:/a")));
    EXPECT_THAT(calls, ElementsAre("first", "second"));
    EXPECT_TRUE(weak.expired());
}

struct FullDefinition : JLRRouteDefinition {
    using JLRRouteDefinition::JLRRouteDefinition;
    JLRRouteParameters defaultMatchParametersForRequest(const JLRRouteRequest&) const override {
        return {{"own", true}};
    }
    std::string className() const override { return "FullDefinition"; }
};

TEST_F(JLRoutesTest, SettingsHoldForTheWholeClass) {
    global->addRoute("/:a", handler("one"));
    global->addRoute("/:a/:b", handler("two"));
    EXPECT_TRUE(global->routeURL(url("http://h.x/a+b?c=d+e")));
    EXPECT_EQ(stringForKey(parameters, "a"), "a b");
    EXPECT_EQ(stringForKey(parameters, "c"), "d e");
    JLRoutes::setShouldDecodePlusSymbols(false);
    JLRoutes::setAlwaysTreatsHostAsPathComponent(true);
    JLRoutes::setDefaultRouteDefinitionClass(JLRRouteDefinitionOfClass<FullDefinition>);
    EXPECT_TRUE(global->routeURL(url("http://h.x/a+b?c=d+e")));
    EXPECT_EQ(stringForKey(parameters, "a"), "h.x");
    EXPECT_EQ(stringForKey(parameters, "b"), "a+b");
    EXPECT_EQ(stringForKey(parameters, "c"), "d+e");
    global->addRoute("/n", 1, handler("own"));
    EXPECT_TRUE(global->routeURL(url("/n")));
    EXPECT_EQ(parameters, (JLRRouteParameters{{"own", true}}));
    EXPECT_THAT(global->description(), testing::MatchesRegex("\\(\n    \"<FullDefinition 0x[0-9a-f]+> - /n "
                                                             "\\(priority: 1\\)\",\n    .*,\n    .*\n\\)"));
    global->removeAllRoutes();
    EXPECT_EQ(global->description(), "(\n)");
}

TEST_F(JLRoutesTest, StepsAreLoggedIfWanted) {
    const auto app = JLRoutes::routesForScheme("app");
    JLRoutes::Class::routeURL(url("app:/x"));
    EXPECT_THAT(log.lines, IsEmpty());

    JLRoutes::setVerboseLoggingEnabled(true);
    global->addRoute("/a(/b)", handler("optional"));
    app->addRoute("/:x", handler("declines", false));
    app->setShouldFallbackToGlobalRoutes(true);
    app->setUnmatchedURLHandler([](auto&, auto&, auto&) {});
    JLRoutes::Class::routeURL(url("app:/x"));
    JLRoutes::Class::canRouteURL(url("app:/x"));
    Strings lines;
    for (const std::string& line : log.lines)
        lines.push_back(std::regex_replace(line, std::regex("0x[0-9a-f]+"), "0x"));
    EXPECT_THAT(
        lines,
        ElementsAre(
            "[JLRoutes]: Automatically created optional route: <JLRRouteDefinition 0x> - /a/b (priority: 0)",
            "[JLRoutes]: Automatically created optional route: <JLRRouteDefinition 0x> - /a (priority: 0)",
            "[JLRoutes]: Trying to route URL app:/x",
            "[JLRoutes]: Successfully matched <JLRRouteDefinition 0x> - /:x (priority: 0)",
            "[JLRoutes]: Match parameters are {\n    JLRoutePattern = \"/:x\";\n    JLRouteScheme = app;\n   "
            " JLRouteURL = \"app:/x\";\n    x = x;\n}",
            "[JLRoutes]: Could not find a matching route", "[JLRoutes]: Falling back to global routes...",
            "[JLRoutes]: Trying to route URL app:/x", "[JLRoutes]: Could not find a matching route",
            "[JLRoutes]: Falling back to the unmatched URL handler", "[JLRoutes]: Trying to route URL app:/x",
            "[JLRoutes]: Successfully matched <JLRRouteDefinition 0x> - /:x (priority: 0)"));
}

}  // namespace
