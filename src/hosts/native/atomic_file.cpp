// Writes beside the target, syncs, renames, syncs the folder.
// Unfinished content has no name where the file system can do that; else its writer holds a lock on it, which
// ends with the process: whoever gets the lock may remove it.
#include "hosts/native/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

constexpr std::string_view temporaryEnding = ".tmp";
/// Of the target's name, so that the temporary one stays within the 255 bytes that names may have.
constexpr std::size_t keptNameLength = 200;

std::string temporaryPrefix(const std::string& path) {
    std::string prefix(1, '.');
    prefix += std::filesystem::path(path).filename().string().substr(0, keptNameLength);
    return prefix += '.';
}

std::string temporaryPath(const std::string& folder, const std::string& path) {
    static std::random_device random;
    char unique[16];
    std::snprintf(unique, sizeof unique, "%08x", static_cast<unsigned>(random()));
    return folder + "/" + temporaryPrefix(path) + unique + std::string(temporaryEnding);
}

/// Removes the file if no living process writes it.
void removeIfAbandoned(int folder, const char* name) {
    const int file = ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return;
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) ::unlinkat(folder, name, 0);
    ::close(file);
}

void removeAbandonedFiles(const std::string& folder, const std::string& path) {
    DIR* listing = ::opendir(folder.c_str());
    if (!listing) return;
    const std::string prefix = temporaryPrefix(path);
    while (const dirent* entry = ::readdir(listing)) {
        const std::string_view name = entry->d_name;
        const bool ours = name.size() == prefix.size() + 8 + temporaryEnding.size() &&
                          name.starts_with(prefix) && name.ends_with(temporaryEnding);
        if (ours) removeIfAbandoned(::dirfd(listing), entry->d_name);
    }
    ::closedir(listing);
}

/// Locked, and still there: nobody took it for abandoned between its making and its locking.
bool lockNewFile(int file) {
    struct stat status {};
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    return ::fstat(file, &status) == 0 && status.st_nlink > 0;
}

/// The path behind links, so that a linked settings file stays a link.
std::string resolved(const std::string& path) {
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

std::string processPath(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

void syncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace

std::string describeSystemError(int code) {
    if (code == ENOSPC || code == EDQUOT) return "the disk is full";
    return std::generic_category().message(code);
}

bool AtomicFile::fail(int code) {
    _error = describeSystemError(code);
    discard();
    return false;
}

bool AtomicFile::open(const std::string& path, mode_t mode) {
    discard();
    _error.clear();
    _path = resolved(path);
    const auto parent = std::filesystem::path(_path).parent_path();
    _folder = parent.empty() ? "." : parent.string();
    if (!checkTarget()) return false;
    removeAbandonedFiles(_folder, _path);
    return (_unfinished == Unfinished::unnamedIfPossible && openUnnamed(mode)) || openNamed(mode);
}

bool AtomicFile::checkTarget() {
    struct stat status {};
    if (::stat(_folder.c_str(), &status) != 0) {
        if (errno != ENOENT) return fail(errno);
        _error = "the folder " + _folder + " does not exist";
        return false;
    }
    if (!S_ISDIR(status.st_mode)) {
        _error = _folder + " is not a folder";
        return false;
    }
    if (::stat(_path.c_str(), &status) != 0) return errno == ENOENT || fail(errno);
    if (!S_ISREG(status.st_mode)) {
        _error = S_ISDIR(status.st_mode) ? "it is a folder" : "it is not a file";
        return false;
    }
    return ::access(_path.c_str(), W_OK) == 0 || fail(errno);
}

bool AtomicFile::openUnnamed(mode_t mode) {
    _descriptor = ::open(_folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
    if (_descriptor < 0) return false;
    if (::access(processPath(_descriptor).c_str(), F_OK) == 0) {
        // For the moment between getting a name and getting the right one.
        ::flock(_descriptor, LOCK_EX | LOCK_NB);
        return true;
    }
    discard();
    return false;
}

bool AtomicFile::openNamed(mode_t mode) {
    while (true) {
        _temporary = temporaryPath(_folder, _path);
        _descriptor = ::open(_temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode);
        if (_descriptor >= 0 && lockNewFile(_descriptor)) return true;
        const int reason = errno;
        if (_descriptor >= 0 || reason == EEXIST) {
            discard();
            continue;
        }
        _temporary.clear();
        return fail(reason);
    }
}

bool AtomicFile::write(std::span<const uint8_t> bytes) {
    if (_descriptor < 0) return false;
    while (!bytes.empty()) {
        const ssize_t written = ::write(_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return fail(written < 0 ? errno : ENOSPC);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

bool AtomicFile::giveName() {
    while (_temporary.empty()) {
        const std::string name = temporaryPath(_folder, _path);
        if (::linkat(AT_FDCWD, processPath(_descriptor).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) ==
            0) {
            _temporary = name;
        } else if (errno != EEXIST) {
            return false;
        }
    }
    return ::rename(_temporary.c_str(), _path.c_str()) == 0;
}

bool AtomicFile::commit() {
    if (_descriptor < 0) return false;
    if (::fsync(_descriptor) != 0) return fail(errno);
    if (!giveName()) return fail(errno);
    _temporary.clear();
    discard();
    syncFolder(_folder);
    return true;
}

void AtomicFile::discard() {
    if (!_temporary.empty()) ::unlink(_temporary.c_str());
    _temporary.clear();
    if (_descriptor >= 0) ::close(_descriptor);
    _descriptor = -1;
}
