// Work that waits for others (programs, the network), on threads of its own.
// The main thread hears of the end with a later frame.
#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <stop_token>
#include <thread>

class BackgroundWork {
  public:
    /// What it answers is called on the main thread.
    using Work = std::function<std::function<void()>(const std::stop_token& stop)>;

    BackgroundWork() = default;
    /// Asks all to stop, then waits for them.
    ~BackgroundWork();
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;

    /// On a machine that has no thread left, the work finds itself asked to stop.
    void run(Work work);

  private:
    struct Worker {
        std::jthread thread;
        std::shared_ptr<std::atomic<bool>> isDone;
    };
    std::list<Worker> _workers;
};
