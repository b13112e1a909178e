// One descriptor for as long as the file is read, positions in the place of reading through it.
// A file that shrinks meanwhile just ends early.
#include "hosts/native/picture_file_reader.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hosts/native/atomic_file.h"
#include "platform/foundation/quoted_text.h"

namespace {

class OpenedFile {
  public:
    explicit OpenedFile(const std::string& path)
        : _descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
        struct stat status {};
        if (_descriptor < 0 || fstat(_descriptor, &status) != 0) {
            _error = describeSystemError(errno);
        } else if (!S_ISREG(status.st_mode)) {
            _error = S_ISDIR(status.st_mode) ? "it is a folder" : "it is no file";
        }
    }
    ~OpenedFile() {
        if (_descriptor >= 0) close(_descriptor);
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    const std::string& error() const { return _error; }

    std::size_t read(uint64_t offset, std::span<uint8_t> room) {
        std::size_t count = 0;
        while (count < room.size()) {
            const ssize_t got = pread(_descriptor, room.data() + count, room.size() - count,
                                      static_cast<off_t>(offset + count));
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) _error = describeSystemError(errno);
            if (got <= 0) break;
            count += static_cast<std::size_t>(got);
        }
        return count;
    }

  private:
    int _descriptor;
    std::string _error;
};

}  // namespace

std::variant<HostOpenPicture, std::string> readPictureFile(const std::string& path) {
    OpenedFile file(path);
    HostOpenPicture picture{path, {}};
    if (file.error().empty()) {
        picture.texts = readPictureTexts(
            [&](uint64_t offset, std::span<uint8_t> room) { return file.read(offset, room); });
    }
    if (file.error().empty()) return picture;
    return "cannot read " + quoted(path) + ": " + file.error();
}
