// Threads that have ended are joined when the next one begins.
// There are never many: each waits for one thing that the user asked for.
#include "hosts/native/background_work.h"

#include <system_error>
#include <utility>

#include "platform/foundation/dispatch_queue.h"

void BackgroundWork::run(Work work) {
    _workers.remove_if([](const Worker& worker) { return worker.isDone->load(); });
    const auto isDone = std::make_shared<std::atomic<bool>>(false);
    auto body = [work = std::move(work), isDone](const std::stop_token& stop) {
        DispatchQueue::mainQueue().async(work(stop));
        *isDone = true;
    };
    try {
        _workers.push_back({std::jthread(body), isDone});
    } catch (const std::system_error&) {
        std::stop_source stopped;
        stopped.request_stop();
        body(stopped.get_token());
    }
}

BackgroundWork::~BackgroundWork() {
    for (Worker& worker : _workers)
        worker.thread.request_stop();
}
