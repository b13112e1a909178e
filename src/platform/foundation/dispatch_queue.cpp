// The main queue.
// Blocks always run outside the lock, so they may queue and drain themselves.
#include "platform/foundation/dispatch_queue.h"

#include <utility>

DispatchQueue& DispatchQueue::mainQueue() {
    static DispatchQueue queue;
    return queue;
}

void DispatchQueue::async(std::function<void()> block) {
    if (!block) return;
    const std::lock_guard lock(_mutex);
    _blocks.push_back(std::move(block));
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
