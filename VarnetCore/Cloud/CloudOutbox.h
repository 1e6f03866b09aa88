#pragma once

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/Sqlite.h"
#include "VarnetCore/Cloud/CloudItem.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// Some of what waits to be sent, and which revisions that are.
struct CloudBatch {
    struct Acknowledgement {
        std::string kind;
        std::string id;
        std::int64_t revision = 0;

        friend bool operator==(const Acknowledgement&, const Acknowledgement&) = default;
    };

    std::string data = "[]"; ///< a JSON array
    std::vector<Acknowledgement> acknowledgements;
};

/// The queue between what is worth backing up and the service: what went in stays until the very revision
/// that was sent has been acknowledged, through crashes and failures. A database of its own. May be used from
/// several threads; they take turns.
class CloudOutbox {
public:
    /// Seconds that what was delivered is kept, where a restore does not need it.
    static constexpr double retention = 7'776'000;
    static constexpr int mostRows = 100;              ///< of a batch
    static constexpr std::size_t mostBytes = 600'000; ///< of a batch's payloads, save a single larger one

    /// Opens the queue, and makes it when there is none. Its folder and file are the user's alone.
    /// @param clock outlives the queue
    static CloudResult<std::unique_ptr<CloudOutbox>> open(const std::filesystem::path& file,
                                                          const Clock& clock);

    /// Takes items in, all or none. One whose contents are those it had changes nothing.
    /// @param scope one archive of one account
    CloudResult<> capture(std::span<const CloudItem> items, const std::string& scope);
    /// What has waited longest.
    CloudResult<CloudBatch> batch(const std::string& scope);
    /// The service has these revisions.
    CloudResult<> acknowledge(const CloudBatch& batch, const std::string& scope);
    /// Forgets all of a scope.
    CloudResult<> discard(const std::string& scope);

private:
    CloudOutbox(SqliteDatabase database, const Clock& clock) : db_(std::move(database)), clock_(clock) {}

    SqliteResult<> write(std::span<const CloudItem> items, const std::string& scope);
    SqliteResult<std::optional<CloudItem>> dailyApp(const CloudItem& item, const std::string& scope);
    SqliteResult<> runScoped(const char* sql, const std::string& scope);
    SqliteResult<> readRevision();

    std::mutex lock_;
    SqliteDatabase db_; ///< under the lock
    const Clock& clock_;
    std::int64_t revision_ = 0; ///< the last that was given out; under the lock
};

} // namespace varnet
