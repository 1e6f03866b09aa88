#include "VarnetCore/Disk/DiskUsageIndexWriter.h"

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Base/Utf8.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace varnet {

namespace {

std::int64_t clamped(std::uint64_t value) noexcept {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return static_cast<std::int64_t>(std::min(value, most));
}

std::uint64_t sum(std::uint64_t a, std::uint64_t b) noexcept {
    std::uint64_t result = 0;
    return __builtin_add_overflow(a, b, &result) ? std::numeric_limits<std::uint64_t>::max() : result;
}

std::string manyRows(std::size_t count) {
    std::string sql =
        "INSERT INTO nodes(parent,name,directory,bytes,unreadable,finished) VALUES(?,?,?,?,?,?)";
    for (std::size_t row = 1; row < count; ++row)
        sql += ",(?,?,?,?,?,?)";
    return sql;
}

} // namespace

DiskUsageIndexWriter::DiskUsageIndexWriter(DiskIndexDatabase database, DiskIndexStatement insert,
                                           DiskIndexStatement insertMany, DiskIndexStatement update,
                                           const Clock& clock)
    : db_(std::move(database)), insert_(std::move(insert)), insertMany_(std::move(insertMany)),
      update_(std::move(update)), clock_(&clock) {}

DiskIndexResult<DiskUsageIndexWriter> DiskUsageIndexWriter::open(const std::string& path,
                                                                 const Clock& clock) {
    auto database = DiskIndexDatabase::open(path, DiskIndexDatabase::Access::write);
    if (!database) return std::unexpected(database.error());
    auto insert = DiskIndexStatement::prepare(
        *database, "INSERT INTO nodes(parent,name,directory,bytes,unreadable,finished) VALUES(?,?,?,?,?,?)");
    if (!insert) return std::unexpected(insert.error());
    auto insertMany = DiskIndexStatement::prepare(*database, manyRows(rowsPerInsert).c_str());
    if (!insertMany) return std::unexpected(insertMany.error());
    auto update =
        DiskIndexStatement::prepare(*database, "UPDATE nodes SET bytes=?,unreadable=?,finished=? WHERE id=?");
    if (!update) return std::unexpected(update.error());
    // Unlike the journal's kind, how often it is flushed is each connection's own.
    if (auto set = database->execute("PRAGMA synchronous=NORMAL"); !set) return std::unexpected(set.error());
    if (auto begun = database->execute("PRAGMA cache_size=-4096; BEGIN IMMEDIATE"); !begun)
        return std::unexpected(begun.error());
    return DiskUsageIndexWriter(std::move(*database), std::move(*insert), std::move(*insertMany),
                                std::move(*update), clock);
}

DiskIndexResult<> DiskUsageIndexWriter::startRoot(std::string_view path, bool systemOnly) {
    if (auto flushed = flush(); !flushed) return flushed;
    const std::string name(systemOnly ? std::string_view("macOS") : LexicalPath::lastComponent(path));
    if (systemOnly) {
        insert_.bind(1, std::int64_t{1});
    } else {
        insert_.bindNull(1);
    }
    insert_.bind(2, name);
    insert_.bind(3, std::int64_t{1});
    for (const int column : {4, 5, 6})
        insert_.bind(column, std::int64_t{0});
    if (auto inserted = insert_.run(); !inserted) return inserted;
    const std::int64_t id = db_.lastInsertedRow();
    nextID_ = id + 1;

    auto root = DiskIndexStatement::prepare(db_, "INSERT INTO roots VALUES(?,?,?)");
    if (!root) return std::unexpected(root.error());
    root->bind(1, std::string(path));
    root->bind(2, id);
    root->bind(3, std::int64_t{systemOnly});
    if (auto inserted = root->run(); !inserted) return inserted;
    if (stack_.empty()) stack_.emplace_back();
    path_ = path;
    stack_.front() = {id, path.size(), 0, 0};
    depth_ = 1;
    return {};
}

DiskIndexResult<> DiskUsageIndexWriter::record(std::string_view path, bool directory, std::uint64_t bytes,
                                               bool unreadable) {
    if (depth_ > 0 && path == pathOfTop()) {
        stack_[depth_ - 1].unreadable += unreadable ? 1 : 0;
        return {};
    }
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos || depth_ == 0) return {};
    const std::string_view parent = slash == 0 ? path.substr(0, 1) : path.substr(0, slash);
    while (pathOfTop() != parent) {
        if (depth_ == 1) return {};
        if (auto closed = closeDirectory(true); !closed) return closed;
    }
    if (heldCount_ == rowsPerInsert)
        if (auto flushed = flush(); !flushed) return flushed;

    Frame& folder = stack_[depth_ - 1];
    const std::string_view name = path.substr(slash + 1);
    Row& row = held_[heldCount_++];
    row.id = nextID_++;
    row.parent = folder.id;
    row.name.assign(name);
    row.raw.clear();
    if (const bool ascii =
            std::ranges::all_of(name, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
        !ascii) {
        row.name = composedUtf8(name);
        if (row.name != name) row.raw.assign(name);
    }
    row.directory = directory;
    row.bytes = bytes;
    row.unreadable = unreadable ? 1 : 0;
    row.finished = !directory;
    if (directory) {
        if (stack_.size() == depth_) stack_.emplace_back();
        Frame& frame = stack_[depth_++];
        frame.id = row.id;
        path_.assign(path);
        frame.pathLength = path.size();
        frame.bytes = bytes;
        frame.unreadable = row.unreadable;
    } else {
        folder.bytes = sum(folder.bytes, bytes);
        folder.unreadable += row.unreadable;
    }
    ++writes_;
    return {};
}

std::string_view DiskUsageIndexWriter::pathOfTop() const {
    return std::string_view(path_).substr(0, stack_[depth_ - 1].pathLength);
}

DiskIndexResult<> DiskUsageIndexWriter::closeDirectory(bool finished) {
    const Frame& frame = stack_[--depth_];
    if (depth_ > 0) {
        Frame& parent = stack_[depth_ - 1];
        parent.bytes = sum(parent.bytes, frame.bytes);
        parent.unreadable += frame.unreadable;
    }
    return writeFrame(frame.id, frame.bytes, frame.unreadable, finished);
}

DiskIndexResult<> DiskUsageIndexWriter::writeFrame(std::int64_t id, std::uint64_t bytes,
                                                   std::uint64_t unreadable, bool finished) {
    // Most folders are small: their row has not left yet and goes out with its final values.
    if (heldCount_ > 0 && id >= held_.front().id) {
        Row& row = held_[static_cast<std::size_t>(id - held_.front().id)];
        row.bytes = bytes;
        row.unreadable = unreadable;
        row.finished = finished;
        return {};
    }
    update_.bind(1, clamped(bytes));
    update_.bind(2, clamped(unreadable));
    update_.bind(3, std::int64_t{finished});
    update_.bind(4, id);
    return update_.run();
}

DiskIndexResult<> DiskUsageIndexWriter::finishRoot(bool finished, bool readError) {
    if (readError && depth_ > 0) stack_[depth_ - 1].unreadable += 1;
    while (depth_ > 0)
        if (auto closed = closeDirectory(finished); !closed) return closed;
    return {};
}

DiskIndexResult<> DiskUsageIndexWriter::checkpoint(const DiskUsageScan& scan, bool force) {
    if (!force && writes_ < rowsPerCommit) return {};
    const DiskIndexResult<> flushed = flush();
    if (!flushed && flushed.error().code != SQLITE_CONSTRAINT) return flushed;
    std::uint64_t bytes = 0;
    std::uint64_t unreadable = 0;
    for (std::size_t frame = depth_; frame-- > 0;) {
        bytes = sum(bytes, stack_[frame].bytes);
        unreadable += stack_[frame].unreadable;
        if (auto written = writeFrame(stack_[frame].id, bytes, unreadable, false); !written) return written;
    }
    auto progress = DiskIndexStatement::prepare(
        db_, "UPDATE progress SET entries=?,unreadable=?,skipped=?,complete=?,stopped=?,date=?,failure=? "
             "WHERE id=1");
    if (!progress) return std::unexpected(progress.error());
    progress->bind(1, clamped(scan.entriesRead));
    progress->bind(2, scan.unreadable);
    progress->bind(3, scan.skippedVolumes);
    progress->bind(4, std::int64_t{scan.complete});
    progress->bind(5, std::int64_t{scan.stopped});
    progress->bind(6, clock_->now().sinceUnixEpoch());
    if (scan.failure) {
        progress->bind(7, *scan.failure);
    } else {
        progress->bindNull(7);
    }
    if (auto written = progress->run(); !written) return written;
    if (auto committed = db_.execute("COMMIT; BEGIN IMMEDIATE"); !committed) return committed;
    writes_ = 0;
    return flushed;
}

DiskIndexResult<> DiskUsageIndexWriter::insertOne(const Row& row, const std::string& name) {
    insert_.bind(1, row.parent);
    insert_.bind(2, name);
    insert_.bind(3, std::int64_t{row.directory});
    insert_.bind(4, clamped(row.bytes));
    insert_.bind(5, clamped(row.unreadable));
    insert_.bind(6, std::int64_t{row.finished});
    return insert_.run();
}

DiskIndexResult<> DiskUsageIndexWriter::flush() {
    if (heldCount_ < rowsPerInsert) return insertApart();
    int column = 1;
    for (const Row& row : held_) {
        insertMany_.bind(column++, row.parent);
        insertMany_.bind(column++, row.name);
        insertMany_.bind(column++, std::int64_t{row.directory});
        insertMany_.bind(column++, clamped(row.bytes));
        insertMany_.bind(column++, clamped(row.unreadable));
        insertMany_.bind(column++, std::int64_t{row.finished});
    }
    const DiskIndexResult<> inserted = insertMany_.run();
    if (!inserted)
        return inserted.error().code == SQLITE_CONSTRAINT ? insertApart()
                                                          : inserted; // nothing of it is there
    for (const Row& row : held_)
        remember(row);
    heldCount_ = 0;
    return {};
}

/// Row by row: for the few at the end, and to find out which name its folder has already.
DiskIndexResult<> DiskUsageIndexWriter::insertApart() {
    const std::size_t count = std::exchange(heldCount_, 0);
    DiskIndexResult<> result;
    for (std::size_t at = 0; at < count; ++at) {
        Row& row = held_[at];
        const DiskIndexResult<> inserted = insertUnderSomeName(row);
        if (inserted) {
            if (db_.lastInsertedRow() != row.id) return std::unexpected(DiskIndexError{SQLITE_CORRUPT});
            remember(row);
            continue;
        }
        if (inserted.error().code != SQLITE_CONSTRAINT) return inserted;
        // The same name twice: the folder was changed while it was read. One row stands for both; the space
        // of both was seen and counts.
        const auto existing = existingRow(row);
        if (!existing) return std::unexpected(existing.error());
        result = inserted;
        replaceID(row.id, *existing, std::span(held_).subspan(at + 1, count - at - 1));
    }
    return result;
}

/// As composed; where a sibling has that name, one of the two gets back the one that it has on disk.
DiskIndexResult<> DiskUsageIndexWriter::insertUnderSomeName(Row& row) {
    DiskIndexResult<> inserted = insertOne(row, row.name);
    if (inserted || inserted.error().code != SQLITE_CONSTRAINT) return inserted;
    if (!row.raw.empty()) {
        row.name = std::exchange(row.raw, {});
        return insertOne(row, row.name);
    }
    const DiskIndexResult<bool> freed = giveUpComposedName(row.parent, row.name);
    if (!freed) return std::unexpected(freed.error());
    return *freed ? insertOne(row, row.name) : inserted;
}

/// A row that was held back is not going to be: what refers to it refers to another one, and those after it
/// move up by one.
void DiskUsageIndexWriter::replaceID(std::int64_t dropped, std::int64_t by, std::span<Row> later) {
    const auto replaced = [&](std::int64_t id) { return id == dropped ? by : id > dropped ? id - 1 : id; };
    for (Row& row : later) {
        row.id = replaced(row.id);
        row.parent = replaced(row.parent);
    }
    for (std::size_t frame = 0; frame < depth_; ++frame)
        stack_[frame].id = replaced(stack_[frame].id);
    --nextID_;
}

/// Whether a sibling had the name only by composing its own; it has its own again then.
DiskIndexResult<bool> DiskUsageIndexWriter::giveUpComposedName(std::int64_t parent, const std::string& name) {
    const auto names = composed_.find(parent);
    if (names == composed_.end()) return false;
    const auto own = names->second.find(name);
    if (own == names->second.end()) return false;
    auto rename = DiskIndexStatement::prepare(db_, "UPDATE nodes SET name=? WHERE parent=? AND name=?");
    if (!rename) return std::unexpected(rename.error());
    rename->bind(1, own->second);
    rename->bind(2, parent);
    rename->bind(3, name);
    if (auto renamed = rename->run(); !renamed) return std::unexpected(renamed.error());
    names->second.erase(own);
    --composedCount_;
    return true;
}

DiskIndexResult<std::int64_t> DiskUsageIndexWriter::existingRow(const Row& row) {
    auto query = DiskIndexStatement::prepare(db_, "SELECT id FROM nodes WHERE parent=? AND name=?");
    if (!query) return std::unexpected(query.error());
    query->bind(1, row.parent);
    query->bind(2, row.name);
    const auto found = query->step();
    if (!found) return std::unexpected(found.error());
    return *found ? query->integer(0) : row.id;
}

void DiskUsageIndexWriter::remember(const Row& row) {
    if (row.raw.empty()) return;
    if (composedCount_ >= mostComposed) forgetClosed();
    if (composedCount_ < mostComposed && composed_[row.parent].emplace(row.name, row.raw).second)
        ++composedCount_;
}

/// Once a folder is through, no sibling can come.
void DiskUsageIndexWriter::forgetClosed() {
    const std::span open(stack_.data(), depth_);
    std::erase_if(composed_, [&](const auto& names) {
        return std::ranges::find(open, names.first, &Frame::id) == open.end();
    });
    composedCount_ = 0;
    for (const auto& [folder, names] : composed_)
        composedCount_ += names.size();
}

} // namespace varnet
