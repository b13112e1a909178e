// Encodes a film on a thread of its own, from a bounded number of frames that go round.
// Whoever has frames either takes what is free, and loses the frame where nothing is, or waits for it.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "hosts/native/film_codec.h"

class FilmWorker {
  public:
    /// Called on the thread: begins once at the start, and makes the writer for the first frame. Both answer
    /// the failure, empty for success.
    struct Steps {
        std::function<std::string()> begin;
        std::function<std::unique_ptr<FilmWriter>(const CapturedFrame& first, std::string& error)> makeWriter;
        /// Once, at the end: after finish, or at the failure.
        std::function<void(const std::string& failure)> ended;
    };
    static constexpr int kFrames = 4;

    FilmWorker(Steps steps, int32_t ticksPerSecond);
    /// Finishes the film and waits for the end.
    ~FilmWorker();
    FilmWorker(const FilmWorker&) = delete;
    FilmWorker& operator=(const FilmWorker&) = delete;

    /// Null where the thread is behind, or has ended. Never waits.
    std::unique_ptr<CapturedFrame> takeFree();
    /// Null once the thread has ended.
    std::unique_ptr<CapturedFrame> waitForFree();
    void push(std::unique_ptr<CapturedFrame> frame);
    /// What was pushed is written, then the film ends.
    void finish();
    /// finish, and waits for the end. Answers the failure.
    std::string finishAndWait();

  private:
    void run();
    std::string encode();
    std::unique_ptr<CapturedFrame> nextFrame();

    Steps _steps;
    int32_t _ticksPerSecond;
    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<std::unique_ptr<CapturedFrame>> _free;
    std::deque<std::unique_ptr<CapturedFrame>> _waiting;
    bool _finishing = false;
    bool _ended = false;
    std::string _failure;
    std::thread _thread;
};
