#include "VarnetCore/Cloud/CloudOutbox.h"

#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/Sha256.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <system_error>

namespace varnet {

namespace {

using Json = nlohmann::json;

constexpr const char* schema =
    "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA busy_timeout=3000; "
    "CREATE TABLE IF NOT EXISTS items(scope TEXT,kind TEXT,id TEXT,at REAL,payload TEXT,revision "
    "INTEGER,dirty "
    "INTEGER,PRIMARY KEY(scope,kind,id)); CREATE INDEX IF NOT EXISTS dirty_items ON items(scope,dirty); "
    "CREATE "
    "TABLE IF NOT EXISTS app_windows(scope TEXT,id TEXT,at REAL,PRIMARY KEY(scope,id));";

/// Beside it, the last revision ever given out: rows that were discarded must not come back under one that
/// the service has seen. And the rows that wait in their order, or each batch of a long queue would sort it.
constexpr const char* additions =
    "CREATE INDEX IF NOT EXISTS waiting_items ON items(scope,revision,kind,id) WHERE dirty=1; "
    "CREATE TABLE IF NOT EXISTS revisions(id INTEGER PRIMARY KEY CHECK(id=1),last INTEGER NOT NULL); "
    "INSERT OR IGNORE INTO revisions VALUES(1,0);";

constexpr const char* upsert =
    "INSERT INTO items VALUES(?,?,?,?,?,?,1) ON CONFLICT(scope,kind,id) DO UPDATE SET "
    "at=excluded.at,payload=excluded.payload,revision=max(items.revision+1,excluded.revision),dirty=1 WHERE "
    "items.payload<>excluded.payload";

/// A value as it reads, and "nil" for one that is not there.
std::string plain(const Json& object, const char* key) {
    const auto value = object.find(key);
    if (value == object.end() || value->is_null()) return "nil";
    return value->is_string() ? value->get<std::string>() : value->dump();
}

double numberOf(const Json& object, const char* key) {
    const auto value = object.find(key);
    return value != object.end() && value->is_number() ? value->get<double>() : 0;
}

std::unexpected<CloudStorageError> writeFailed() {
    return std::unexpected(CloudStorageError::fileWriteUnknown);
}

} // namespace

CloudResult<std::unique_ptr<CloudOutbox>> CloudOutbox::open(const std::filesystem::path& file,
                                                            const Clock& clock) {
    if (AtomicFile::makePrivateFolder(file.parent_path())) return writeFailed();
    auto database = SqliteDatabase::open(file.string(), SqliteDatabase::Access::shared);
    if (!database) return std::unexpected(CloudStorageError::fileReadCorruptFile);
    if (!database->execute(schema) || !database->execute(additions)) return writeFailed();
    std::error_code error;
    std::filesystem::permissions(
        file, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write, error);
    if (error) return writeFailed();
    std::unique_ptr<CloudOutbox> outbox(new CloudOutbox(std::move(*database), clock));
    if (!outbox->readRevision()) return writeFailed();
    return outbox;
}

SqliteResult<> CloudOutbox::readRevision() {
    auto query = SqliteStatement::prepare(
        db_,
        "SELECT max((SELECT last FROM revisions WHERE id=1),(SELECT ifnull(max(revision),0) FROM items))");
    if (!query) return std::unexpected(query.error());
    const auto row = query->step();
    if (!row) return std::unexpected(row.error());
    revision_ = query->integer(0);
    return {};
}

CloudResult<> CloudOutbox::capture(std::span<const CloudItem> items, const std::string& scope) {
    const std::lock_guard guard(lock_);
    if (!db_.execute("BEGIN IMMEDIATE")) return writeFailed();
    const std::int64_t before = revision_;
    if (write(items, scope) && db_.execute("COMMIT")) return {};
    revision_ = before;
    (void)db_.execute("ROLLBACK"); // what failed is rolled back when the file is opened again, at the latest
    return writeFailed();
}

SqliteResult<> CloudOutbox::write(std::span<const CloudItem> items, const std::string& scope) {
    auto insert = SqliteStatement::prepare(db_, upsert);
    if (!insert) return std::unexpected(insert.error());
    for (const CloudItem& captured : items) {
        std::optional<CloudItem> item = captured;
        if (captured.kind == "app") {
            auto daily = dailyApp(captured, scope);
            if (!daily) return std::unexpected(daily.error());
            item = std::move(*daily);
        }
        if (!item) continue;
        insert->bind(1, scope);
        insert->bind(2, item->kind);
        insert->bind(3, item->id);
        insert->bind(4, item->at);
        insert->bind(5, item->data);
        insert->bind(6, ++revision_);
        if (auto written = insert->run(); !written) return written;
    }
    auto old = SqliteStatement::prepare(db_, "DELETE FROM items WHERE scope=? AND dirty=0 AND kind NOT IN "
                                             "('collection','day','session') AND at<?");
    if (!old) return std::unexpected(old.error());
    old->bind(1, scope);
    old->bind(2, clock_.now().sinceUnixEpoch() - retention);
    if (auto deleted = old->run(); !deleted) return deleted;
    if (auto deleted = db_.execute("DELETE FROM app_windows WHERE NOT EXISTS (SELECT 1 FROM items WHERE "
                                   "items.scope=app_windows.scope AND items.kind='app' AND "
                                   "items.id=app_windows.id)");
        !deleted)
        return deleted;
    // No row has a higher revision than the counter: each was given out by it.
    auto remember = SqliteStatement::prepare(db_, "UPDATE revisions SET last=? WHERE id=1");
    if (!remember) return std::unexpected(remember.error());
    remember->bind(1, revision_);
    return remember->run();
}

SqliteResult<std::optional<CloudItem>> CloudOutbox::dailyApp(const CloudItem& item,
                                                             const std::string& scope) {
    Json payload = Json::parse(item.data, nullptr, false);
    if (!payload.is_object() || !payload.contains("appID") || !payload["appID"].is_string()) return item;
    const double days = std::trunc(item.at / 86'400) * 86'400;
    const std::string key = std::to_string(static_cast<std::int64_t>(days)) + ":" + item.aggregationKey +
                            ":" + plain(payload, "appID") + ":" + plain(payload, "version") + ":" +
                            plain(payload, "cores") + ":" + plain(payload, "ramGB");
    const std::string id = sha256(key);

    auto window = SqliteStatement::prepare(db_, "SELECT at FROM app_windows WHERE scope=? AND id=?");
    if (!window) return std::unexpected(window.error());
    window->bind(1, scope);
    window->bind(2, id);
    const auto seen = window->step();
    if (!seen) return std::unexpected(seen.error());
    if (*seen && item.at <= window->real(0)) return std::nullopt; // this minute is counted already

    auto row =
        SqliteStatement::prepare(db_, "SELECT payload FROM items WHERE scope=? AND kind='app' AND id=?");
    if (!row) return std::unexpected(row.error());
    row->bind(1, scope);
    row->bind(2, id);
    const auto earlier = row->step();
    if (!earlier) return std::unexpected(earlier.error());
    if (*earlier) {
        const Json before = Json::parse(row->text(0), nullptr, false);
        for (const char* sum : {"seconds", "cpuSeconds", "memorySeconds"})
            payload[sum] = numberOf(payload, sum) + (before.is_object() ? numberOf(before, sum) : 0);
    }
    auto mark = SqliteStatement::prepare(
        db_, "INSERT INTO app_windows VALUES(?,?,?) ON CONFLICT(scope,id) DO UPDATE SET at=excluded.at");
    if (!mark) return std::unexpected(mark.error());
    mark->bind(1, scope);
    mark->bind(2, id);
    mark->bind(3, item.at);
    if (auto marked = mark->run(); !marked) return std::unexpected(marked.error());
    auto daily = CloudItem::make("app", id, item.at, payload);
    if (!daily) return std::nullopt; // a sum beyond all numbers
    return daily;
}

CloudResult<CloudBatch> CloudOutbox::batch(const std::string& scope) {
    const std::lock_guard guard(lock_);
    auto query =
        SqliteStatement::prepare(db_, "SELECT kind,id,at,payload,revision FROM items WHERE scope=? AND "
                                      "dirty=1 ORDER BY revision,kind,id LIMIT 100");
    if (!query) return std::unexpected(CloudStorageError::fileReadUnknown);
    query->bind(1, scope);
    CloudBatch batch;
    Json records = Json::array();
    std::size_t bytes = 0;
    for (;;) {
        const auto row = query->step();
        if (!row) return std::unexpected(CloudStorageError::fileReadUnknown);
        if (!*row) break;
        const std::string payload = query->text(3);
        if (bytes + payload.size() > mostBytes && !records.empty()) break;
        bytes += payload.size();
        Json data = Json::parse(payload, nullptr, false);
        if (data.is_discarded()) data = nullptr;
        CloudBatch::Acknowledgement sent{query->text(0), query->text(1), query->integer(4)};
        records.push_back({{"kind", sent.kind},
                           {"id", sent.id},
                           {"at", query->real(2)},
                           {"revision", sent.revision},
                           {"data", std::move(data)}});
        batch.acknowledgements.push_back(std::move(sent));
    }
    batch.data = records.dump(-1, ' ', false, Json::error_handler_t::replace);
    return batch;
}

CloudResult<> CloudOutbox::acknowledge(const CloudBatch& batch, const std::string& scope) {
    const std::lock_guard guard(lock_);
    auto clean = SqliteStatement::prepare(
        db_, "UPDATE items SET dirty=0 WHERE scope=? AND kind=? AND id=? AND revision=?");
    if (!clean || !db_.execute("BEGIN IMMEDIATE")) return writeFailed();
    bool good = true;
    for (const CloudBatch::Acknowledgement& sent : batch.acknowledgements) {
        clean->bind(1, scope);
        clean->bind(2, sent.kind);
        clean->bind(3, sent.id);
        clean->bind(4, sent.revision);
        good = good && clean->run();
    }
    if (good && db_.execute("COMMIT")) return {};
    (void)db_.execute("ROLLBACK");
    return writeFailed();
}

CloudResult<> CloudOutbox::discard(const std::string& scope) {
    const std::lock_guard guard(lock_);
    if (!db_.execute("BEGIN IMMEDIATE")) return writeFailed();
    if (runScoped("DELETE FROM items WHERE scope=?", scope) &&
        runScoped("DELETE FROM app_windows WHERE scope=?", scope) && db_.execute("COMMIT"))
        return {};
    (void)db_.execute("ROLLBACK");
    return writeFailed();
}

SqliteResult<> CloudOutbox::runScoped(const char* sql, const std::string& scope) {
    auto statement = SqliteStatement::prepare(db_, sql);
    if (!statement) return std::unexpected(statement.error());
    statement->bind(1, scope);
    return statement->run();
}

} // namespace varnet
