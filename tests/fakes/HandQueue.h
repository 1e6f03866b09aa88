#pragma once

#include "VarnetCore/Base/SerialQueue.h"
#include "tests/fakes/FakeClock.h"

#include <map>
#include <utility>

namespace varnet {

/// A queue that a test turns by hand: tasks run on the test's thread when the fake clock reaches them.
class HandQueue final : public SerialQueue {
public:
    explicit HandQueue(FakeClock& clock) : clock_(clock) {}

    void postAfter(double seconds, Task task) override {
        tasks_.emplace(clock_.now() + seconds, std::move(task));
    }

    /// Runs what is due now.
    void run() { advance(0); }

    /// Advances the clock, stopping at each task on the way to run it.
    void advance(double seconds) {
        const Date end = clock_.now() + seconds;
        while (!tasks_.empty() && tasks_.begin()->first <= end) {
            const double ahead = tasks_.begin()->first - clock_.now();
            if (ahead > 0) clock_.advance(ahead);
            auto task = std::move(tasks_.begin()->second);
            tasks_.erase(tasks_.begin());
            task();
        }
        clock_.advance(end - clock_.now());
    }

    std::size_t waiting() const noexcept { return tasks_.size(); }

private:
    FakeClock& clock_;
    std::multimap<Date, Task> tasks_;
};

} // namespace varnet
