// The start for one picture: the app on the headless host, drawn in bands straight into the file.
// Settings are read at most, never written; the file appears whole or not at all.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/ios_app_delegate.h"
#include "app/main_headless.h"
#include "app/main_opening.h"
#include "app/main_starts.h"
#include "hosts/headless/overlay_bands.h"
#include "hosts/native/picture_file_writer.h"
#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_screen.h"

namespace {

using Clock = std::chrono::steady_clock;

/// Where the command line says nothing, the view stays the app's own start.
void setView(GameViewController& screen, const SnapshotOptions& options) {
    if (options.fractalType) screen.setFractalType(*options.fractalType);
    if (options.palette) screen.shader()->setFractalColoring(*options.palette);
    if (!options.view) return;
    const auto& [x1, y1, x2, y2] = *options.view;
    screen.jumpTox1(x1, y1, x2, y2, screen.fractalType(), screen.shader()->fractalColoring());
}

/// The screen is held in landscape, a picture of the fractal alone need not be: where it is higher than wide
/// it shows more above and below of what a square would.
void fillUprightPicture(GameViewController& screen, const UIWindow& window) {
    const CGSize size = window.bounds().size;
    if (size.height <= size.width) return;
    screen.view()->setFrame(window.bounds());
    const CGRect square = screen.shader()->fractalBounds();
    const CGFloat width = square.size.height;
    const CGFloat height = width * size.height / size.width;
    screen.shader()->setFractalBounds(
        CGRectMake(CGRectGetMidX(square) - 0.5 * width, CGRectGetMidY(square) - 0.5 * height, width, height));
}

/// The picture's rows as they become complete: the fractal where its view lies on the screen, black beside
/// it, the toolbar above.
class ScreenRows {
  public:
    ScreenRows(PictureFileWriter& file, GLKView& view, UIWindow& window, bool withOverlay)
        : _file(file), _withOverlay(withOverlay), _scale(UIScreen::mainScreen().scale()) {
        const CGRect place = view.convertRectToWindow(view.bounds());
        const CGSize screen = UIScreen::mainScreen().bounds().size;
        _width = pixelsForPoints(screen.width, _scale);
        _height = pixelsForPoints(screen.height, _scale);
        _left = pixelsForPoints(CGRectGetMinX(place), _scale);
        _top = pixelsForPoints(CGRectGetMinY(place), _scale);
        _fractalBytes = static_cast<std::size_t>(view.drawableWidth()) * 3;
        _overlay.emplace(window, _width, _scale);
    }

    int32_t width() const { return _width; }
    int32_t height() const { return _height; }
    /// Empty while all is well.
    const std::string& mistake() const { return _mistake; }

    bool begin() { return writeBlack(_top); }
    bool write(std::span<const uint8_t> fractal, int32_t count) {
        _rows.assign(rowBytes() * static_cast<std::size_t>(count), 0);
        for (std::size_t y = 0; y < static_cast<std::size_t>(count); ++y) {
            const auto row = fractal.subspan(y * _fractalBytes, _fractalBytes);
            std::copy(
                row.begin(), row.end(),
                _rows.begin() + static_cast<std::ptrdiff_t>(y * rowBytes()) + std::ptrdiff_t{3} * _left);
        }
        return writeRows(count);
    }
    bool end() { return writeBlack(_height - _row); }

  private:
    static constexpr int32_t kBlackRows = 64;

    std::size_t rowBytes() const { return static_cast<std::size_t>(_width) * 3; }

    bool writeBlack(int32_t count) {
        for (int32_t band = 0; count > 0; count -= band) {
            band = std::min(count, kBlackRows);
            _rows.assign(rowBytes() * static_cast<std::size_t>(band), 0);
            if (!writeRows(band)) return false;
        }
        return true;
    }

    bool writeRows(int32_t count) {
        if (_withOverlay && !_overlay->blendOnto(_rows, _row, count)) {
            _mistake = "no memory to draw the toolbar";
        } else if (!_file.writeRows(_rows)) {
            _mistake = _file.error();
        }
        _row += count;
        return _mistake.empty();
    }

    PictureFileWriter& _file;
    bool _withOverlay;
    double _scale;
    int32_t _width = 0;
    int32_t _height = 0;
    int32_t _left = 0;
    int32_t _top = 0;
    int32_t _row = 0;
    std::size_t _fractalBytes = 0;
    std::optional<OverlayBands> _overlay;
    std::vector<uint8_t> _rows;
    std::string _mistake;
};

/// Empty for success, else why there is no picture.
std::string drawInto(const SnapshotOptions& options, GameViewController& screen, UIWindow& window) {
    PictureFileWriter file;
    GLKView& view = *screen.glkView();
    ScreenRows rows(file, view, window, options.screen);
    if (!file.open(options.file, rows.width(), rows.height(), screen.pictureTexts())) return file.error();
    const bool drawn = rows.begin() && view.snapshotInTiles(0, [&](auto fractal, int32_t count) {
        return rows.write(fractal, count);
    });
    if (!rows.mistake().empty()) return rows.mistake();
    if (!drawn) return "the GPU cannot draw a picture of this size";
    if (!rows.end()) return rows.mistake();
    return file.finish() ? std::string() : file.error();
}

void printLine(GameViewController& screen, Clock::time_point begun) {
    const double took = std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
    const CGSize size = UIScreen::mainScreen().bounds().size;
    const double scale = UIScreen::mainScreen().scale();
    std::printf("%dx%d pixels, %s, iteration limit %d, %.0f ms\n", pixelsForPoints(size.width, scale),
                pixelsForPoints(size.height, scale),
                screen.coordinatesForDeeplink(screen.shader()->fractalBounds()).c_str(),
                static_cast<int>(screen.shader()->dwell()), took);
}

int drawPicture(HeadlessHost& host, HeldLog& log, const CommandLineOptions& line,
                const std::optional<HostEvent>& opening, Clock::time_point begun) {
    const SnapshotOptions& options = *line.snapshot;
    const auto [screen, failure] = launchMainScreen(host, log);
    if (!screen) return failStart(failure);
    const std::shared_ptr<UIWindow> window = host.application().delegate()->window();
    log.release();
    open(host, opening, line.verbose);
    setView(*screen, options);
    window->layoutIfNeeded();
    if (!options.screen) fillUprightPicture(*screen, *window);
    const std::string mistake = drawInto(options, *screen, *window);
    if (!mistake.empty()) return failStart(mistake);
    printLine(*screen, begun);
    return 0;
}

}  // namespace

int failStart(const std::string& line) {
    std::fprintf(stderr, "zentaro: %s\n", line.c_str());
    return 2;
}

int startSnapshot(const CommandLineOptions& options) {
    const Clock::time_point begun = Clock::now();
    const auto [opening, unopened] = openingOf(options);
    if (!unopened.empty()) return failStart(unopened);
    const auto [settings, mistake] = readOnlySettings(options);
    if (!mistake.empty()) return failStart(mistake);
    const HeadlessHost::Options hostOptions{options.size, options.scale.value_or(1), settings};
    HeldLog log(!options.verbose);
    HeadlessHost host(hostOptions, [] { return std::make_shared<iOSAppDelegate>(); });
    const int status = drawPicture(host, log, options, opening, begun);
    // What the app has to say on leaving concerns nobody who asked for a picture.
    if (!options.verbose) NSLogSetSink([](std::string_view) {});
    return status;
}
