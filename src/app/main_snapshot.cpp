// The start for one picture: the app on the headless host, drawn in bands straight into the file.
// Settings are read at most, never written; the file appears whole or not at all.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ios_app_delegate.h"
#include "app/main_starts.h"
#include "hosts/headless/headless_host.h"
#include "hosts/headless/overlay_bands.h"
#include "hosts/native/file_preferences_store.h"
#include "hosts/native/memory_preferences_store.h"
#include "hosts/native/picture_file_writer.h"
#include "main_screen/game_view_controller.h"
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

/// Empty for success, else why there is no picture.
std::string drawInto(PictureFileWriter& file, GameViewController& screen, UIWindow& window,
                     bool withOverlay) {
    const std::shared_ptr<GLKView> view = screen.glkView();
    const int32_t width = view->drawableWidth();
    OverlayBands overlay(window, width, UIScreen::mainScreen().scale());
    std::vector<uint8_t> rows;
    int32_t row = 0;
    std::string mistake;
    const bool drawn = view->snapshotInTiles(0, [&](std::span<const uint8_t> fractal, int32_t count) {
        rows.assign(fractal.begin(), fractal.end());
        if (withOverlay && !overlay.blendOnto(rows, row, count)) {
            mistake = "no memory to draw the toolbar";
        } else if (!file.writeRows(rows)) {
            mistake = file.error();
        }
        row += count;
        return mistake.empty();
    });
    if (mistake.empty() && !drawn) mistake = "the GPU cannot draw a picture of this size";
    if (mistake.empty() && !file.finish()) mistake = file.error();
    return mistake;
}

std::string whyUnreadable(const std::string& path, const FilePreferencesStore& file) {
    return file.lastError().empty() ? path + ": there is no such file" : file.lastError();
}

void printLine(GameViewController& screen, Clock::time_point begun) {
    const double took = std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
    std::printf("%dx%d pixels, %s, iteration limit %d, %.0f ms\n", screen.glkView()->drawableWidth(),
                screen.glkView()->drawableHeight(),
                screen.coordinatesForDeeplink(screen.shader()->fractalBounds()).c_str(),
                static_cast<int>(screen.shader()->dwell()), took);
}

int drawPicture(HeadlessHost& host, const SnapshotOptions& options, Clock::time_point begun) {
    const bool launched = host.launch();
    if (!launched) return failStart("the app's resources are damaged; install it anew");
    const std::shared_ptr<UIWindow> window = host.application().delegate()->window();
    const auto screen = std::dynamic_pointer_cast<GameViewController>(window->rootViewController());
    if (!host.hasOpenGL()) return failStart("cannot draw without OpenGL ES 2.0: " + host.openGLError());
    setView(*screen, options);
    window->layoutIfNeeded();
    PictureFileWriter file;
    const bool opened =
        file.open(options.file, screen->glkView()->drawableWidth(), screen->glkView()->drawableHeight());
    const std::string mistake = opened ? drawInto(file, *screen, *window, options.screen) : file.error();
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
    HeadlessHost::Options hostOptions{options.size, options.scale.value_or(1), nullptr};
    if (!options.defaultsFile.empty()) {
        FilePreferencesStore file(options.defaultsFile);
        auto text = file.load();
        if (!text) return failStart("cannot read the settings: " + whyUnreadable(options.defaultsFile, file));
        hostOptions.preferences = std::make_shared<MemoryPreferencesStore>(std::move(text));
    }
    HeadlessHost host(hostOptions, [] { return std::make_shared<iOSAppDelegate>(); });
    const int status = drawPicture(host, *options.snapshot, begun);
    // What the app has to say on leaving concerns nobody who asked for a picture.
    if (!options.verbose) NSLogSetSink([](std::string_view) {});
    return status;
}
