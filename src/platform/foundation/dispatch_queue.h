// The main queue, drained once at the start of each frame.
// What other threads learn reaches the app through it.
#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <vector>

class DispatchQueue {
  public:
    static DispatchQueue& mainQueue();

    /// Safe from any thread.
    void async(std::function<void()> block);
    /// Runs the blocks that were queued before this call; those they queue wait for the next one. Answers
    /// their number.
    std::size_t drain();

  private:
    std::mutex _mutex;
    std::vector<std::function<void()>> _blocks;
};
