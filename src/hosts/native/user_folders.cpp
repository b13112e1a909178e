// Reads user-dirs.dirs as its manual page describes it; the variables of the environment do not count.
// A name is reserved by an empty file of its own before the content takes its place.
#include "hosts/native/user_folders.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "hosts/native/atomic_file.h"

namespace {

namespace fs = std::filesystem;

constexpr int mostNamesTried = 10000;
constexpr mode_t fileMode = 0644;
constexpr auto keepingTime = std::chrono::hours(7 * 24);

std::optional<std::string> variable(const char* name) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value != '/') return std::nullopt;
    return value;
}

/// The value between quotes, its escapes resolved; "$HOME" stands at its beginning alone.
std::optional<std::string> unquoted(const std::string& value, const std::string& home) {
    if (value.empty() || value.front() != '"') return std::nullopt;
    std::string path;
    std::size_t i = 1;
    if (value.compare(i, 5, "$HOME") == 0) {
        path = home;
        i += 5;
    }
    for (; i < value.size() && value[i] != '"'; ++i) {
        if (value[i] == '\\' && i + 1 < value.size()) ++i;
        path += value[i];
    }
    const bool isWhole = i < value.size() && !path.empty() && path.front() == '/';
    return isWhole ? std::optional(path) : std::nullopt;
}

std::optional<std::string> baseFolder(const char* key, const char* inHome, const std::string& name) {
    if (const auto set = variable(key)) return *set + "/" + name;
    const auto home = variable("HOME");
    return home ? std::optional(*home + inHome + name) : std::nullopt;
}

/// Empty for success.
std::string writeInto(const std::string& path, std::span<const uint8_t> bytes) {
    AtomicFile file;
    if (file.open(path, fileMode) && file.write(bytes) && file.commit()) return {};
    return file.error();
}

}  // namespace

std::optional<std::string> userFolder(const std::string& key, const std::string& fallback) {
    const auto home = variable("HOME");
    if (!home) return std::nullopt;
    std::ifstream lines(variable("XDG_CONFIG_HOME").value_or(*home + "/.config") + "/user-dirs.dirs");
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of(" \t"));
        if (!line.starts_with(key + "=")) continue;
        if (auto path = unquoted(line.substr(key.size() + 1), *home)) return path;
    }
    return *home + "/" + fallback;
}

std::optional<std::string> userCacheFolder(const std::string& name) {
    return baseFolder("XDG_CACHE_HOME", "/.cache/", name);
}

std::optional<std::string> userStateFolder(const std::string& name) {
    return baseFolder("XDG_STATE_HOME", "/.local/state/", name);
}

std::optional<std::string> folderForHandingOver() {
    auto folder = userCacheFolder("zentaro/shared");
    if (!folder) return folder;
    std::error_code failure;
    const auto oldest = fs::file_time_type::clock::now() - keepingTime;
    fs::directory_iterator entry(*folder, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        std::error_code unknown;
        if (entry->last_write_time(unknown) < oldest && !unknown) fs::remove(entry->path(), unknown);
    }
    return folder;
}

NewFile writeNewFile(const std::string& folder, const std::string& name, const std::string& ending,
                     std::span<const uint8_t> bytes) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    for (int number = 1; number <= mostNamesTried; ++number) {
        std::string numbered = name;
        if (number > 1) numbered.append(" (").append(std::to_string(number)).append(")");
        std::string path = (fs::path(folder) / numbered.append(ending)).string();
        const int reserved = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, fileMode);
        if (reserved < 0 && errno == EEXIST) continue;
        if (reserved < 0) return {"", describeSystemError(errno)};
        ::close(reserved);
        std::string error = writeInto(path, bytes);
        if (error.empty()) return {std::move(path), ""};
        ::unlink(path.c_str());
        return {"", std::move(error)};
    }
    return {"", "too many files of that name"};
}
