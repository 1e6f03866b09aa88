#include "VarnetCore/Disk/DiskUsageIndex.h"

#include "VarnetCore/Base/Utf8.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace varnet {

namespace {

constexpr const char* schema = R"(PRAGMA journal_mode=WAL;
PRAGMA synchronous=NORMAL;
PRAGMA cache_size=-4096;
CREATE TABLE nodes(id INTEGER PRIMARY KEY, parent INTEGER, name TEXT NOT NULL,
    directory INTEGER NOT NULL, bytes INTEGER NOT NULL DEFAULT 0,
    unreadable INTEGER NOT NULL DEFAULT 0, finished INTEGER NOT NULL DEFAULT 0);
CREATE UNIQUE INDEX children ON nodes(parent, name);
CREATE TABLE roots(path TEXT PRIMARY KEY, node INTEGER NOT NULL, systemOnly INTEGER NOT NULL);
CREATE TABLE progress(id INTEGER PRIMARY KEY, entries INTEGER, unreadable INTEGER,
    skipped INTEGER, complete INTEGER, stopped INTEGER, date REAL, failure TEXT);
INSERT INTO progress VALUES(1,0,0,0,0,0,0,NULL);
INSERT INTO nodes(id,parent,name,directory) VALUES(1,NULL,'',1);)";

/// Under this node hang the roots that hold the system alone.
constexpr std::int64_t topNode = 1;

constexpr std::string_view dataVolume = "/System/Volumes/Data";

struct Root {
    std::string path;
    std::int64_t node = 0;
    bool systemOnly = false;
};

/// A folder whose children are asked for. Node 1 has no path.
struct Parent {
    std::int64_t node = 0;
    std::string path;
};

bool liesBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") return path.starts_with('/');
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder == "/" ? folder + name : folder + "/" + name;
}

/// One question, in one transaction: all that it reads is of the same moment.
class FolderQuery {
public:
    explicit FolderQuery(DiskIndexDatabase& database) : database_(database) {}

    DiskIndexResult<std::optional<DiskUsageScan>> run(const std::optional<std::string>& path) {
        if (auto roots = readRoots(); !roots) return std::unexpected(roots.error());
        if (roots_.empty()) return std::nullopt;
        if (path) {
            const DiskIndexResult<bool> found = find(*path);
            if (!found) return std::unexpected(found.error());
            if (!*found) return std::nullopt;
        } else {
            for (const Root& root : roots_)
                if (!root.systemOnly) parents_.push_back({root.node, root.path});
            parents_.push_back({topNode, {}});
        }
        DiskIndexResult<std::optional<DiskUsageScan>> result = readProgress();
        if (!result || !*result) return result;
        if (path)
            if (auto state = readState(**result); !state) return std::unexpected(state.error());
        if (auto rows = readRows(**result); !rows) return std::unexpected(rows.error());
        return result;
    }

private:
    DiskIndexResult<> readRoots() {
        auto query = DiskIndexStatement::prepare(
            database_, "SELECT path,node,systemOnly FROM roots ORDER BY length(path) DESC");
        if (!query) return std::unexpected(query.error());
        for (;;) {
            const auto row = query->step();
            if (!row) return std::unexpected(row.error());
            if (!*row) return {};
            roots_.push_back({query->text(0), query->integer(1), query->integer(2) != 0});
        }
    }

    /// Whether the path names a folder of the index; it is then the one parent.
    DiskIndexResult<bool> find(const std::string& path) {
        std::vector<std::string> candidates{path};
        if (path != "/" && !liesBelow(path, dataVolume)) candidates.push_back(std::string(dataVolume) + path);
        auto child = DiskIndexStatement::prepare(database_,
                                                 "SELECT id,directory FROM nodes WHERE parent=? AND name=?");
        if (!child) return std::unexpected(child.error());
        for (const std::string& candidate : candidates) {
            for (const Root& root : roots_) {
                if (!liesBelow(candidate, root.path)) continue;
                const auto node =
                    descend(*child, root.node, std::string_view(candidate).substr(root.path.size()));
                if (!node) return std::unexpected(node.error());
                if (!*node) continue;
                parents_.push_back({**node, candidate});
                return true;
            }
        }
        return false;
    }

    static DiskIndexResult<std::optional<std::int64_t>> descend(DiskIndexStatement& child, std::int64_t node,
                                                                std::string_view rest) {
        while (!rest.empty()) {
            const std::size_t slash = rest.find('/');
            const std::string_view name = rest.substr(0, slash);
            rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash + 1);
            if (name.empty()) continue;
            // As it is first: that is how a name is kept whose composed form another one has.
            auto below = look(child, node, std::string(name));
            if (below && !*below) {
                const std::string composed = composedUtf8(name);
                if (composed != name) below = look(child, node, composed);
            }
            if (!below || !*below) return below;
            node = **below;
        }
        return node;
    }

    static DiskIndexResult<std::optional<std::int64_t>> look(DiskIndexStatement& child, std::int64_t parent,
                                                             const std::string& name) {
        child.reset();
        child.bind(1, parent);
        child.bind(2, name);
        const auto row = child.step();
        if (!row) return std::unexpected(row.error());
        if (!*row || child.integer(1) == 0) return std::nullopt;
        return child.integer(0);
    }

    DiskIndexResult<std::optional<DiskUsageScan>> readProgress() {
        auto query = DiskIndexStatement::prepare(
            database_,
            "SELECT entries,unreadable,skipped,complete,stopped,date,failure FROM progress WHERE id=1");
        if (!query) return std::unexpected(query.error());
        const auto row = query->step();
        if (!row) return std::unexpected(row.error());
        if (!*row) return std::nullopt;
        DiskUsageScan scan;
        scan.entriesRead = static_cast<std::uint64_t>(std::max<std::int64_t>(query->integer(0), 0));
        scan.unreadable = query->integer(1);
        scan.skippedVolumes = query->integer(2);
        scan.complete = query->integer(3) != 0;
        scan.stopped = query->integer(4) != 0;
        scan.date = Date::fromUnix(query->real(5));
        if (!query->isNull(6)) scan.failure = query->text(6);
        return scan;
    }

    /// A folder that is through is complete while the rest of the disk is still being measured.
    DiskIndexResult<> readState(DiskUsageScan& scan) {
        auto query =
            DiskIndexStatement::prepare(database_, "SELECT unreadable,finished FROM nodes WHERE id=?");
        if (!query) return std::unexpected(query.error());
        query->bind(1, parents_.front().node);
        const auto row = query->step();
        if (!row) return std::unexpected(row.error());
        if (*row) {
            scan.unreadable = query->integer(0);
            scan.complete = query->integer(1) != 0;
            scan.stopped = scan.stopped && !scan.complete;
        }
        return {};
    }

    DiskIndexResult<> readRows(DiskUsageScan& scan) {
        // Only numbers that were read here; never a text of the user's.
        std::string clause = "parent IN (";
        for (const Parent& parent : parents_) {
            if (&parent != &parents_.front()) clause += ',';
            clause += std::to_string(parent.node);
        }
        clause += ')';
        auto query = DiskIndexStatement::prepare(
            database_, ("SELECT parent,name,directory,bytes,unreadable,finished FROM nodes WHERE " + clause +
                        " ORDER BY bytes DESC,name LIMIT " + std::to_string(mostDiskRows))
                           .c_str());
        if (!query) return std::unexpected(query.error());
        for (;;) {
            const auto row = query->step();
            if (!row) return std::unexpected(row.error());
            if (!*row) break;
            const std::int64_t parent = query->integer(0);
            DiskUsageEntry entry;
            entry.name = query->text(1);
            entry.path = parent == topNode ? "/" : joined(pathOf(parent), entry.name);
            entry.directory = query->integer(2) != 0;
            entry.bytes = static_cast<std::uint64_t>(std::max<std::int64_t>(query->integer(3), 0));
            entry.partial = query->integer(4) > 0 || query->integer(5) == 0;
            scan.entries.push_back(std::move(entry));
        }
        return scan.entries.size() == mostDiskRows ? readRest(scan, clause) : DiskIndexResult<>{};
    }

    /// The row that stands for all beyond the last one.
    DiskIndexResult<> readRest(DiskUsageScan& scan, const std::string& clause) {
        const std::uint64_t listed = scan.bytes();
        // A sum that is too large for SQLite is an error there; added up as real numbers it is not.
        std::uint64_t sum = 0;
        auto query = DiskIndexStatement::prepare(
            database_,
            ("SELECT count(*),sum(bytes),max(unreadable),min(finished) FROM nodes WHERE " + clause).c_str());
        if (!query) return std::unexpected(query.error());
        auto row = query->step();
        if (row) {
            sum = static_cast<std::uint64_t>(std::max<std::int64_t>(query->integer(1), 0));
        } else {
            sum = INT64_MAX;
            query = DiskIndexStatement::prepare(
                database_,
                ("SELECT count(*),0,max(unreadable),min(finished) FROM nodes WHERE " + clause).c_str());
            if (!query) return std::unexpected(query.error());
            row = query->step();
        }
        if (!row) return std::unexpected(row.error());
        const std::int64_t count = query->integer(0);
        constexpr auto most = static_cast<std::int64_t>(mostDiskRows);
        if (count > most)
            scan.entries.push_back({otherFilesPath, std::to_string(count - most) + " more items", false,
                                    sum > listed ? sum - listed : 0,
                                    query->integer(2) > 0 || query->integer(3) == 0});
        return {};
    }

    const std::string& pathOf(std::int64_t node) const {
        static const std::string none;
        const auto parent = std::ranges::find(parents_, node, &Parent::node);
        return parent == parents_.end() ? none : parent->path;
    }

    DiskIndexDatabase& database_;
    std::vector<Root> roots_; ///< longest path first
    std::vector<Parent> parents_;
};

} // namespace

DiskUsageIndex::DiskUsageIndex(DiskIndexFolder folder)
    : folder_(std::move(folder)), database_((folder_.path() / "inventory.sqlite").string()) {}

DiskIndexResult<std::shared_ptr<DiskUsageIndex>>
DiskUsageIndex::make(const std::filesystem::path& temporary) {
    std::optional<DiskIndexFolder> folder = DiskIndexFolder::make(temporary);
    if (!folder) return std::unexpected(DiskIndexError{SQLITE_CANTOPEN});
    std::shared_ptr<DiskUsageIndex> index(new DiskUsageIndex(std::move(*folder)));
    auto database = DiskIndexDatabase::open(index->database_, DiskIndexDatabase::Access::write);
    if (!database) return std::unexpected(database.error());
    if (auto made = database->execute(schema); !made) return std::unexpected(made.error());
    return index;
}

DiskIndexResult<std::optional<DiskUsageScan>>
DiskUsageIndex::folder(const std::optional<std::string>& path) const {
    auto database = DiskIndexDatabase::open(database_, DiskIndexDatabase::Access::read);
    if (!database) return std::unexpected(database.error());
    if (auto begun = database->execute("BEGIN"); !begun) return std::unexpected(begun.error());
    auto result = FolderQuery(*database).run(path);
    if (auto ended = database->execute("ROLLBACK"); !ended && result) return std::unexpected(ended.error());
    return result;
}

} // namespace varnet
