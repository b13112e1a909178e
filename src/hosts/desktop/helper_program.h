// Programs of the desktop that do something for the app: the mail program's, the browser's opener.
// They get their arguments as they are, without a shell, and outlive the app.
#pragma once

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// Its path; nothing for one that is not installed.
std::optional<std::string> findProgram(const std::string& name);

enum class ProgramEnd { succeeded, failed, runsOn };

/// Starts a program and waits for it: failed for one that cannot start or ends otherwise than with status 0,
/// runsOn for one that is left to itself when the patience ends or a stop is requested. Blocks: not for the
/// main thread.
ProgramEnd runProgram(const std::vector<std::string>& command, std::chrono::milliseconds patience,
                      const std::stop_token& stop);
