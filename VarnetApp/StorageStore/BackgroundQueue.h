#pragma once

#include "VarnetCore/Base/SerialQueue.h"

#include <memory>

namespace varnet {

/// A thread that begins with its first task: a program that never measures a disk has none. Posted to from
/// the main thread only.
class BackgroundQueue final : public SerialQueue {
public:
    void postAfter(double seconds, Task task) override {
        if (!thread_) thread_ = std::make_unique<ThreadQueue>();
        thread_->postAfter(seconds, std::move(task));
    }
    /// Waits for the task that runs; the others are dropped.
    void end() { thread_.reset(); }

private:
    std::unique_ptr<ThreadQueue> thread_;
};

} // namespace varnet
