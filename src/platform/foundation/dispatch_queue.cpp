// The two queues.
// Blocks always run outside the lock, so they may queue, drain and set executors themselves.
#include "platform/foundation/dispatch_queue.h"

#include <utility>

DispatchQueue& DispatchQueue::mainQueue() {
    static DispatchQueue queue;
    return queue;
}

DispatchQueue& DispatchQueue::backgroundQueue() {
    static DispatchQueue queue;
    return queue;
}

void DispatchQueue::async(std::function<void()> block) {
    if (!block) return;
    Executor executor;
    {
        const std::lock_guard lock(_mutex);
        if (!_executor) {
            _blocks.push_back(std::move(block));
            return;
        }
        executor = _executor;
    }
    executor(std::move(block));
}

std::size_t DispatchQueue::drain() {
    std::vector<std::function<void()>> blocks;
    {
        const std::lock_guard lock(_mutex);
        blocks.swap(_blocks);
    }
    for (auto& block : blocks)
        block();
    return blocks.size();
}

void DispatchQueue::setExecutor(Executor executor) {
    const std::lock_guard lock(_mutex);
    _executor = std::move(executor);
}
