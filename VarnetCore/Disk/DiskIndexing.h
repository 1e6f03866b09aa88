#pragma once

#include "VarnetCore/Disk/DiskRecordStream.h"
#include "VarnetCore/Disk/DiskUsageIndexWriter.h"

#include <atomic>
#include <functional>
#include <string_view>
#include <thread>

namespace varnet {

/// The half of a scan that writes: a thread of its own, so that the walk and the database each have a core.
/// Records go in on one thread; what is to be made known comes out on the other, once it is committed.
class DiskIndexing {
public:
    using Update = std::function<void(const DiskUsageScan&)>;

    /// @param update on the writing thread
    DiskIndexing(DiskUsageIndexWriter writer, Update update);
    DiskIndexing(const DiskIndexing&) = delete;
    DiskIndexing& operator=(const DiskIndexing&) = delete;
    /// Waits for the end of what was sent.
    ~DiskIndexing();

    /// The database has refused something: the scan is to be stopped. What is still sent closes what is open
    /// as far as that succeeds.
    bool failed() const noexcept { return failed_.load(std::memory_order_relaxed); }

    void send(const DiskRecord& record, std::string_view path) { stream_.add(record, path); }
    void publish(DiskUsageScan scan) { stream_.publish(std::move(scan)); }
    /// Waits until all that was sent is in the database.
    void finish();

private:
    void run();
    DiskIndexResult<> write(const DiskRecord& record, std::string_view path);

    DiskUsageIndexWriter writer_; ///< the thread's
    const Update update_;
    std::atomic<bool> failed_ = false;
    DiskRecordStream stream_;
    std::thread thread_; ///< last, so that the rest is there when it begins
};

} // namespace varnet
