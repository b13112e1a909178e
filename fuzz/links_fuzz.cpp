// Any bytes as a link that somebody hands over, all the way to the view that it names.
// Whatever it is, it is refused in one line, leads nowhere, or names a view that the app can show and link to
// again.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "app/linked_view.h"
#include "app/shared_link.h"
#include "fuzz/fuzz_check.h"
#include "main_screen/fractal_bounds.h"
#include "platform/foundation/file_url.h"
#include "platform/foundation/ns_log.h"
#include "routing/jl_routes.h"

namespace {

std::optional<LinkedView> opened;

const bool isRouted = [] {
    NSLogSetSink([](std::string_view) {});
    JLRoutes::Class::addRoute(linkedViewRoute, [](const JLRRouteParameters& parameters) {
        opened = linkedView(parameters);
        return true;
    });
    return true;
}();

bool isSide(double side) {
    return side > 0 && side < 10;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto path = pathOfFileURL(text)) FUZZ_CHECK(pathOfFileURL(fileURLOfPath(*path)) == path);
    const auto link = readSharedLink(text);
    if (const auto* mistake = std::get_if<LinkMistake>(&link)) {
        FUZZ_CHECK(mistake->line.size() < 300 && mistake->line.find_first_of("\n\r") == std::string::npos);
        return 0;
    }
    opened.reset();
    const bool routed = JLRoutes::Class::routeURL(std::get<NSURL>(link));
    FUZZ_CHECK(routed || !opened);
    if (!opened) return 0;
    const CGRect view = opened->bounds;
    FUZZ_CHECK(isSide(view.size.width) && isSide(view.size.height));
    FUZZ_CHECK(std::isfinite(view.origin.x) && std::isfinite(view.origin.y));
    FUZZ_CHECK(opened->fractalType == FractalType::mandelbrot || opened->fractalType == FractalType::julia);

    const int32_t type = opened->fractalType;
    const auto again = readSharedLink(deepLinkPath(type, view));
    FUZZ_CHECK(std::holds_alternative<NSURL>(again));
    FUZZ_CHECK(JLRoutes::Class::routeURL(std::get<NSURL>(again)));
    // Six decimals lose small views, and nothing else.
    FUZZ_CHECK(opened ? opened->fractalType == type
                      : view.size.width < 1e-3 || view.size.height < 1e-3 || std::abs(view.origin.x) > 1 ||
                            std::abs(view.origin.y) > 1 || view.size.width > 9.99 || view.size.height > 9.99);
    return 0;
}
