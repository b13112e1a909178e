// The thread and its two queues, of frames to write and of frames that are free.
// Times become ticks here, each above the one before.
#include "hosts/native/film_worker.h"

#include <algorithm>
#include <cmath>
#include <utility>

FilmWorker::FilmWorker(Steps steps, int32_t ticksPerSecond)
    : _steps(std::move(steps)), _ticksPerSecond(ticksPerSecond) {
    for (int i = 0; i < kFrames; ++i)
        _free.push_back(std::make_unique<CapturedFrame>());
    _thread = std::thread([this] { run(); });
}

FilmWorker::~FilmWorker() {
    finish();
    if (_thread.joinable()) _thread.join();
}

std::unique_ptr<CapturedFrame> FilmWorker::takeFree() {
    const std::lock_guard lock(_mutex);
    if (_ended || _finishing || _free.empty()) return nullptr;
    auto frame = std::move(_free.front());
    _free.pop_front();
    return frame;
}

std::unique_ptr<CapturedFrame> FilmWorker::waitForFree() {
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _ended || !_free.empty(); });
    if (_ended) return nullptr;
    auto frame = std::move(_free.front());
    _free.pop_front();
    return frame;
}

void FilmWorker::push(std::unique_ptr<CapturedFrame> frame) {
    const std::lock_guard lock(_mutex);
    _waiting.push_back(std::move(frame));
    _changed.notify_all();
}

void FilmWorker::finish() {
    const std::lock_guard lock(_mutex);
    _finishing = true;
    _changed.notify_all();
}

std::string FilmWorker::finishAndWait() {
    finish();
    if (_thread.joinable()) _thread.join();
    return _failure;
}

void FilmWorker::run() {
    const std::string failure = encode();
    {
        const std::lock_guard lock(_mutex);
        _failure = failure;
        _ended = true;
        _changed.notify_all();
    }
    if (_steps.ended) _steps.ended(failure);
}

std::unique_ptr<CapturedFrame> FilmWorker::nextFrame() {
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _finishing || !_waiting.empty(); });
    if (_waiting.empty()) return nullptr;
    auto frame = std::move(_waiting.front());
    _waiting.pop_front();
    return frame;
}

std::string FilmWorker::encode() {
    std::string failure = _steps.begin ? _steps.begin() : std::string();
    if (!failure.empty()) return failure;
    std::unique_ptr<FilmWriter> writer;
    double firstTime = 0;
    int64_t lastTick = -1;
    while (auto frame = nextFrame()) {
        if (!writer) {
            writer = _steps.makeWriter(*frame, failure);
            if (!writer) return failure;
            firstTime = frame->time;
        }
        const int64_t tick =
            std::max<int64_t>(std::llround((frame->time - firstTime) * _ticksPerSecond), lastTick + 1);
        lastTick = tick;
        if (!writer->write(*frame, tick)) {
            failure = writer->error();
            writer->finish();
            return failure;
        }
        const std::lock_guard lock(_mutex);
        _free.push_back(std::move(frame));
        _changed.notify_all();
    }
    if (!writer) return "nothing was filmed";
    return writer->finish() ? std::string() : writer->error();
}
