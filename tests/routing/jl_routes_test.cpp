// Registries: the order of routes, who takes a URL, what stays untouched.
// Each handler writes its name into one list, so that order and absence of calls show.
#include "routing/jl_routes.h"

#include <gmock/gmock.h>

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

    JLRoutes::Class::removeRoute("/c");
    JLRoutes::Class::removeRoute("/a(/b)");
    EXPECT_THAT(patterns(), ElementsAre("/e", "/a/b", "/a", "/d", "/c", "/f(/g)"));
    EXPECT_TRUE(global->routeURL(url("/c")));
    EXPECT_THAT(calls, ElementsAre("c again"));
    global->addRoute("/a", handler("equal"));
    global->removeRoute(*global->routes()[2]->copy());
    EXPECT_THAT(patterns(), ElementsAre("/e", "/a/b", "/d", "/c", "/f(/g)"));
    global->removeAllRoutes();
    EXPECT_FALSE(JLRoutes::Class::canRouteURL(url("/d")));
    EXPECT_THAT(log.lines, IsEmpty());

    std::string tooMany;
    for (int i = 0; i < 40; ++i)
        tooMany += "(/a)";
    global->addRoute(tooMany, handler(""));
    EXPECT_THAT(patterns(), IsEmpty());
    EXPECT_EQ(log.lines.size(), 1U);
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
    } cases[] = {{"app:/a", {"app"}}, {"other:/a", {"global"}}, {"/a", {"global"}},
                 {"app:/only", {}},   {"APP:/a", {"global"}},   {"not a url", {}}};
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

    JLRoutes::unregisterRouteScheme("app");
    EXPECT_TRUE(JLRoutes::Class::routeURL(url("app:/a")));
    EXPECT_EQ(calls.back(), "global");
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

TEST_F(JLRoutesTest, SettingsHoldForTheWholeClass) {
    global->addRoute("/:a", handler("one"));
    global->addRoute("/:a/:b", handler("two"));
    EXPECT_TRUE(global->routeURL(url("http://h.x/a+b?c=d+e")));
    EXPECT_EQ(stringForKey(parameters, "a"), "a b");
    EXPECT_EQ(stringForKey(parameters, "c"), "d e");
    JLRoutes::setShouldDecodePlusSymbols(false);
    JLRoutes::setAlwaysTreatsHostAsPathComponent(true);
    EXPECT_TRUE(global->routeURL(url("http://h.x/a+b?c=d+e")));
    EXPECT_EQ(stringForKey(parameters, "a"), "h.x");
    EXPECT_EQ(stringForKey(parameters, "b"), "a+b");
    EXPECT_EQ(stringForKey(parameters, "c"), "d+e");
}

TEST_F(JLRoutesTest, StepsAreLoggedIfWanted) {
    global->routeURL(url("/x"));
    EXPECT_THAT(log.lines, IsEmpty());
    JLRoutes::setVerboseLoggingEnabled(true);
    global->routeURL(url("/x"));
    EXPECT_THAT(log.lines, ElementsAre("[JLRoutes]: Trying to route URL /x",
                                       "[JLRoutes]: Could not find a matching route"));
}

}  // namespace
