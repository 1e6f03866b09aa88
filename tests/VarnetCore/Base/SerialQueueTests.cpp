#include "VarnetCore/Base/SerialQueue.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace varnet {
namespace {

TEST(ThreadQueueTest, runsByDueTimeThenInOrderOfPosting) {
    std::vector<int> order;
    std::promise<void> done;
    {
        ThreadQueue queue;
        queue.post([&] { // posted from inside, so that nothing runs before all are there
            queue.postAfter(0.02, [&] { order.push_back(4); });
            queue.postAfter(0.01, [&] { order.push_back(3); });
            queue.post([&] { order.push_back(1); });
            queue.post([&] { order.push_back(2); });
            queue.postAfter(0.03, [&] { done.set_value(); });
        });
        done.get_future().wait();
    }
    EXPECT_EQ(order, (std::vector{1, 2, 3, 4}));
}

TEST(ThreadQueueTest, tasksOfManyThreadsNeverOverlap) {
    int count = 0; // without a lock: the queue is one
    {
        ThreadQueue queue;
        std::vector<std::thread> posters;
        for (int i = 0; i < 4; ++i) {
            posters.emplace_back([&] {
                for (int n = 0; n < 1'000; ++n)
                    queue.post([&] { ++count; });
            });
        }
        for (std::thread& poster : posters)
            poster.join();
        std::promise<void> done;
        queue.post([&] { done.set_value(); });
        done.get_future().wait();
    }
    EXPECT_EQ(count, 4'000);
}

TEST(ThreadQueueTest, itsEndWaitsForTheRunningTaskAndDropsTheRest) {
    const auto held = std::make_shared<int>();
    bool finished = false;
    bool late = false;
    {
        ThreadQueue queue;
        std::promise<void> started;
        queue.post([&] {
            started.set_value();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            finished = true;
        });
        queue.postAfter(3'600, [&late, held] { late = true; });
        started.get_future().wait();
    }
    EXPECT_TRUE(finished);
    EXPECT_FALSE(late);
    EXPECT_EQ(held.use_count(), 1) << "what a dropped task held is let go";
}

} // namespace
} // namespace varnet
