#pragma once

#include "VarnetCore/Disk/DiskUsageScan.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

namespace varnet {

/// What a walk tells the thread that writes the index. The path lives until the next one is asked for.
struct DiskRecord {
    enum class Kind : std::uint8_t {
        root,       ///< a root begins; `flag`: it holds the system alone
        entry,      ///< something was met; `flag`: it is a directory
        rootFailed, ///< the root has ended in an error; `flag`: nothing was stopped
        rootEnd,    ///< the root has ended; `flag`: nothing was stopped
    };
    std::uint64_t bytes = 0;
    std::uint64_t entriesRead = 0;    ///< so far
    std::uint32_t unreadable = 0;     ///< so far
    std::uint32_t skippedVolumes = 0; ///< so far
    std::uint32_t pathLength = 0;
    Kind kind = Kind::entry;
    bool flag = false;
    bool isUnreadable = false;
};

/// A bounded way from one thread to another: records packed into chunks that are used over and over, so that
/// a million of them cost no allocation each. The sender waits when the receiver is far behind.
class DiskRecordStream {
public:
    struct Chunk {
        std::vector<char> bytes;
        std::unique_ptr<DiskUsageScan> publish; ///< to be made known after the records; null: nothing
    };

    /// The next record of a chunk; empty at its end.
    static std::optional<DiskRecord> next(const Chunk& chunk, std::size_t& position, std::string_view& path);

    // The sender's.
    void add(const DiskRecord& record, std::string_view path);
    /// Sends what there is, and a scan to make known.
    void publish(DiskUsageScan scan);
    /// Sends what there is; nothing follows.
    void end();

    // The receiver's.
    /// Waits for a chunk. @return null at the end
    std::unique_ptr<Chunk> take();
    void giveBack(std::unique_ptr<Chunk> chunk);

private:
    static constexpr std::size_t chunkSize =
        std::size_t{128} * 1024;                 ///< bytes, exceeded by one record at most
    static constexpr std::size_t mostChunks = 8; ///< on the way

    void send();

    std::unique_ptr<Chunk> filling_ = std::make_unique<Chunk>(); ///< sender only
    std::mutex lock_;
    std::condition_variable changed_;
    std::deque<std::unique_ptr<Chunk>> sent_;  ///< under the lock
    std::vector<std::unique_ptr<Chunk>> free_; ///< under the lock
    bool ended_ = false;                       ///< under the lock
};

} // namespace varnet
