// Reads settings, launches, and finds out why there is nothing to draw with.
// A start that fails has written nothing.
#include "app/main_headless.h"

#include <cstdio>
#include <string_view>
#include <utility>

#include "hosts/native/file_preferences_store.h"
#include "hosts/native/memory_preferences_store.h"
#include "platform/foundation/ns_log.h"
#include "platform/foundation/ns_user_defaults.h"

OrMistake<std::shared_ptr<PreferencesStore>> readOnlySettings(const CommandLineOptions& options) {
    if (options.defaultsFile.empty()) return {};
    FilePreferencesStore file(options.defaultsFile);
    auto text = file.load();
    if (!text) {
        const std::string why =
            file.lastError().empty() ? options.defaultsFile + ": there is no such file" : file.lastError();
        return {nullptr, "cannot read the settings: " + why};
    }
    return {std::make_shared<MemoryPreferencesStore>(std::move(text)), {}};
}

OrMistake<std::shared_ptr<GameViewController>> launchMainScreen(HeadlessHost& host, const HeldLog& log) {
    // Nobody is there to be shown around.
    NSUserDefaults::standardUserDefaults().setBool(true, "MPCoachMarksShown");
    if (!host.launch()) return {nullptr, damagedResources(log)};
    if (!host.hasOpenGL()) return {nullptr, withoutOpenGL(host.openGLError())};
    const auto window = host.application().delegate()->window();
    auto screen = std::dynamic_pointer_cast<GameViewController>(window->rootViewController());
    if (screen->shader()->isUsable()) return {std::move(screen), {}};
    return {nullptr,
            "the fractal's shader is missing or broken; install the app anew (" + log.firstLine() + ")"};
}

void open(HeadlessHost& host, const std::optional<HostEvent>& opening, bool verbose) {
    if (!opening) return;
    if (verbose) return host.handle(*opening);
    NSLogSink former = NSLogSetSink([](std::string_view line) {
        if (line.starts_with("Setting launch rect")) return;
        std::fprintf(stderr, "zentaro: %.*s\n", static_cast<int>(line.size()), line.data());
    });
    host.handle(*opening);
    NSLogSetSink(std::move(former));
}
