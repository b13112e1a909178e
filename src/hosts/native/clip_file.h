// A clip's file in the app's folder, locked by whoever films or previews it.
// The kernel frees the lock of a dead process: what is not locked is left over.
#pragma once

#include <memory>
#include <string>

class ClipFile {
  public:
    /// A new one, under a name that nothing has yet. Null with an error.
    static std::shared_ptr<ClipFile> makeNamed(const std::string& folder, const std::string& name,
                                               std::string& error);
    /// One that nobody holds; null otherwise.
    static std::shared_ptr<ClipFile> takeLeft(const std::string& path);
    ~ClipFile();
    ClipFile(const ClipFile&) = delete;
    ClipFile& operator=(const ClipFile&) = delete;

    const std::string& path() const { return _path; }
    int descriptor() const { return _descriptor; }
    /// Its room on the disk is free at once, though the file is held.
    void remove();

  private:
    ClipFile(std::string path, int descriptor) : _path(std::move(path)), _descriptor(descriptor) {}

    std::string _path;
    int _descriptor;
};

/// A new file in the folder, which is made if need be, under a name that nothing has: NAME.mp4, NAME 2.mp4
/// and so on. Answers its descriptor and sets path; below 0 with an error.
int makeNewFile(const std::string& folder, const std::string& name, std::string& path, std::string& error);

/// "2026-03-01 at 17.05.09", local time of now.
std::string timeForName();
