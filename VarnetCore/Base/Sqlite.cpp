#include "VarnetCore/Base/Sqlite.h"

#include <sqlite3.h>

namespace varnet {

namespace {

std::unexpected<SqliteError> failure(int code) {
    return std::unexpected(SqliteError{code & 0xFF}); // the upper bytes only say more of the same
}

} // namespace

void SqliteDatabase::Close::operator()(sqlite3* handle) const noexcept {
    sqlite3_close(handle);
}

SqliteResult<SqliteDatabase> SqliteDatabase::open(const std::string& path, Access access) {
    const int locking = access == Access::shared ? SQLITE_OPEN_FULLMUTEX : SQLITE_OPEN_NOMUTEX;
    const int rights =
        access == Access::read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int flags = locking | rights;
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    SqliteDatabase database(handle); // also a failed one has to be closed
    if (code != SQLITE_OK) return failure(code);
    sqlite3_busy_timeout(handle, patience);
    return database;
}

SqliteResult<> SqliteDatabase::execute(const char* sql) {
    const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) return failure(code);
    return {};
}

std::int64_t SqliteDatabase::lastInsertedRow() const noexcept {
    return sqlite3_last_insert_rowid(handle_.get());
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

SqliteResult<SqliteStatement> SqliteStatement::prepare(const SqliteDatabase& database, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(database.handle(), sql, -1, &statement, nullptr);
    if (code != SQLITE_OK) return failure(code);
    return SqliteStatement(statement);
}

void SqliteStatement::bind(int index, const std::string& text) {
    sqlite3_bind_text(statement_.get(), index, text.c_str(), -1, SQLITE_TRANSIENT);
}

void SqliteStatement::bind(int index, std::int64_t value) {
    sqlite3_bind_int64(statement_.get(), index, value);
}

void SqliteStatement::bind(int index, double value) {
    sqlite3_bind_double(statement_.get(), index, value);
}

void SqliteStatement::bindNull(int index) {
    sqlite3_bind_null(statement_.get(), index);
}

SqliteResult<bool> SqliteStatement::step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    return failure(code);
}

void SqliteStatement::reset() {
    sqlite3_reset(statement_.get());
    sqlite3_clear_bindings(statement_.get());
}

SqliteResult<> SqliteStatement::run() {
    const SqliteResult<bool> stepped = step();
    reset();
    if (!stepped) return std::unexpected(stepped.error());
    return {};
}

std::int64_t SqliteStatement::integer(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

double SqliteStatement::real(int column) const {
    return sqlite3_column_double(statement_.get(), column);
}

std::string SqliteStatement::text(int column) const {
    const unsigned char* const bytes = sqlite3_column_text(statement_.get(), column);
    if (bytes == nullptr) return {};
    return {reinterpret_cast<const char*>(bytes),
            static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

bool SqliteStatement::isNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

} // namespace varnet
