// Notifications, queues and the log, above all when their blocks call back into them.
// All of them run the app's own code in the middle of their own.
#include <gmock/gmock.h>
#include <thread>

#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/ns_notification_center.h"
#include "tests/support/log_capture.h"

namespace {

using ::testing::ElementsAre;

TEST(NSNotificationCenter, CallsInOrderOfRegistrationByNameAndSender) {
    NSNotificationCenter center;
    std::vector<std::string> calls;
    const auto observer = std::make_shared<int>();
    const int sender = 0;
    const int other = 0;
    const auto note = [&calls](const char* name) {
        return [&calls, name](const NSNotification&) { calls.emplace_back(name); };
    };
    center.addObserver(observer, "a", nullptr, note("any"));
    center.addObserver(observer, "a", &sender, note("mine"));
    center.addObserver(observer, "b", nullptr, note("b"));
    center.addObserver(observer, "a", nullptr, nullptr);
    center.postNotificationName("a", &sender);
    center.postNotificationName("a", &other);
    center.postNotificationName("a");
    EXPECT_THAT(calls, ElementsAre("any", "mine", "any", "any"));
}

TEST(NSNotificationCenter, BlocksMayChangeTheCenterWhileItDelivers) {
    NSNotificationCenter center;
    std::vector<std::string> calls;
    auto first = std::make_shared<int>();
    auto second = std::make_shared<int>();
    auto late = std::make_shared<int>();
    center.addObserver(first, "a", nullptr, [&](const NSNotification&) {
        calls.emplace_back("first");
        center.removeObserver(second.get());
        center.addObserver(late, "a", nullptr, [&](const NSNotification&) { calls.emplace_back("late"); });
        center.removeObserver(first.get());
        first.reset();
        center.postNotificationName("b");
        calls.emplace_back("first done");
    });
    center.addObserver(second, "a", nullptr, [&](const NSNotification&) { calls.emplace_back("second"); });
    center.addObserver(late, "b", nullptr, [&](const NSNotification&) { calls.emplace_back("nested"); });
    center.postNotificationName("a");
    EXPECT_THAT(calls, ElementsAre("first", "nested", "first done"));
    calls.clear();
    center.postNotificationName("a");
    EXPECT_THAT(calls, ElementsAre("late"));
}

TEST(NSNotificationCenter, ForgetsTheDead) {
    NSNotificationCenter center;
    int calls = 0;
    auto observer = std::make_shared<int>();
    auto killed = std::make_shared<int>();
    const auto captured = std::make_shared<int>();
    center.addObserver(observer, "a", nullptr, [&](const NSNotification&) { killed.reset(); });
    center.addObserver(killed, "a", nullptr, [&calls, captured](const NSNotification&) { ++calls; });
    center.postNotificationName("a");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(captured.use_count(), 1) << "the dead observer's block is kept";
}

TEST(DispatchQueue, DrainRunsWhatWasQueuedBefore) {
    DispatchQueue queue;
    std::vector<int> calls;
    std::size_t nested = 99;
    queue.async([&] {
        calls.push_back(1);
        queue.async([&] { calls.push_back(3); });
    });
    queue.async([&] { calls.push_back(2); });
    queue.async(nullptr);
    EXPECT_EQ(queue.drain(), 2U);
    EXPECT_THAT(calls, ElementsAre(1, 2));
    queue.async([&] { nested = queue.drain(); });
    EXPECT_EQ(queue.drain(), 2U);
    EXPECT_EQ(nested, 0U);
    EXPECT_EQ(queue.drain(), 0U);
    EXPECT_THAT(calls, ElementsAre(1, 2, 3));
}

TEST(DispatchQueue, TakesBlocksFromAnyThread) {
    DispatchQueue queue;
    int calls = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 1000; ++n)
                queue.async([&calls] { ++calls; });
        });
    }
    while (calls < 4000)
        queue.drain();
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(calls, 4000);
}

TEST(NSLog, HandsOverWholeLines) {
    LogCapture log;
    const std::string longText(5000, 'x');
    NSLog("%s %d", "fractal", 3);
    NSLog("%s", longText.c_str());
    NSLog("100%%");
    EXPECT_THAT(log.lines, ElementsAre("fractal 3", longText, "100%"));
}

}  // namespace
