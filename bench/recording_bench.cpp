// What a recording costs the thread that draws, and whether a film uses both cores: at 1280x720, on the
// rasteriser that is there. Reading back is named by itself: no recorder of this kind can do without it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>
#include <unistd.h>
#include <vector>

#include "app/ios_app_delegate.h"
#include "hosts/headless/headless_host.h"
#include "hosts/native/film_capture.h"
#include "hosts/native/film_file.h"
#include "main_screen/game_view_controller.h"
#include "platform/foundation/random_source.h"
#include "tests/support/seen_tour.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kFrames = 90;
constexpr double kInterval = 1.0 / 30;

double millisecondsOf(const std::function<void()>& work) {
    const auto begun = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
}

/// All threads' time on the cores so far.
double millisecondsOnCores() {
    return 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

struct Cost {
    double took;     ///< milliseconds
    double onCores;  ///< milliseconds, of all threads
};

Cost costOf(const std::function<void()>& work) {
    const double before = millisecondsOnCores();
    const double took = millisecondsOf(work);
    return {took, millisecondsOnCores() - before};
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

/// Takes frames and throws them away: reading back alone.
class ReadBack : public ScreenCapture {
  public:
    bool isAvailable() const override { return true; }
    void start(Started) override {}
    void stop(Stopped) override {}
    void setInterruptionHandler(Stopped) override {}
    std::unique_ptr<CapturedFrame> frameToFill(double) override {
        _begun = Clock::now();
        return _frame ? std::move(_frame) : std::make_unique<CapturedFrame>();
    }
    void takeFrame(std::unique_ptr<CapturedFrame> frame) override {
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - _begun).count());
        _frame = std::move(frame);
    }
    std::vector<double> times;

  private:
    std::unique_ptr<CapturedFrame> _frame;
    Clock::time_point _begun;
};

/// Frames at thirty a second: the time that each takes on this thread, pauses left out.
double frameTime(HeadlessHost& host, const std::shared_ptr<ScreenCapture>& capture) {
    setSharedScreenCapture(capture);
    std::vector<double> times;
    for (int i = 0; i < kFrames; ++i) {
        const auto due = Clock::now() + std::chrono::duration<double>(kInterval);
        times.push_back(millisecondsOf([&host] { host.step(kInterval); }));
        std::this_thread::sleep_until(due);
    }
    return median(times);
}

void measureDisplay(HeadlessHost& host, const std::string& folder) {
    const auto readBack = std::make_shared<ReadBack>();
    const auto film = std::make_shared<FilmCapture>(FilmCapture::Folders{folder + "/clips", folder});
    film->start([](const std::string&) {});
    std::vector<double> plain;
    std::vector<double> reading;
    std::vector<double> filming;
    for (int round = 0; round < 3; ++round) {
        plain.push_back(frameTime(host, nullptr));
        reading.push_back(frameTime(host, readBack));
        filming.push_back(frameTime(host, film));
    }
    setSharedScreenCapture(nullptr);
    std::printf("reading back: %.2f ms (bound 2)\n", median(readBack->times));
    std::printf(
        "a frame: %.2f ms, with reading back %.2f ms, filmed %.2f ms: %.3f times as long as with reading "
        "back (bound 1.1), %lld dropped\n",
        median(plain), median(reading), median(filming), median(filming) / median(reading),
        static_cast<long long>(film->droppedFrames()));
}

/// Keeps every frame.
class KeptFrames : public ReadBack {
  public:
    std::unique_ptr<CapturedFrame> frameToFill(double) override { return std::make_unique<CapturedFrame>(); }
    void takeFrame(std::unique_ptr<CapturedFrame> frame) override { frames.push_back(std::move(frame)); }
    std::vector<std::unique_ptr<CapturedFrame>> frames;
};

/// From the top, the same way each time.
void fly(HeadlessHost& host) {
    const auto window = host.application().delegate()->window();
    auto& screen = dynamic_cast<GameViewController&>(*window->rootViewController());
    RandomSource::shared().seed(3);
    screen.showMenu(false);
    screen.resetScreen(nullptr);
    screen.hideMenu(false);
    for (int i = 0; i < kFrames; ++i)
        host.step(kInterval);
}

/// The larger part is a bound where the other one runs on cores that it leaves idle. Where each fills them
/// all, no film is done before the cores have done the work of both.
void printFilm(Cost drawing, Cost encoding, Cost both) {
    const double larger = std::max(drawing.took, encoding.took);
    const double work =
        (drawing.onCores + encoding.onCores) / std::max(std::thread::hardware_concurrency(), 1U);
    std::printf(
        "a film of %d frames: drawing %.0f ms (%.2f cores), encoding %.0f ms (%.2f cores), both at once "
        "%.0f ms (%.2f cores)\n",
        kFrames, drawing.took, drawing.onCores / drawing.took, encoding.took,
        encoding.onCores / encoding.took, both.took, both.onCores / both.took);
    std::printf(
        "both: %.2f times the larger, %.2f times the larger of that and the work of both on all cores "
        "(bound 1.15)\n",
        both.took / larger, both.took / std::max(larger, work));
}

void measureFilm(HeadlessHost& host, const std::string& folder) {
    const auto drawn = std::make_shared<KeptFrames>();
    setSharedScreenCapture(drawn);
    const Cost drawing = costOf([&host] { fly(host); });
    setSharedScreenCapture(nullptr);
    FilmFile alone;
    alone.open(folder + "/alone.mp4", 30);
    const Cost encoding = costOf([&] {
        for (const auto& shown : drawn->frames) {
            const auto frame = alone.frameToFill(0);
            if (!frame) return;
            *frame = *shown;
            alone.takeFrame(std::make_unique<CapturedFrame>(std::move(*frame)));
        }
        alone.finish();
    });
    drawn->frames.clear();
    const Cost both = costOf([&] {
        const auto film = std::make_shared<FilmFile>();
        film->open(folder + "/both.mp4", 30);
        setSharedScreenCapture(film);
        fly(host);
        film->finish();
        setSharedScreenCapture(nullptr);
    });
    printFilm(drawing, encoding, both);
}

}  // namespace

int main() {
    char name[] = "/tmp/zentaro-recording-bench-XXXXXX";
    const std::string folder = ::mkdtemp(name);
    {
        HeadlessHost host({{1280, 720}}, [] { return std::make_shared<iOSAppDelegate>(); });
        countTourAsSeen();
        if (!host.launch()) return 1;
        host.step();
        measureDisplay(host, folder);
        measureFilm(host, folder);
    }
    std::filesystem::remove_all(folder);
}
