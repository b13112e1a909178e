// A file that appears under its name whole or not at all.
// Settings and pictures are written through it, so that no crash and no full disk leaves half of one.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <sys/types.h>

class AtomicFile {
  public:
    /// Where unfinished content lies: without a name, where the file system can do that, or always under a
    /// temporary one.
    enum class Unfinished { unnamedIfPossible, named };

    explicit AtomicFile(Unfinished unfinished = Unfinished::unnamedIfPossible) : _unfinished(unfinished) {}
    /// Without a commit nothing was ever there.
    ~AtomicFile() { discard(); }
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Starts the new content of path, beside it, and removes what killed writers of the same path left
    /// there. NO, with the reason in error(), for a folder that does not exist or cannot be written and for
    /// a path that holds anything but a writable file.
    bool open(const std::string& path, mode_t mode);
    bool write(std::span<const uint8_t> bytes);
    /// Brings the content to the disk and gives it its name; an older file is replaced.
    bool commit();
    void discard();

    /// One line without the path: "the disk is full".
    const std::string& error() const { return _error; }

  private:
    bool fail(int code);
    bool checkTarget();
    bool openUnnamed(mode_t mode);
    bool openNamed(mode_t mode);
    bool giveName();

    Unfinished _unfinished;
    std::string _path;    ///< links resolved
    std::string _folder;  ///< of _path
    std::string _temporary;
    int _descriptor = -1;
    std::string _error;
};

/// The words for an errno: "the disk is full".
std::string describeSystemError(int code);
