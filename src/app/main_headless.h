// What the starts without a display share: settings that are only read, and an app that is known to draw.
// Their failures are one line each, the same in both.
#pragma once

#include <memory>
#include <string>

#include "app/command_line.h"
#include "app/main_starts.h"
#include "hosts/headless/headless_host.h"
#include "hosts/native/held_log.h"
#include "main_screen/game_view_controller.h"

/// The options' settings file, which nothing writes to, or fresh settings.
OrMistake<std::shared_ptr<PreferencesStore>> readOnlySettings(const CommandLineOptions& options);

/// Launches the app and answers its main screen, ready to draw. log: what the start said so far.
OrMistake<std::shared_ptr<GameViewController>> launchMainScreen(HeadlessHost& host, const HeldLog& log);

/// A link that leads nowhere is said in one line on stderr, and the view stays; verbose: with the log's
/// times.
void open(HeadlessHost& host, const std::optional<HostEvent>& opening, bool verbose);
