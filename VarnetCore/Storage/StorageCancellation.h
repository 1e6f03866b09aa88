#pragma once

#include <mutex>

namespace varnet {

/// Stops a scan from any thread. Never goes back: every scan has its own.
class StorageCancellation {
public:
    bool cancelled() const {
        const std::lock_guard guard(lock_);
        return value_;
    }
    void cancel() {
        const std::lock_guard guard(lock_);
        value_ = true;
    }

private:
    mutable std::mutex lock_;
    bool value_ = false; ///< under the lock
};

} // namespace varnet
