// The unfinished film and its finish: the same pictures once more, as a file with its table of contents.
// A flight that fails leaves nothing behind, one that is killed the film as far as it was, one that cannot be
// finished the whole.
#include "hosts/native/film_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <unistd.h>
#include <utility>

#include "hosts/native/atomic_file.h"
#include "hosts/native/clip_file.h"

namespace {

namespace fs = std::filesystem;

std::string folderOf(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

std::string cannotWrite(const std::string& path, const std::string& why) {
    return "cannot write " + path + ": " + why;
}

}  // namespace

FilmFile::~FilmFile() {
    _worker.reset();
    if (_unfinished) _unfinished->remove();
}

std::string FilmFile::open(const std::string& path, int32_t framesPerSecond) {
    std::error_code ignored;
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored))
        return cannotWrite(path, "it is not a file");
    if (!fs::is_directory(folderOf(path), ignored)) return cannotWrite(path, "there is no such folder");
    std::string error;
    FilmCodec* codec = loadFilmCodec(error);
    if (!codec) return error;
    _unfinished =
        ClipFile::makeNamed(folderOf(path), fs::path(path).stem().string() + " (unfinished)", error);
    if (!_unfinished) return cannotWrite(path, error);
    _path = path;
    _rate = framesPerSecond;
    FilmWorker::Steps steps;
    steps.makeWriter = [this, codec](const CapturedFrame& first, std::string& why) {
        const FilmFormat format{std::max(first.width / 2 * 2, 2), std::max(first.height / 2 * 2, 2), _rate,
                                _rate, false};
        return codec->makeWriter(_unfinished->descriptor(), format, why);
    };
    _worker = std::make_unique<FilmWorker>(std::move(steps), _rate);
    return {};
}

std::unique_ptr<CapturedFrame> FilmFile::frameToFill(double /*time*/) {
    if (!_worker) return nullptr;
    auto frame = _worker->waitForFree();
    _failed = !frame;
    return frame;
}

void FilmFile::takeFrame(std::unique_ptr<CapturedFrame> frame) {
    frame->time = static_cast<double>(_frames++) / _rate;
    _worker->push(std::move(frame));
}

std::string FilmFile::finish() {
    std::string error = _worker->finishAndWait();
    if (!error.empty()) return cannotWrite(_path, error);
    error = finishFile();
    if (error.empty()) return {};
    // The flight is whole all the same, and can be played.
    const std::string kept = std::exchange(_unfinished, nullptr)->path();
    return cannotWrite(_path, error + "; the film is " + kept);
}

std::string FilmFile::finishFile() {
    std::string error;
    std::string path;
    const int descriptor = makeNewFile(folderOf(_path), fs::path(_path).stem().string(), path, error);
    if (descriptor < 0) return error;
    const bool whole = copyFilm(_unfinished->path(), 0, 1e9, descriptor, error);
    ::close(descriptor);
    if (whole && std::rename(path.c_str(), _path.c_str()) == 0) return {};
    if (whole) error = describeSystemError(errno);
    ::unlink(path.c_str());
    return error;
}
