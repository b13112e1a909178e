// Spawned rather than forked: the app has threads and a GL driver.
// A program that runs on when the app ends is taken over by the system.
#include "hosts/desktop/helper_program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds betweenLooks(10);

/// What a child is started with: no input, no output, a session of its own, no signals blocked.
class SpawnSettings {
  public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&_files);
        posix_spawn_file_actions_addopen(&_files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&_files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&_files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_init(&_attributes);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&_attributes, &none);
        posix_spawnattr_setflags(&_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    }
    ~SpawnSettings() {
        posix_spawnattr_destroy(&_attributes);
        posix_spawn_file_actions_destroy(&_files);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    const posix_spawn_file_actions_t* files() const { return &_files; }
    const posix_spawnattr_t* attributes() const { return &_attributes; }

  private:
    posix_spawn_file_actions_t _files{};
    posix_spawnattr_t _attributes{};
};

}  // namespace

std::optional<std::string> findProgram(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string candidate = std::filesystem::path(folder) / name;
        std::error_code ignored;
        if (!folder.empty() && std::filesystem::is_regular_file(candidate, ignored) &&
            access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
    }
    return std::nullopt;
}

ProgramEnd runProgram(const std::vector<std::string>& command, std::chrono::milliseconds patience,
                      const std::stop_token& stop) {
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    const SpawnSettings settings;
    pid_t child = 0;
    if (posix_spawnp(&child, words.front(), settings.files(), settings.attributes(), words.data(), environ) !=
        0)
        return ProgramEnd::failed;
    const auto end = std::chrono::steady_clock::now() + patience;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (stop.stop_requested() || std::chrono::steady_clock::now() > end) return ProgramEnd::runsOn;
        std::this_thread::sleep_for(betweenLooks);
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? ProgramEnd::succeeded : ProgramEnd::failed;
}
