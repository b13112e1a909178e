// Reads and replaces the settings file.
// Every failure is one line that names the file.
#include "hosts/native/file_preferences_store.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hosts/native/atomic_file.h"

namespace {

struct Descriptor {
    int value;
    ~Descriptor() {
        if (value >= 0) ::close(value);
    }
};

std::string homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home != '\0') return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

/// Answers an errno, 0 for success.
int makeFolders(const std::filesystem::path& folder) {
    if (folder.empty() || ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return 0;
    if (errno != ENOENT || folder == folder.parent_path()) return errno;
    if (const int error = makeFolders(folder.parent_path())) return error;
    return ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST ? 0 : errno;
}

bool isPlainFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Answers an errno, 0 for success; EEXIST rather than replacing anything.
int renameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // A file system that cannot promise it.
    struct stat status {};
    if (::lstat(to.c_str(), &status) == 0) return EEXIST;
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

/// Up to one byte more than a settings file may have; an errno on failure.
int readAtMost(int file, std::string& text) {
    text.resize(FilePreferencesStore::largestFile + 1);
    std::size_t length = 0;
    while (length < text.size()) {
        const ssize_t count = ::read(file, text.data() + length, text.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    return 0;
}

}  // namespace

std::optional<std::string> FilePreferencesStore::defaultPath() {
    // A relative path there counts as none.
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    std::string folder = configured && *configured == '/' ? configured : "";
    if (folder.empty()) {
        const std::string home = homeFolder();
        if (home.empty()) return std::nullopt;
        folder = home + "/.config";
    }
    return folder + "/zentaro/settings.json";
}

std::optional<std::string> FilePreferencesStore::load() {
    _error.clear();
    const Descriptor file{::open(_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)};
    if (file.value < 0) {
        if (errno != ENOENT) _error = _path + ": " + describeSystemError(errno);
        return std::nullopt;
    }
    struct stat status {};
    if (::fstat(file.value, &status) != 0 || !S_ISREG(status.st_mode)) {
        _error = _path + (S_ISDIR(status.st_mode) ? ": it is a folder" : ": it is not a file");
        return std::nullopt;
    }
    std::string text;
    if (const int error = readAtMost(file.value, text)) {
        _error = _path + ": " + describeSystemError(error);
        return std::nullopt;
    }
    if (text.size() > largestFile) {
        _error = _path + ": it is larger than 1 MiB";
        return std::nullopt;
    }
    return text;
}

bool FilePreferencesStore::save(const std::string& text) {
    _error.clear();
    if (const int error = makeFolders(std::filesystem::path(_path).parent_path())) {
        _error = _path + ": " + describeSystemError(error);
        return false;
    }
    AtomicFile file;
    const std::span bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    if (file.open(_path, 0600) && file.write(bytes) && file.commit()) return true;
    _error = _path + ": " + file.error();
    return false;
}

std::string FilePreferencesStore::setAside() {
    if (!isPlainFile(_path)) return "it stays where it is";
    for (int number = 1;; ++number) {
        std::string target = _path + ".damaged";
        if (number > 1) target.append("-").append(std::to_string(number));
        const int error = renameWithoutReplacing(_path, target);
        if (error == 0) return "moved to " + target;
        if (error != EEXIST) return "it stays where it is: " + describeSystemError(error);
    }
}
