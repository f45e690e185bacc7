#include "qmcore/platform/internal/Sqlite.hpp"

#include <sqlite3.h>

#include <climits>
#include <utility>

namespace qm::internal {

Error sqliteError(int code, std::string_view context, sqlite3* connection) {
  std::string description(context);
  description += ": ";
  // The connection's message describes the latest failure on it, which is this one.
  description += connection != nullptr ? sqlite3_errmsg(connection) : sqlite3_errstr(code);
  return Error(std::string(kSqliteErrorDomain), code, std::move(description));
}

Error notADatabaseError(std::string_view reason) {
  return Error(std::string(kSqliteErrorDomain), SQLITE_NOTADB, std::string(reason));
}

bool isDamagedFileError(const Error& error) {
  if (error.domain() != kSqliteErrorDomain) return false;
  const auto primary = error.code() & 0xff;
  return primary == SQLITE_NOTADB || primary == SQLITE_CORRUPT;
}

bool isBusyError(const Error& error) {
  if (error.domain() != kSqliteErrorDomain) return false;
  const auto primary = error.code() & 0xff;
  return primary == SQLITE_BUSY || primary == SQLITE_LOCKED;
}

void SqliteCloser::operator()(sqlite3* connection) const noexcept {
  // close_v2 defers the close until outstanding statements are finalised, so the order in
  // which owners are destroyed does not matter.
  sqlite3_close_v2(connection);
}

void SqliteFinalizer::operator()(sqlite3_stmt* statement) const noexcept {
  sqlite3_finalize(statement);
}

namespace {

[[noreturn]] void throwError(int code, std::string_view context, sqlite3* connection) {
  throw ErrorException(sqliteError(code, context, connection));
}

int checkedLength(std::size_t size) {
  if (size > static_cast<std::size_t>(INT_MAX)) {
    throwError(SQLITE_TOOBIG, "bind", nullptr);
  }
  return static_cast<int>(size);
}

}  // namespace

SqliteStatement::SqliteStatement(sqlite3_stmt* statement, sqlite3* connection)
    : statement_(statement), connection_(connection) {}

void SqliteStatement::check(int code, std::string_view context) const {
  if (code != SQLITE_OK) throwError(code, context, connection_);
}

void SqliteStatement::bind(int index, std::int64_t value) {
  check(sqlite3_bind_int64(statement_.get(), index, value), "bind");
}

void SqliteStatement::bind(int index, double value) {
  check(sqlite3_bind_double(statement_.get(), index, value), "bind");
}

void SqliteStatement::bind(int index, std::string_view text) {
  // A null pointer would bind NULL instead of an empty text.
  const char* data = text.data() != nullptr ? text.data() : "";
  check(sqlite3_bind_text(statement_.get(), index, data, checkedLength(text.size()),
                          SQLITE_TRANSIENT),
        "bind");
}

void SqliteStatement::bind(int index, std::span<const std::uint8_t> blob) {
  // A null pointer would bind NULL instead of an empty blob.
  static constexpr std::uint8_t kEmpty = 0;
  const void* data = blob.empty() ? &kEmpty : blob.data();
  check(sqlite3_bind_blob(statement_.get(), index, data, checkedLength(blob.size()),
                          SQLITE_TRANSIENT),
        "bind");
}

void SqliteStatement::bindNull(int index) {
  check(sqlite3_bind_null(statement_.get(), index), "bind");
}

bool SqliteStatement::step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  // Read the message before reset, which would keep the code but may change the message.
  Error error = sqliteError(sqlite3_extended_errcode(connection_), "step", connection_);
  sqlite3_reset(statement_.get());
  throw ErrorException(std::move(error));
}

void SqliteStatement::run() {
  while (step()) {
  }
}

void SqliteStatement::reset() {
  sqlite3_reset(statement_.get());
  sqlite3_clear_bindings(statement_.get());
}

SqliteType SqliteStatement::columnType(int column) const {
  switch (sqlite3_column_type(statement_.get(), column)) {
    case SQLITE_INTEGER:
      return SqliteType::kInteger;
    case SQLITE_FLOAT:
      return SqliteType::kFloat;
    case SQLITE_TEXT:
      return SqliteType::kText;
    case SQLITE_BLOB:
      return SqliteType::kBlob;
    default:
      return SqliteType::kNull;
  }
}

std::int64_t SqliteStatement::columnInt64(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

double SqliteStatement::columnDouble(int column) const {
  return sqlite3_column_double(statement_.get(), column);
}

std::string_view SqliteStatement::columnText(int column) const {
  const auto* text = sqlite3_column_text(statement_.get(), column);
  const int size = sqlite3_column_bytes(statement_.get(), column);
  if (text == nullptr) return {};
  return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)};
}

std::span<const std::uint8_t> SqliteStatement::columnBlob(int column) const {
  const auto* data =
      static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_.get(), column));
  const int size = sqlite3_column_bytes(statement_.get(), column);
  if (data == nullptr) return {};
  return {data, static_cast<std::size_t>(size)};
}

SqliteDatabase SqliteDatabase::open(const std::string& path) {
  sqlite3* raw = nullptr;
  // No SQLite mutex: every owner of a connection serialises its use itself.
  const int code = sqlite3_open_v2(
      path.c_str(), &raw,
      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
      nullptr);
  // Even a failed open hands out a handle (for the message) that must be closed.
  std::unique_ptr<sqlite3, SqliteCloser> connection(raw);
  if (code != SQLITE_OK) {
    throwError(code, "open " + path, connection.get());
  }
  sqlite3_extended_result_codes(connection.get(), 1);
  return SqliteDatabase(connection.release());
}

void SqliteDatabase::execute(std::string_view sql) {
  // sqlite3_exec needs a terminated string.
  const std::string text(sql);
  const int code = sqlite3_exec(connection_.get(), text.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) throwError(code, text, connection_.get());
}

SqliteStatement SqliteDatabase::prepare(std::string_view sql) {
  sqlite3_stmt* raw = nullptr;
  const int code = sqlite3_prepare_v3(connection_.get(), sql.data(), checkedLength(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
  SqliteStatement statement(raw, connection_.get());
  if (code != SQLITE_OK) throwError(code, sql, connection_.get());
  if (raw == nullptr) throwError(SQLITE_MISUSE, "prepare of an empty statement", nullptr);
  return statement;
}

std::optional<std::string> SqliteDatabase::queryText(std::string_view sql) {
  SqliteStatement statement = prepare(sql);
  if (!statement.step()) return std::nullopt;
  return std::string(statement.columnText(0));
}

std::int64_t SqliteDatabase::queryInteger(std::string_view sql) {
  SqliteStatement statement = prepare(sql);
  return statement.step() ? statement.columnInt64(0) : 0;
}

void SqliteDatabase::setBusyTimeout(std::chrono::milliseconds timeout) {
  const auto clamped = timeout.count() > INT_MAX ? INT_MAX : static_cast<int>(timeout.count());
  sqlite3_busy_timeout(connection_.get(), clamped);
}

bool SqliteDatabase::isReadOnly() const {
  return sqlite3_db_readonly(connection_.get(), "main") == 1;
}

SqliteTransaction::SqliteTransaction(SqliteDatabase& database, Mode mode) : database_(database) {
  database_.execute(mode == Mode::kImmediate ? "BEGIN IMMEDIATE" : "BEGIN");
}

SqliteTransaction::~SqliteTransaction() {
  if (open_ && sqlite3_get_autocommit(database_.handle()) == 0) {
    sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

void SqliteTransaction::commit() {
  database_.execute("COMMIT");
  open_ = false;
}

}  // namespace qm::internal
