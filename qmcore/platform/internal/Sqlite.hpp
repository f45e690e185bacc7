// A thin RAII layer over SQLite for the platform layer: a connection, prepared statements and
// transactions. Every SQLite failure becomes an `ErrorException` carrying an `Error` of domain
// "sqlite" whose code is SQLite's extended result code. Nothing outside qmcore/platform uses
// this header's types except benchmarks that measure against raw SQLite; `sqlite3.h` itself is
// included only by Sqlite.cpp.
//
//   qm::internal::SqliteDatabase db = qm::internal::SqliteDatabase::open("/tmp/x.sqlite");
//   db.execute("CREATE TABLE IF NOT EXISTS t(k TEXT PRIMARY KEY, v)");
//   qm::internal::SqliteStatement insert = db.prepare("INSERT OR REPLACE INTO t VALUES(?, ?)");
//   qm::internal::SqliteTransaction transaction(db);
//   insert.bind(1, "answer");
//   insert.bind(2, std::int64_t{42});
//   insert.run();
//   transaction.commit();  // without it the destructor rolls back
//
// Not thread-safe: a connection and its statements are used by one thread at a time (the
// owner locks). A connection must not be used in a child process after `fork`.

#ifndef QMCORE_PLATFORM_INTERNAL_SQLITE_HPP_
#define QMCORE_PLATFORM_INTERNAL_SQLITE_HPP_

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "qmcore/platform/Error.hpp"

struct sqlite3;
struct sqlite3_stmt;

namespace qm::internal {

inline constexpr std::string_view kSqliteErrorDomain = "sqlite";

// The error for SQLite result `code` while doing `context`; the description includes SQLite's
// message for the connection when one is given, else the generic text of the code.
Error sqliteError(int code, std::string_view context, sqlite3* connection = nullptr);

// The error (SQLITE_NOTADB) for a file found not to be a usable database by a check of our own.
Error notADatabaseError(std::string_view reason);

// True for errors meaning the file is not a database or is corrupt (SQLITE_NOTADB,
// SQLITE_CORRUPT and their extended codes).
bool isDamagedFileError(const Error& error);
// True for errors meaning another connection holds a lock (SQLITE_BUSY, SQLITE_LOCKED).
bool isBusyError(const Error& error);

// The type of a result column.
enum class SqliteType { kInteger, kFloat, kText, kBlob, kNull };

struct SqliteCloser {
  void operator()(sqlite3* connection) const noexcept;
};
struct SqliteFinalizer {
  void operator()(sqlite3_stmt* statement) const noexcept;
};

class SqliteDatabase;

// A prepared statement. Parameters are numbered from 1, result columns from 0.
class SqliteStatement {
 public:
  SqliteStatement(SqliteStatement&&) noexcept = default;
  SqliteStatement& operator=(SqliteStatement&&) noexcept = default;

  // Binding throws ErrorException on a bad index. Text and blobs are copied.
  void bind(int index, std::int64_t value);
  void bind(int index, double value);
  void bind(int index, std::string_view text);
  void bind(int index, std::span<const std::uint8_t> blob);
  void bindNull(int index);

  // Advances to the next row: true when a row is ready, false when the statement is done.
  // Throws ErrorException on failure (SQLITE_BUSY once the busy timeout has run out).
  bool step();
  // Steps until done, for statements that return no rows.
  void run();
  // Makes the statement ready to run again; bindings are cleared.
  void reset();

  SqliteType columnType(int column) const;
  std::int64_t columnInt64(int column) const;
  double columnDouble(int column) const;
  // Text and blob columns as views valid until the next step, reset or column call.
  std::string_view columnText(int column) const;
  std::span<const std::uint8_t> columnBlob(int column) const;

 private:
  friend class SqliteDatabase;
  SqliteStatement(sqlite3_stmt* statement, sqlite3* connection);
  void check(int code, std::string_view context) const;

  std::unique_ptr<sqlite3_stmt, SqliteFinalizer> statement_;
  sqlite3* connection_;  // owned by the SqliteDatabase, which must outlive the statement
};

// An open connection.
class SqliteDatabase {
 public:
  // Opens (creating when missing) the database file at `path` for reading and writing. SQLite
  // opens lazily: a file that is not a database is only noticed by the first statement.
  // Throws ErrorException when the file cannot be opened.
  static SqliteDatabase open(const std::string& path);

  SqliteDatabase(SqliteDatabase&&) noexcept = default;
  SqliteDatabase& operator=(SqliteDatabase&&) noexcept = default;

  // Runs one or more statements that return no rows. Throws ErrorException.
  void execute(std::string_view sql);
  // Prepares one statement meant to be kept and run many times. Throws ErrorException.
  SqliteStatement prepare(std::string_view sql);
  // The first column of the first row of `sql`, as text; absent when there is no row.
  std::optional<std::string> queryText(std::string_view sql);
  // The first column of the first row of `sql`, as an integer; 0 when there is no row.
  std::int64_t queryInteger(std::string_view sql);

  // How long a statement waits for another connection's lock before failing with SQLITE_BUSY.
  void setBusyTimeout(std::chrono::milliseconds timeout);
  // True when SQLite could only open the file for reading (e.g. it is write-protected).
  bool isReadOnly() const;

  sqlite3* handle() const { return connection_.get(); }

 private:
  explicit SqliteDatabase(sqlite3* connection) : connection_(connection) {}
  std::unique_ptr<sqlite3, SqliteCloser> connection_;
};

// A transaction that rolls back unless committed. Begins at construction (throws
// ErrorException when it cannot); `kImmediate` takes the write lock at once, waiting for it
// with the busy timeout, so a writer never fails half-way for a lock it could not upgrade.
class SqliteTransaction {
 public:
  enum class Mode { kDeferred, kImmediate };

  explicit SqliteTransaction(SqliteDatabase& database, Mode mode = Mode::kImmediate);
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;
  ~SqliteTransaction();

  // Throws ErrorException when the commit fails; the transaction is then rolled back.
  void commit();

 private:
  SqliteDatabase& database_;
  bool open_ = true;
};

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_SQLITE_HPP_
