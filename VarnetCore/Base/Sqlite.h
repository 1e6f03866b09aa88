#pragma once

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace varnet {

/// What SQLite said no with. The interface has sentences of its own for the user.
struct SqliteError {
    std::int32_t code = 0; ///< primary result code

    friend bool operator==(const SqliteError&, const SqliteError&) = default;
};

template <typename Value = void>
using SqliteResult = std::expected<Value, SqliteError>;

/// One connection, closed with the object. For one thread at a time.
class SqliteDatabase {
public:
    enum class Access {
        read,
        write,  ///< made when it is not there
        shared, ///< the same, for several threads that take turns
    };

    /// Milliseconds that a connection waits for another's lock.
    static constexpr int patience = 2000;

    static SqliteResult<SqliteDatabase> open(const std::string& path, Access access);

    /// Runs statements that give no rows.
    SqliteResult<> execute(const char* sql);
    std::int64_t lastInsertedRow() const noexcept;

    sqlite3* handle() const noexcept { return handle_.get(); }

private:
    struct Close {
        void operator()(sqlite3* handle) const noexcept;
    };
    explicit SqliteDatabase(sqlite3* handle) : handle_(handle) {}

    std::unique_ptr<sqlite3, Close> handle_;
};

/// One prepared statement, finalised with the object; ends before its connection. Parameters and columns that
/// are out of range are ignored and empty.
class SqliteStatement {
public:
    static SqliteResult<SqliteStatement> prepare(const SqliteDatabase& database, const char* sql);

    /// @param index of the parameter, from 1
    void bind(int index, const std::string& text);
    void bind(int index, std::int64_t value);
    void bind(int index, double value);
    void bindNull(int index);

    /// Makes one step. @return whether there is a row
    SqliteResult<bool> step();
    /// Makes it ready to be run again, with no parameters.
    void reset();
    /// Runs it to its end once, without rows, and makes it ready again.
    SqliteResult<> run();

    /// @param column from 0
    std::int64_t integer(int column) const;
    double real(int column) const;
    std::string text(int column) const;
    bool isNull(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    explicit SqliteStatement(sqlite3_stmt* statement) : statement_(statement) {}

    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

} // namespace varnet
