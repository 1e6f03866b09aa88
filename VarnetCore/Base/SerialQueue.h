#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace varnet {

/// Runs tasks one at a time, so that what they touch needs no lock. May be posted to from any thread.
class SerialQueue {
public:
    /// Must not throw.
    using Task = std::function<void()>;

    virtual ~SerialQueue() = default;

    /// Runs the task after those posted before it.
    void post(Task task) { postAfter(0, std::move(task)); }
    /// Runs the task once so many seconds have passed; others run meanwhile.
    virtual void postAfter(double seconds, Task task) = 0;
};

/// A queue with a thread of its own. Its end waits for the task that runs and drops those that do not yet.
class ThreadQueue final : public SerialQueue {
public:
    ThreadQueue();
    ~ThreadQueue() override;

    void postAfter(double seconds, Task task) override;

private:
    using Clock = std::chrono::steady_clock;
    struct Entry {
        Clock::time_point due;
        std::uint64_t order; ///< tasks of one moment run as they were posted
        Task task;
    };
    /// Puts the entry due first at the top of a heap.
    struct Later {
        bool operator()(const Entry& a, const Entry& b) const noexcept {
            return a.due != b.due ? a.due > b.due : a.order > b.order;
        }
    };

    void run();

    std::mutex mutex_;
    // Guarded by the mutex.
    std::condition_variable changed_;
    std::vector<Entry> heap_;
    std::uint64_t posted_ = 0;
    bool ending_ = false;

    std::thread thread_; ///< last: it uses all of the above
};

} // namespace varnet
