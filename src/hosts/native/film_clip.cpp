// Pictures and parts of a clip, through the codec.
// A part that could not be written whole leaves nothing behind.
#include "hosts/native/film_clip.h"

#include <unistd.h>
#include <utility>

#include "hosts/native/user_folders.h"
#include "platform/host/share_destinations.h"

namespace {

constexpr const char* noFolder = "there is no folder for it";

}  // namespace

std::shared_ptr<FilmClip> FilmClip::open(std::shared_ptr<ClipFile> file, std::string folder,
                                         std::string& error) {
    FilmCodec* codec = loadFilmCodec(error);
    auto reader = codec ? codec->makeReader(file->path(), error) : nullptr;
    if (!reader) return nullptr;
    return std::shared_ptr<FilmClip>(new FilmClip(std::move(file), std::move(reader), std::move(folder)));
}

CGImageRef FilmClip::pictureAt(double time, CGSize fit) {
    const auto picture = _reader ? _reader->pictureAt(time, fit) : nullptr;
    if (!picture) return nullptr;
    if (std::exchange(_picture, picture) != picture)
        _image = std::make_shared<CGImage>(picture->width, picture->height, CGImageFormat::rgba8888,
                                           picture->rgba);
    return _image;
}

CapturedClip::Outcome FilmClip::save(double from, double to) {
    const auto [written, line] = copyTo(_folder, from, to);
    return {written, (written ? "Saved as " : "Not saved: ") + line};
}

void FilmClip::discard() {
    _reader = nullptr;
    _picture = nullptr;
    _image = nullptr;
    _file->remove();
}

bool FilmClip::canShare() const {
    return sharedShareDestinations() != nullptr;
}

CapturedClip::Outcome FilmClip::fileToShare(double from, double to) {
    const auto folder = folderForHandingOver();
    return folder ? copyTo(*folder, from, to) : Outcome{false, noFolder};
}

/// Answers the path, or the mistake.
CapturedClip::Outcome FilmClip::copyTo(const std::string& folder, double from, double to) {
    if (folder.empty()) return {false, noFolder};
    std::string error;
    std::string path;
    const int descriptor = makeNewFile(folder, "Zentaro " + timeForName(), path, error);
    if (descriptor < 0) return {false, error};
    const bool whole = copyFilm(_file->path(), from, to, descriptor, error);
    ::close(descriptor);
    if (whole) return {true, path};
    ::unlink(path.c_str());
    return {false, error};
}
