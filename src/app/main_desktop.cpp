// The start in a window, and what happens where there is no display.
// A machine without a display still gets its picture, as long as nobody asked for a window.
#include <cstdio>
#include <memory>
#include <optional>

#include "app/ios_app_delegate.h"
#include "app/main_starts.h"
#include "hosts/desktop/desktop_host.h"
#include "hosts/native/file_preferences_store.h"
#include "hosts/native/native_services.h"

namespace {

constexpr const char* kPictureInstead = "zentaro.png";

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
    return runDesktop({options.size, options.scale, options.fullscreen, options.verbose, begun},
                      [] { return std::make_shared<iOSAppDelegate>(); });
}

}  // namespace

int startDesktop(const CommandLineOptions& options, std::chrono::steady_clock::time_point begun) {
    const DesktopResult result = runInWindow(options, begun);
    if (result.end == DesktopEnd::closed) return 0;
    if (result.end == DesktopEnd::noDisplay && options.plainStart) return drawPictureInstead(result.why);
    return failStart(result.why);
}
