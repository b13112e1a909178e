// Making, locking and removing; names that nothing has yet.
// Files are opened so that none is ever replaced.
#include "hosts/native/clip_file.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hosts/native/atomic_file.h"

std::shared_ptr<ClipFile> ClipFile::makeNamed(const std::string& folder, const std::string& name,
                                              std::string& error) {
    for (;;) {
        std::string path;
        const int descriptor = makeNewFile(folder, name, path, error);
        if (descriptor < 0) return nullptr;
        // Another instance may come between and take the new file for one that was left.
        ::flock(descriptor, LOCK_EX);
        struct stat status {};
        if (::fstat(descriptor, &status) != 0 || status.st_nlink > 0)
            return std::shared_ptr<ClipFile>(new ClipFile(path, descriptor));
        ::close(descriptor);
    }
}

std::shared_ptr<ClipFile> ClipFile::takeLeft(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) return nullptr;
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        return std::shared_ptr<ClipFile>(new ClipFile(path, descriptor));
    ::close(descriptor);
    return nullptr;
}

ClipFile::~ClipFile() {
    ::close(_descriptor);
}

void ClipFile::remove() {
    ::unlink(_path.c_str());
    [[maybe_unused]] const int result = ::ftruncate(_descriptor, 0);
}

int makeNewFile(const std::string& folder, const std::string& name, std::string& path, std::string& error) {
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    for (int number = 1;; ++number) {
        path = folder;
        path.append("/").append(name);
        if (number > 1) path.append(" ").append(std::to_string(number));
        path += ".mp4";
        const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (descriptor >= 0) return descriptor;
        if (errno == EEXIST) continue;
        error = folder + ": " + describeSystemError(errno);
        return -1;
    }
}

std::string timeForName() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    char text[40] = {};
    std::strftime(text, sizeof text, "%Y-%m-%d at %H.%M.%S", &local);
    return text;
}
