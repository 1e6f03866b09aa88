#include "VarnetCore/Disk/DiskIndexDatabase.h"

#include <sqlite3.h>

namespace varnet {

namespace {

std::unexpected<DiskIndexError> failure(int code) {
    return std::unexpected(DiskIndexError{code & 0xFF}); // the upper bytes only say more of the same
}

} // namespace

void DiskIndexDatabase::Close::operator()(sqlite3* handle) const noexcept {
    sqlite3_close(handle);
}

DiskIndexResult<DiskIndexDatabase> DiskIndexDatabase::open(const std::string& path, Access access) {
    // No connection is shared between threads.
    const int flags =
        SQLITE_OPEN_NOMUTEX |
        (access == Access::write ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE : SQLITE_OPEN_READONLY);
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    DiskIndexDatabase database(handle); // also a failed one has to be closed
    if (code != SQLITE_OK) return failure(code);
    sqlite3_busy_timeout(handle, patience);
    return database;
}

DiskIndexResult<> DiskIndexDatabase::execute(const char* sql) {
    const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) return failure(code);
    return {};
}

std::int64_t DiskIndexDatabase::lastInsertedRow() const noexcept {
    return sqlite3_last_insert_rowid(handle_.get());
}

void DiskIndexStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

DiskIndexResult<DiskIndexStatement> DiskIndexStatement::prepare(const DiskIndexDatabase& database,
                                                                const char* sql) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(database.handle(), sql, -1, &statement, nullptr);
    if (code != SQLITE_OK) return failure(code);
    return DiskIndexStatement(statement);
}

void DiskIndexStatement::bind(int index, const std::string& text) {
    sqlite3_bind_text(statement_.get(), index, text.c_str(), -1, SQLITE_TRANSIENT);
}

void DiskIndexStatement::bind(int index, std::int64_t value) {
    sqlite3_bind_int64(statement_.get(), index, value);
}

void DiskIndexStatement::bind(int index, double value) {
    sqlite3_bind_double(statement_.get(), index, value);
}

void DiskIndexStatement::bindNull(int index) {
    sqlite3_bind_null(statement_.get(), index);
}

DiskIndexResult<bool> DiskIndexStatement::step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    return failure(code);
}

void DiskIndexStatement::reset() {
    sqlite3_reset(statement_.get());
    sqlite3_clear_bindings(statement_.get());
}

DiskIndexResult<> DiskIndexStatement::run() {
    const DiskIndexResult<bool> stepped = step();
    reset();
    if (!stepped) return std::unexpected(stepped.error());
    return {};
}

std::int64_t DiskIndexStatement::integer(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

double DiskIndexStatement::real(int column) const {
    return sqlite3_column_double(statement_.get(), column);
}

std::string DiskIndexStatement::text(int column) const {
    const unsigned char* const bytes = sqlite3_column_text(statement_.get(), column);
    if (bytes == nullptr) return {};
    return {reinterpret_cast<const char*>(bytes),
            static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

bool DiskIndexStatement::isNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

} // namespace varnet
