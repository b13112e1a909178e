// The main queue, drained once at the start of each frame, and the background queue, which a host may run on
// a thread of its own or, without threads, between frames.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class DispatchQueue {
  public:
    /// Runs a block somewhere else than now: on another thread, or later on this one.
    using Executor = std::function<void(std::function<void()>)>;

    static DispatchQueue& mainQueue();
    /// Without an executor its blocks run with the next frame, after those of the main queue.
    static DispatchQueue& backgroundQueue();

    /// Safe from any thread.
    void async(std::function<void()> block);
    /// Runs the blocks that were queued before this call; those they queue wait for the next one. Answers
    /// their number.
    std::size_t drain();
    void setExecutor(Executor executor);

  private:
    std::mutex _mutex;
    std::vector<std::function<void()>> _blocks;
    Executor _executor;
};
