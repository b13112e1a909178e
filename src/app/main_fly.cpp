// The start for a flight: the app on the headless host, left alone with its autopilot on the virtual clock.
// Without pictures to write, frames between flights are not drawn: the pilot draws what it looks at.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/flight_statistics.h"
#include "app/ios_app_delegate.h"
#include "app/main_headless.h"
#include "app/main_opening.h"
#include "app/main_starts.h"
#include "hosts/native/film_file.h"
#include "hosts/native/picture_file_writer.h"
#include "hosts/native/process_usage.h"
#include "platform/foundation/ca_display_link.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_user_defaults.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// Numbered pictures in a folder that holds none yet.
class FrameFolder {
  public:
    /// Makes the folder if there is none. Empty for success, else the mistake.
    std::string open(const std::string& path) {
        std::error_code error;
        fs::create_directories(path, error);
        if (!fs::is_directory(path)) {
            return "cannot make the folder " + path + ": " +
                   (error ? error.message() : std::string("a file of that name is in the way"));
        }
        fs::directory_iterator file(path, error);
        for (; !error && file != fs::directory_iterator(); file.increment(error)) {
            const std::string name = file->path().filename().string();
            if (name.starts_with("frame_") && name.ends_with(".png")) {
                return path + " holds frames already; name a new folder";
            }
        }
        if (error) return "cannot read the folder " + path + ": " + error.message();
        _path = path;
        return {};
    }
    bool isOpen() const { return !_path.empty(); }

    std::string write(const CGImage& picture) {
        char name[32];
        std::snprintf(name, sizeof name, "frame_%05lld.png", static_cast<long long>(++_frame));
        PictureFileWriter file;
        if (!file.open((fs::path(_path) / name).string(), picture.width(), picture.height()))
            return file.error();
        for (int32_t y = 0; y < picture.height(); ++y) {
            const auto row = picture.row(y);
            _rgb.clear();
            for (std::size_t x = 0; x + 3 < row.size(); x += 4)
                _rgb.insert(_rgb.end(), row.begin() + static_cast<std::ptrdiff_t>(x),
                            row.begin() + static_cast<std::ptrdiff_t>(x + 3));
            if (!file.writeRows(_rgb)) return file.error();
        }
        return file.finish() ? std::string() : file.error();
    }

  private:
    std::string _path;
    int64_t _frame = 0;
    std::vector<uint8_t> _rgb;
};

/// The ride from its first frame to its last.
class Ride {
  public:
    Ride(HeadlessHost& host, std::shared_ptr<GameViewController> screen, const CommandLineOptions& options)
        : _host(host), _screen(std::move(screen)), _options(*options.flight), _verbose(options.verbose) {
        NSRunLoop::currentRunLoop().setRefreshInterval(NSRunLoop::refreshIntervalOf(_options.fps));
        _screen->setFlightObserver([this](const auto& flight) { print(flight); });
        _screen->hideMenu(false);
    }
    ~Ride() {
        _screen->setFlightObserver({});
        NSRunLoop::currentRunLoop().setRefreshInterval(NSRunLoop::defaultRefreshInterval);
    }
    Ride(const Ride&) = delete;
    Ride& operator=(const Ride&) = delete;

    /// Empty for success, else the mistake.
    std::string fly(FrameFolder& folder, FilmFile& film) {
        const auto frames = std::max<int64_t>(1, std::llround(_options.seconds * _options.fps));
        const Clock::time_point begun = Clock::now();
        for (int64_t frame = 0; frame < frames; ++frame) {
            if (frame == int64_t{60} * _options.fps) _afterAMinute = currentProcessUsage();
            _host.step(frameSeconds());
            if (film.isOpen() && film.hasFailed()) break;
            if (!folder.isOpen()) continue;
            if (auto mistake = folder.write(*_host.screenPicture()); !mistake.empty()) return mistake;
        }
        if (film.isOpen()) {
            if (auto mistake = film.finish(); !mistake.empty()) return mistake;
        }
        const double took = std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
        std::printf(
            "%s%lld frames%s, %.3f ms each\n", _statistics.summary().c_str(), static_cast<long long>(frames),
            folder.isOpen() || film.isOpen() ? "" : " without drawing", took / static_cast<double>(frames));
        if (_verbose) printUsage();
        return {};
    }

  private:
    double frameSeconds() const { return 1.0 / _options.fps; }

    void print(const GameViewController::Flight& flight) {
        _statistics.add(flight);
        const char* reason = reasonOf(flight.bounce);
        std::printf("%9.2f s  %s%s%s\n", _screen->timeSinceFirstResume(),
                    _screen->coordinatesForDeeplink(flight.to).c_str(), *reason == '\0' ? "" : "  ", reason);
        std::fflush(stdout);
    }

    void printUsage() const {
        const auto print = [](const char* when, const ProcessUsage& usage) {
            if (usage.residentBytes == 0) return;
            std::printf("%s: %.1f MiB resident, %lld open files\n", when,
                        static_cast<double>(usage.residentBytes) / (1024 * 1024),
                        static_cast<long long>(usage.openFiles));
        };
        print("after a minute", _afterAMinute);
        print("at the end", currentProcessUsage());
    }

    HeadlessHost& _host;
    std::shared_ptr<GameViewController> _screen;
    const FlightOptions& _options;
    bool _verbose;
    FlightStatistics _statistics;
    ProcessUsage _afterAMinute;
};

/// The flight's settings take the place of saved ones, before the app reads them.
void setLook(const FlightOptions& options) {
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    if (options.fractalType) defaults.setInteger(*options.fractalType, "fractalType");
    if (options.palette) defaults.setInteger(*options.palette, "fractalColoring");
    if (options.cycling) defaults.setInteger(*options.cycling, "fractalColorCycling");
}

/// What the lines on stdout say already.
bool isAboutAFlight(std::string_view line) {
    return line.starts_with("http://") || line.starts_with("no ") || line.starts_with("Failed precision");
}

int fly(HeadlessHost& host, HeldLog& log, const CommandLineOptions& options,
        const std::optional<HostEvent>& opening) {
    const auto [screen, failure] = launchMainScreen(host, log);
    if (!screen) return failStart(failure);
    if (!screen->renderedImage()) return failStart("the GPU cannot draw a picture of this size");
    const auto film = std::make_shared<FilmFile>();
    if (const std::string& file = options.flight->filmFile; !file.empty()) {
        if (const auto mistake = film->open(file, options.flight->fps); !mistake.empty())
            return failStart(mistake);
        setSharedScreenCapture(film);
    }
    FrameFolder folder;
    if (!options.flight->framesFolder.empty()) {
        if (const auto mistake = folder.open(options.flight->framesFolder); !mistake.empty())
            return failStart(mistake);
    }
    log.release();
    open(host, opening, options.verbose);
    if (options.flight->palette) screen->setFractalColoring(*options.flight->palette);
    if (!options.verbose) {
        NSLogSetSink([](std::string_view line) {
            if (isAboutAFlight(line)) return;
            std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
        });
    }
    Ride ride(host, screen, options);
    const std::string mistake = ride.fly(folder, *film);
    setSharedScreenCapture(nullptr);
    return mistake.empty() ? 0 : failStart(mistake);
}

}  // namespace

int startFlight(const CommandLineOptions& options) {
    const auto [opening, unopened] = openingOf(options);
    if (!unopened.empty()) return failStart(unopened);
    const auto [settings, mistake] = readOnlySettings(options);
    if (!mistake.empty()) return failStart(mistake);
    const bool showsFrames = !options.flight->framesFolder.empty() || !options.flight->filmFile.empty();
    const HeadlessHost::Options hostOptions{
        options.size, options.scale.value_or(1), settings, {}, showsFrames};
    HeldLog log(!options.verbose);
    auto host =
        std::make_unique<HeadlessHost>(hostOptions, [] { return std::make_shared<iOSAppDelegate>(); });
    setLook(*options.flight);
    const int status = fly(*host, log, options, opening);
    // What the app has to say on leaving concerns nobody who asked for a flight.
    if (!options.verbose) NSLogSetSink([](std::string_view) {});
    host = nullptr;
    if (options.verbose && status == 0) {
        std::printf("left behind: %zu tweens, %zu display links\n", GSTween::livingTweens(),
                    NSRunLoop::currentRunLoop().displayLinkCount());
    }
    return status;
}
