// What it costs to route a link: against cutting the same text at its slashes, against the length of the list
// of routes, of the URL, of its query and of a pattern. Medians of interleaved runs in one process.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "platform/foundation/ns_url.h"
#include "routing/jl_routes.h"
#include "routing/jlr_parsing_utilities.h"

namespace {

constexpr int kRuns = 15;
const std::string kPattern = "/:type/:x1/:y1/:x2/:y2";
const std::string kLink = "http://zentaro.example/mandelbrot/-2.000000/-1.500000/1.000000/1.500000";
/// Ten times as much may take this many times as long: linear, and room for caches and noise.
constexpr double kMostForTenfold = 25;
/// Three optional parts more in ten may make each expansion this many times as expensive.
constexpr double kMostForThreeParts = 3;

volatile std::size_t sink = 0;

/// Nanoseconds of one call.
double timeOf(int calls, const std::function<void()>& call) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i)
        call();
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
    return took.count() / calls;
}

struct Measured {
    int calls;
    std::function<void()> call;
    std::vector<double> times = {};

    double median() const {
        std::vector<double> sorted = times;
        std::ranges::sort(sorted);
        return sorted[sorted.size() / 2];
    }
};

void measure(const std::vector<Measured*>& all) {
    for (int run = 0; run < kRuns; ++run) {
        for (Measured* each : all)
            each->times.push_back(timeOf(each->calls, each->call));
    }
}

void splitPlainly() {
    std::vector<std::string> components;
    std::size_t begin = 0;
    for (std::size_t slash = kLink.find('/'); slash != std::string::npos; slash = kLink.find('/', begin)) {
        components.push_back(kLink.substr(begin, slash - begin));
        begin = slash + 1;
    }
    components.push_back(kLink.substr(begin));
    sink = sink + components.size();
}

std::function<void()> routing(JLRoutes& routes, const std::string& link) {
    return [&routes, link] { sink = sink + (routes.routeURL(NSURL::URLWithString(link)) ? 1U : 0U); };
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string linkWithQuery(int items, bool sameName) {
    std::string link = kLink + "?k=v";
    for (int i = 1; i < items; ++i)
        link += "&k" + (sameName ? std::string() : std::to_string(i)) + "=v";
    return link;
}

bool growsLinearly(const char* what, Measured& shortOne, Measured& longOne) {
    measure({&shortOne, &longOne});
    const double ratio = longOne.median() / shortOne.median();
    std::printf("%s: tenfold takes %.1f times as long (at most %g), %.2f ms\n", what, ratio, kMostForTenfold,
                longOne.median() / 1e6);
    return ratio <= kMostForTenfold;
}

bool isLinearInTexts(JLRoutes& one) {
    constexpr int few = 2000;
    const auto grows = [&one](const char* what, const std::string& small, const std::string& large) {
        Measured shortOne{50, routing(one, small)};
        Measured longOne{5, routing(one, large)};
        return growsLinearly(what, shortOne, longOne);
    };
    const bool path = grows("path components", repeated("/a", few), repeated("/a", 10 * few));
    const bool value = grows("escapes in a value", "/m/0/0/1/" + repeated("%20", few),
                             "/m/0/0/1/" + repeated("%20", 10 * few));
    const bool items = grows("query items", linkWithQuery(few, false), linkWithQuery(10 * few, false));
    const bool sameItems =
        grows("items of one name", linkWithQuery(few, true), linkWithQuery(10 * few, true));
    return path && value && items && sameItems;
}

/// Nothing is kept of the patterns: they are expanded, or found to stand for too many.
bool isLinearInParts() {
    constexpr int few = 2000;
    const auto expansion = [](const std::string& pattern) {
        return [pattern] {
            sink = sink + JLRParsingUtilities::expandOptionalRoutePatternsForPattern(pattern).size();
        };
    };
    const auto grows = [&expansion](const char* what, const std::string& small, const std::string& large) {
        Measured shortOne{50, expansion(small)};
        Measured longOne{5, expansion(large)};
        return growsLinearly(what, shortOne, longOne);
    };
    const auto required = [](int count) {
        std::string pattern;
        for (int i = 0; i < count; ++i)
            pattern += "/r" + std::to_string(i) + "()";
        return pattern;
    };
    const bool refused = grows("refused optional parts", repeated("(/a)", few), repeated("(/a)", 10 * few));
    const bool kept = grows("required parts", required(few), required(10 * few));
    // 2^7 and 2^10 expansions: eight times as many, 10/7 as long, sorted.
    Measured seven{500, expansion(kPattern + repeated("(/ab)", 7))};
    Measured ten{50, expansion(kPattern + repeated("(/ab)", 10))};
    measure({&seven, &ten});
    const double perExpansion = ten.median() / seven.median() / 8;
    std::printf("each of 1024 expansions takes %.1f times as long as each of 128 (at most %g)\n",
                perExpansion, kMostForThreeParts);
    return refused && kept && perExpansion <= kMostForThreeParts;
}

/// The app's route behind others that do not match: the worst place.
void addRoutesThatDiffer(JLRoutes& routes, int count) {
    for (int i = 0; i < count; ++i)
        routes.addRoute("/route" + std::to_string(i) + "/:x1/:y1/:x2/:y2", nullptr);
    routes.addRoute(kPattern, [](const JLRRouteParameters& parameters) { return !parameters.empty(); });
}

}  // namespace

int main() {
    const auto one = JLRoutes::routesForScheme("one");
    const auto hundred = JLRoutes::routesForScheme("hundred");
    const auto thousand = JLRoutes::routesForScheme("thousand");
    addRoutesThatDiffer(*one, 0);
    addRoutesThatDiffer(*hundred, 99);
    addRoutesThatDiffer(*thousand, 999);

    Measured split{20000, splitPlainly};
    Measured parsed{20000, [] { sink = sink + NSURL::URLWithString(kLink)->absoluteString().size(); }};
    Measured ofOne{5000, routing(*one, kLink)};
    Measured ofThousand{1000, routing(*thousand, kLink)};
    measure({&split, &parsed, &ofOne, &ofThousand});
    std::printf("plain split %.0f ns, URL %.0f ns, routed %.0f ns (%.1f splits), among 1000 routes %.0f ns\n",
                split.median(), parsed.median(), ofOne.median(), ofOne.median() / split.median(),
                ofThousand.median());
    const double perRoute = (ofThousand.median() - ofOne.median()) / 999;
    std::printf(
        "%.0f links a second with one route, %.0f with 1000 (%.1f times as long); each further route "
        "costs %.1f %% of the first\n",
        1e9 / ofOne.median(), 1e9 / ofThousand.median(), ofThousand.median() / ofOne.median(),
        100 * perRoute / ofOne.median());
    Measured ofHundred{1000, routing(*hundred, kLink)};
    Measured ofThousandAgain{1000, routing(*thousand, kLink)};
    const bool isLinear = growsLinearly("routes before the one", ofHundred, ofThousandAgain);
    return isLinear && isLinearInTexts(*one) && isLinearInParts() && perRoute < ofOne.median() ? 0 : 1;
}
