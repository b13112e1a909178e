// The start in a window, and what happens where there is no display.
// A machine without a display still gets its picture and a film, as long as nobody asked for a window.
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

#include "app/ios_app_delegate.h"
#include "app/main_opening.h"
#include "app/main_starts.h"
#include "hosts/desktop/desktop_host.h"
#include "hosts/desktop/link_socket.h"
#include "hosts/native/environment_locale.h"
#include "hosts/native/file_preferences_store.h"
#include "hosts/native/film_capture.h"
#include "hosts/native/native_http_client.h"
#include "hosts/native/native_services.h"
#include "platform/foundation/ns_locale.h"

namespace {

constexpr const char* kPictureInstead = "zentaro.png";
constexpr const char* kFilmInstead = "zentaro.mp4";
constexpr double kSecondsInstead = 20;
constexpr std::chrono::milliseconds kPatienceWithTheOther(1500);

int makeFilesInstead(const std::string& why) {
    std::fprintf(stderr, "zentaro: %s; drawing %s and flying %.0f seconds into %s instead\n", why.c_str(),
                 kPictureInstead, kSecondsInstead, kFilmInstead);
    CommandLineOptions picture;
    picture.snapshot.emplace().file = kPictureInstead;
    if (const int status = startSnapshot(picture); status != 0) return status;
    CommandLineOptions film;
    film.flight.emplace().seconds = kSecondsInstead;
    film.flight->fps = 30;
    film.flight->filmFile = kFilmInstead;
    return startFlight(film);
}

/// Null, and settings in memory, for a user without a home.
std::shared_ptr<PreferencesStore> settingsOf(const CommandLineOptions& options) {
    const auto file = options.defaultsFile.empty() ? FilePreferencesStore::defaultPath()
                                                   : std::optional(options.defaultsFile);
    return file ? std::make_shared<FilePreferencesStore>(*file) : nullptr;
}

/// The recorder and the network, for as long as the window is there, and the user's languages.
class WindowServices {
  public:
    WindowServices() {
        setSharedScreenCapture(std::make_shared<FilmCapture>(FilmCapture::Folders::ofUser()));
        setSharedHTTPClient(std::make_shared<NativeHTTPClient>());
        NSLocale::setCurrentLocale(localeOfEnvironment());
    }
    ~WindowServices() {
        setSharedHTTPClient(nullptr);
        setSharedScreenCapture(nullptr);
    }
    WindowServices(const WindowServices&) = delete;
    WindowServices& operator=(const WindowServices&) = delete;
};

DesktopResult runInWindow(const CommandLineOptions& options, std::optional<HostEvent> opening,
                          std::chrono::steady_clock::time_point begun) {
    const NativeServices services(settingsOf(options));
    const WindowServices windowServices;
    return runDesktop({options.size, options.scale, options.fullscreen, ZENTARO_BUNDLE_IDENTIFIER,
                       std::move(opening), linkSocketFolder().value_or(""), options.verbose, begun},
                      [verbose = options.verbose] {
                          auto delegate = std::make_shared<iOSAppDelegate>();
                          if (verbose) delegate->setVerbose();
                          return delegate;
                      });
}

/// Whether an app that runs already has it.
bool isHandedOver(const std::string& text) {
    const auto folder = linkSocketFolder();
    if (!folder || text.empty()) return false;
    const HandOver result = handLinkOver(*folder, text, kPatienceWithTheOther);
    if (result == HandOver::stuck)
        std::fputs("zentaro: the app that runs does not answer; opening another window\n", stderr);
    return result == HandOver::taken;
}

}  // namespace

int startDesktop(const CommandLineOptions& options, std::chrono::steady_clock::time_point begun) {
    auto [opening, mistake] = openingOf(options);
    if (!mistake.empty()) return failStart(mistake);
    if (opening && !options.startsAnother && isHandedOver(handedOverText(options))) return 0;
    const DesktopResult result = runInWindow(options, std::move(opening), begun);
    if (result.end == DesktopEnd::closed) return 0;
    if (result.end == DesktopEnd::noDisplay && options.plainStart) return makeFilesInstead(result.why);
    return failStart(result.why);
}
