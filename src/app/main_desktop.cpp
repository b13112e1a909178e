// The start in a window, and what happens where there is no display.
// A machine without a display still gets its picture, as long as nobody asked for a window.
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>

#include "app/ios_app_delegate.h"
#include "app/main_starts.h"
#include "hosts/desktop/desktop_host.h"
#include "hosts/desktop/link_socket.h"
#include "hosts/native/file_preferences_store.h"
#include "hosts/native/native_services.h"

namespace {

constexpr const char* kPictureInstead = "zentaro.png";
constexpr std::chrono::milliseconds kPatienceWithTheOther(1500);

int drawPictureInstead(const std::string& why) {
    std::fprintf(stderr, "zentaro: %s; drawing %s instead\n", why.c_str(), kPictureInstead);
    CommandLineOptions picture;
    picture.snapshot.emplace().file = kPictureInstead;
    return startSnapshot(picture);
}

/// Null, and settings in memory, for a user without a home.
std::shared_ptr<PreferencesStore> settingsOf(const CommandLineOptions& options) {
    const auto file = options.defaultsFile.empty() ? FilePreferencesStore::defaultPath()
                                                   : std::optional(options.defaultsFile);
    return file ? std::make_shared<FilePreferencesStore>(*file) : nullptr;
}

DesktopResult runInWindow(const CommandLineOptions& options, std::chrono::steady_clock::time_point begun) {
    const NativeServices services(settingsOf(options));
    return runDesktop({options.size, options.scale, options.fullscreen, ZENTARO_BUNDLE_IDENTIFIER,
                       options.link, linkSocketFolder().value_or(""), options.verbose, begun},
                      [] { return std::make_shared<iOSAppDelegate>(); });
}

/// Whether an app that runs already has it.
bool isHandedOver(const std::string& link) {
    const auto folder = linkSocketFolder();
    if (!folder) return false;
    const HandOver result = handLinkOver(*folder, link, kPatienceWithTheOther);
    if (result == HandOver::stuck)
        std::fputs("zentaro: the app that runs does not answer; opening another window\n", stderr);
    return result == HandOver::taken;
}

}  // namespace

int startDesktop(const CommandLineOptions& options, std::chrono::steady_clock::time_point begun) {
    if (!options.link.empty() && !options.startsAnother && isHandedOver(options.link)) return 0;
    const DesktopResult result = runInWindow(options, begun);
    if (result.end == DesktopEnd::closed) return 0;
    if (result.end == DesktopEnd::noDisplay && options.plainStart) return drawPictureInstead(result.why);
    return failStart(result.why);
}
