#pragma once

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Disk/DiskIndexDatabase.h"
#include "VarnetCore/Disk/DiskUsageScan.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace varnet {

/// Streams a walk into an index: folders before what is in them, and no word when a folder ends, which the
/// next path tells. Always inside a transaction; what was committed last is what questions see. One writer an
/// index, on one thread.
class DiskUsageIndexWriter {
public:
    /// Rows after which an unforced checkpoint commits.
    static constexpr std::int64_t rowsPerCommit = 8192;

    /// @param path of the database
    /// @param clock outlives the writer
    static DiskIndexResult<DiskUsageIndexWriter> open(const std::string& path, const Clock& clock);

    /// Begins a root; the one before has been finished.
    DiskIndexResult<> startRoot(std::string_view path, bool systemOnly);

    /// One thing that the walk has met. A path outside the root is ignored; the root's own path only counts
    /// what is unreadable.
    /// @param bytes allocated by itself
    DiskIndexResult<> record(std::string_view path, bool directory, std::uint64_t bytes, bool unreadable);

    /// Closes all that is open.
    /// @param finished false: what was open stays partial
    /// @param readError the walk has failed
    DiskIndexResult<> finishRoot(bool finished, bool readError);

    /// Makes everything so far visible to questions, folders that are still open with what they have by now.
    /// @param scan gives the counts and how the scan stands
    /// @param force false: only after enough rows
    DiskIndexResult<> checkpoint(const DiskUsageScan& scan, bool force);

    /// Hands rows that are still held back to the database. A name that its folder has twice is left out the
    /// second time and gives the code of a constraint (19); everything else has been written then.
    DiskIndexResult<> flush();

private:
    /// Rows of one INSERT: the cheapest size by measurement, a third faster than one by one.
    static constexpr std::size_t rowsPerInsert = 16;
    /// Names of open folders that were changed by composing them, remembered at most.
    static constexpr std::size_t mostComposed = 10'000;

    struct Frame {
        std::int64_t id = 0;
        std::size_t pathLength = 0; ///< its path is that much of `path_`
        std::uint64_t bytes = 0;    ///< of itself and all below that is closed
        std::uint64_t unreadable = 0;
    };

    struct Row {
        std::int64_t id = 0; ///< that the database will give it
        std::int64_t parent = 0;
        std::string name; ///< composed
        std::string raw;  ///< as it is on disk; empty: the same
        bool directory = false;
        std::uint64_t bytes = 0;
        std::uint64_t unreadable = 0;
        bool finished = false;
    };

    DiskUsageIndexWriter(DiskIndexDatabase database, DiskIndexStatement insert, DiskIndexStatement insertMany,
                         DiskIndexStatement update, const Clock& clock);

    std::string_view pathOfTop() const;
    DiskIndexResult<> closeDirectory(bool finished);
    DiskIndexResult<> writeFrame(std::int64_t id, std::uint64_t bytes, std::uint64_t unreadable,
                                 bool finished);
    DiskIndexResult<> insertOne(const Row& row, const std::string& name);
    DiskIndexResult<> insertApart();
    DiskIndexResult<bool> giveUpComposedName(std::int64_t parent, const std::string& name);
    DiskIndexResult<std::int64_t> existingRow(const Row& row);
    DiskIndexResult<> insertUnderSomeName(Row& row);
    void replaceID(std::int64_t dropped, std::int64_t by, std::span<Row> later);
    void remember(const Row& row);
    void forgetClosed();

    // In this order: statements end before their connection.
    DiskIndexDatabase db_;
    DiskIndexStatement insert_;
    DiskIndexStatement insertMany_;
    DiskIndexStatement update_;
    const Clock* clock_;

    std::string path_; ///< of the innermost folder that is or was open; each outer one's is its beginning
    std::vector<Frame> stack_; ///< folders from the root to where the walk is; the first `depth_` are in use
    std::size_t depth_ = 0;
    std::array<Row, rowsPerInsert> held_; ///< rows not yet in the database; the first `heldCount_`
    std::size_t heldCount_ = 0;
    std::int64_t nextID_ = 0;
    std::int64_t writes_ = 0; ///< rows since the last commit
    /// Name on disk of rows whose name was changed by composing it, by folder and composed name.
    std::unordered_map<std::int64_t, std::unordered_map<std::string, std::string>> composed_;
    std::size_t composedCount_ = 0;
};

} // namespace varnet
