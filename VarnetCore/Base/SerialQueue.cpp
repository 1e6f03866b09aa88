#include "VarnetCore/Base/SerialQueue.h"

#include <algorithm>
#include <utility>

namespace varnet {

ThreadQueue::ThreadQueue() : thread_([this] { run(); }) {}

ThreadQueue::~ThreadQueue() {
    {
        const std::scoped_lock lock(mutex_);
        ending_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void ThreadQueue::postAfter(double seconds, Task task) {
    const auto delay = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    {
        const std::scoped_lock lock(mutex_);
        heap_.push_back({Clock::now() + delay, posted_++, std::move(task)});
        std::ranges::push_heap(heap_, Later{});
    }
    changed_.notify_one();
}

void ThreadQueue::run() {
    std::unique_lock lock(mutex_);
    while (!ending_) {
        if (heap_.empty()) {
            changed_.wait(lock);
        } else if (const auto due = heap_.front().due; Clock::now() < due) {
            changed_.wait_until(lock, due);
        } else {
            std::ranges::pop_heap(heap_, Later{});
            Task task = std::move(heap_.back().task);
            heap_.pop_back();
            lock.unlock();
            task();
            task = nullptr; // what it holds goes before the queue is touched again
            lock.lock();
        }
    }
}

} // namespace varnet
