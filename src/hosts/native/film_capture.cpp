// Starting, stopping and ending by itself; what lies in the folder from earlier runs.
// The codec is loaded on the worker's thread; the first frame decides the film's size.
#include "hosts/native/film_capture.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "hosts/native/clip_file.h"
#include "hosts/native/film_clip.h"
#include "hosts/native/user_folders.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_log.h"

namespace {

constexpr int32_t kTicksPerSecond = 90000;
constexpr double kFrameInterval = 1.0 / 60;

/// Of a file that cannot be read.
void removeUnlessForWantOfTheCodec(ClipFile& file) {
    if (std::string ignored; loadFilmCodec(ignored)) file.remove();
}

}  // namespace

FilmCapture::Folders FilmCapture::Folders::ofUser() {
    return {userStateFolder("zentaro/clips").value_or(""),
            userFolder("XDG_VIDEOS_DIR", "Videos").value_or("")};
}

FilmCapture::~FilmCapture() {
    _life.reset();
    _worker.reset();
}

bool FilmCapture::isAvailable() const {
    if (_folders.clips.empty() || !hasFilmCodec()) return false;
    std::error_code error;
    std::filesystem::create_directories(_folders.clips, error);
    return ::access(_folders.clips.c_str(), W_OK | X_OK) == 0;
}

FilmWorker::Steps FilmCapture::steps(const std::shared_ptr<ClipFile>& file, Started started) {
    const auto onMain = [life = std::weak_ptr<char>(_life)](std::function<void()> block) {
        DispatchQueue::mainQueue().async([life, block = std::move(block)] {
            if (!life.expired()) block();
        });
    };
    FilmWorker::Steps steps;
    steps.begin = [onMain, started = std::move(started)] {
        std::string error;
        loadFilmCodec(error);
        onMain([started, error] { started(error); });
        return error;
    };
    steps.makeWriter = [file](const CapturedFrame& first, std::string& error) {
        const FilmFormat format{std::max(first.width / 2 * 2, 2), std::max(first.height / 2 * 2, 2),
                                kTicksPerSecond};
        return loadFilmCodec(error)->makeWriter(file->descriptor(), format, error);
    };
    steps.ended = [this, onMain](const std::string& failure) { onMain([this, failure] { ended(failure); }); };
    return steps;
}

void FilmCapture::start(Started handler) {
    std::string error = _worker ? "the last film is not finished" : "";
    if (error.empty()) _file = ClipFile::makeNamed(_folders.clips, timeForName(), error);
    if (!error.empty()) {
        DispatchQueue::mainQueue().async([handler = std::move(handler), error] { handler(error); });
        return;
    }
    _dropped = 0;
    _nextFrame = 0;
    _stopped = nullptr;
    try {
        _worker = std::make_unique<FilmWorker>(steps(_file, handler), kTicksPerSecond);
    } catch (const std::system_error& noThread) {
        std::exchange(_file, nullptr)->remove();
        DispatchQueue::mainQueue().async([handler, why = std::string(noThread.what())] { handler(why); });
    }
}

void FilmCapture::stop(Stopped handler) {
    if (!_worker) {
        DispatchQueue::mainQueue().async(
            [handler = std::move(handler)] { handler(nullptr, "nothing is being filmed"); });
        return;
    }
    _stopped = std::move(handler);
    _worker->finish();
}

/// On the main thread: hands out the clip, if there is one.
void FilmCapture::ended(const std::string& failure) {
    _worker = nullptr;
    const auto file = std::exchange(_file, nullptr);
    if (_dropped > 0) NSLog("recording: %lld frames dropped", static_cast<long long>(_dropped));
    _offered.insert(file->path());
    std::string unreadable;
    auto clip = FilmClip::open(file, _folders.films, unreadable);
    if (!clip) removeUnlessForWantOfTheCodec(*file);
    const auto handler = _stopped ? std::exchange(_stopped, nullptr) : _interrupted;
    if (handler) handler(std::move(clip), failure.empty() ? unreadable : failure);
}

std::shared_ptr<CapturedClip> FilmCapture::takeLeftClip() {
    if (_worker || _folders.clips.empty()) return nullptr;
    std::error_code error;
    std::filesystem::directory_iterator entry(_folders.clips, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string path = entry->path().string();
        if (entry->path().extension() != ".mp4" || _offered.contains(path)) continue;
        const auto file = ClipFile::takeLeft(path);
        if (!file) continue;
        _offered.insert(path);
        std::string ignored;
        if (auto clip = FilmClip::open(file, _folders.films, ignored)) return clip;
        // Killed before its first picture was on the disk.
        removeUnlessForWantOfTheCodec(*file);
    }
    return nullptr;
}

std::unique_ptr<CapturedFrame> FilmCapture::frameToFill(double time) {
    // Half an interval early is on time: displays do not keep to sixtieths of seconds.
    if (!_worker || _stopped || time < _nextFrame - kFrameInterval / 2) return nullptr;
    auto frame = _worker->takeFree();
    if (frame) {
        _nextFrame = std::max(_nextFrame, time - kFrameInterval) + kFrameInterval;
    } else {
        ++_dropped;
    }
    return frame;
}

void FilmCapture::takeFrame(std::unique_ptr<CapturedFrame> frame) {
    if (_worker) _worker->push(std::move(frame));
}
