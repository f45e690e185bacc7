#include "qmcore/platform/SqliteSettingsStore.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <limits>
#include <system_error>
#include <thread>
#include <utility>

#include "qmcore/platform/internal/SettingsValueCoding.hpp"

namespace qm {

using internal::SettingsKind;
using internal::SqliteDatabase;
using internal::SqliteStatement;
using internal::SqliteTransaction;
using internal::SqliteType;

struct SqliteSettingsStore::Connection {
  explicit Connection(SqliteDatabase db)
      : database(std::move(db)),
        selectAll(database.prepare("SELECT key, kind, value FROM settings")),
        upsert(
            database.prepare("INSERT OR REPLACE INTO settings(key, kind, value) VALUES(?, ?, ?)")),
        remove(database.prepare("DELETE FROM settings WHERE key = ?")),
        dataVersion(database.prepare("PRAGMA data_version")) {}

  SqliteDatabase database;
  SqliteStatement selectAll;
  SqliteStatement upsert;
  SqliteStatement remove;
  // Changes exactly when another connection has committed to the file.
  SqliteStatement dataVersion;
};

namespace {

namespace fs = std::filesystem;

// The format of the file, kept in `PRAGMA user_version`.
constexpr std::int64_t kFormatVersion = 1;

void printLine(const std::string& line) {
  std::fprintf(stderr, "%s\n", line.c_str());
  std::fflush(stderr);
}

// Like rename, but fails with EEXIST instead of replacing `to`.
bool renameWithoutReplacing(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return false;
  // The file system cannot rename without replacing; a hard link cannot replace either.
  if (link(from.c_str(), to.c_str()) != 0) return false;
  unlink(from.c_str());
  return true;
}

// Renames a damaged store file (with its write-ahead log or journal, which belong to it) to
// a name not yet taken. Returns the new name, or absent with `failure` set.
std::optional<std::string> setAside(const std::string& path, std::string& failure) {
  const std::string base = path + ".damaged-" + std::to_string(std::time(nullptr));
  std::string aside;
  for (int attempt = 0;; ++attempt) {
    aside = attempt == 0 ? base : base + "-" + std::to_string(attempt);
    if (renameWithoutReplacing(path, aside)) break;
    if (errno != EEXIST || attempt == 1000) {
      failure = std::strerror(errno);
      return std::nullopt;
    }
  }
  for (const char* suffix : {"-wal", "-journal"}) {
    std::error_code ignored;
    if (fs::exists(path + suffix, ignored) &&
        !renameWithoutReplacing(path + suffix, aside + suffix)) {
      failure = "moved it to " + aside + " but not its " + (suffix + 1) + " file (" +
                std::strerror(errno) + ")";
      return std::nullopt;
    }
  }
  // The shared-memory index is rebuilt from the log; a stale one must not be used.
  std::error_code ignored;
  fs::remove(path + "-shm", ignored);
  return aside;
}

bool isNotANumber(const SettingsValue& value) {
  if (const auto* d = value.get<double>()) return std::isnan(*d);
  if (const auto* d = value.get<Date>()) return std::isnan(d->timeIntervalSince1970());
  return false;
}

void bindValue(SqliteStatement& statement, const SettingsValue& value) {
  statement.bind(2, static_cast<std::int64_t>(internal::kindOf(value)));
  // SQLite keeps no NaN; it would store NULL anyway, so say so.
  if (isNotANumber(value)) {
    statement.bindNull(3);
    return;
  }
  if (const auto* v = value.get<bool>()) {
    statement.bind(3, std::int64_t{*v ? 1 : 0});
  } else if (const auto* v = value.get<std::int64_t>()) {
    statement.bind(3, *v);
  } else if (const auto* v = value.get<double>()) {
    statement.bind(3, *v);
  } else if (const auto* v = value.get<std::string>()) {
    statement.bind(3, std::string_view(*v));
  } else if (const auto* v = value.get<SettingsValue::Bytes>()) {
    statement.bind(3, std::span<const std::uint8_t>(*v));
  } else if (const auto* v = value.get<Date>()) {
    statement.bind(3, v->timeIntervalSince1970());
  } else {
    const std::vector<std::uint8_t> encoded = internal::encodeSettingsValue(value);
    statement.bind(3, std::span<const std::uint8_t>(encoded));
  }
}

std::optional<double> readDouble(const SqliteStatement& row) {
  switch (row.columnType(2)) {
    case SqliteType::kFloat:
      return row.columnDouble(2);
    case SqliteType::kInteger:
      return static_cast<double>(row.columnInt64(2));
    case SqliteType::kNull:
      return std::numeric_limits<double>::quiet_NaN();
    default:
      return std::nullopt;
  }
}

// The value of the current row, or absent when this version cannot read it.
std::optional<SettingsValue> readValueOfRow(const SqliteStatement& row) {
  const SqliteType type = row.columnType(2);
  const auto kind = static_cast<SettingsKind>(row.columnInt64(1));
  switch (kind) {
    case SettingsKind::kBool:
      if (type != SqliteType::kInteger) return std::nullopt;
      return SettingsValue(row.columnInt64(2) != 0);
    case SettingsKind::kInteger:
      if (type != SqliteType::kInteger) return std::nullopt;
      return SettingsValue(row.columnInt64(2));
    case SettingsKind::kDouble:
      if (const auto v = readDouble(row)) return SettingsValue(*v);
      return std::nullopt;
    case SettingsKind::kString:
      if (type != SqliteType::kText) return std::nullopt;
      return SettingsValue(row.columnText(2));
    case SettingsKind::kBytes: {
      if (type != SqliteType::kBlob) return std::nullopt;
      const auto blob = row.columnBlob(2);
      return SettingsValue(SettingsValue::Bytes(blob.begin(), blob.end()));
    }
    case SettingsKind::kDate:
      if (const auto v = readDouble(row)) return SettingsValue(Date::fromUnixSeconds(*v));
      return std::nullopt;
    case SettingsKind::kArray:
    case SettingsKind::kDictionary: {
      if (type != SqliteType::kBlob) return std::nullopt;
      auto value = internal::decodeSettingsValue(row.columnBlob(2));
      if (!value || internal::kindOf(*value) != kind) return std::nullopt;
      return value;
    }
  }
  return std::nullopt;
}

// Every readable row; counts the others in `unreadable`.
SettingsValue::Dictionary loadAll(SqliteStatement& selectAll, int& unreadable) {
  SettingsValue::Dictionary values;
  unreadable = 0;
  selectAll.reset();
  while (selectAll.step()) {
    if (auto value = readValueOfRow(selectAll)) {
      values.insert_or_assign(std::string(selectAll.columnText(0)), std::move(*value));
    } else {
      ++unreadable;
    }
  }
  selectAll.reset();
  return values;
}

std::int64_t readDataVersion(SqliteStatement& statement) {
  statement.reset();
  const std::int64_t version = statement.step() ? statement.columnInt64(0) : 0;
  statement.reset();
  return version;
}

}  // namespace

SqliteDatabase SqliteSettingsStore::openDatabase(const std::string& path) {
  SqliteDatabase database = SqliteDatabase::open(path);
  database.setBusyTimeout(kBusyTimeout);

  // SQLite opens lazily; reading the whole file is what finds out whether it is a database.
  if (const auto check = database.queryText("PRAGMA quick_check(1)"); check && *check != "ok") {
    throw ErrorException(internal::notADatabaseError("integrity check of " + path + ": " + *check));
  }
  // Nothing is changed in a file that turns out to hold something else.
  const std::int64_t columns =
      database.queryInteger("SELECT count(*) FROM pragma_table_info('settings')");
  const std::int64_t ours = database.queryInteger(
      "SELECT count(*) FROM pragma_table_info('settings') WHERE name IN ('key', 'kind', 'value')");
  if (columns > 0 && ours != 3) {
    throw ErrorException(internal::notADatabaseError(
        path + " holds a database whose settings table is not a settings store's"));
  }
  if (database.isReadOnly()) return database;

  // The log is synced at every commit, so a returned commit is on disk.
  database.queryText("PRAGMA journal_mode=WAL");
  database.execute("PRAGMA synchronous=FULL");

  SqliteTransaction transaction(database);
  database.execute(
      "CREATE TABLE IF NOT EXISTS settings("
      "key TEXT PRIMARY KEY NOT NULL, kind INTEGER NOT NULL, value)");
  if (database.queryInteger("PRAGMA user_version") == 0) {
    database.execute("PRAGMA user_version=" + std::to_string(kFormatVersion));
  }
  transaction.commit();
  return database;
}

SqliteSettingsStore::SqliteSettingsStore() = default;

SqliteSettingsStore::SqliteSettingsStore(std::string path) : path_(std::move(path)) {
  if (!path_.empty()) open();
}

SqliteSettingsStore::~SqliteSettingsStore() {
  const std::lock_guard lock(fileMutex_);
  if (connection_ != nullptr) writeChanges();
}

void SqliteSettingsStore::open() {
  std::error_code ignored;
  const fs::path folder = fs::path(path_).parent_path();
  if (!folder.empty()) fs::create_directories(folder, ignored);

  const auto keepInMemory = [&](const std::string& reason) {
    connection_.reset();
    printLine("qmcore: cannot use the settings file " + path_ + " (" + reason +
              "); settings are kept in memory only and will not be saved");
  };

  const auto connect = [&] {
    connectAndLoadWaitingWhileBusy();
    // What the file holds is loaded; changes can only be kept in memory.
    if (connection_->database.isReadOnly()) keepInMemory("the file is write-protected");
  };

  std::string damage;
  try {
    connect();
    return;
  } catch (const ErrorException& e) {
    if (!internal::isDamagedFileError(e.error())) return keepInMemory(e.what());
    damage = e.what();
  }

  std::string failure;
  const auto aside = setAside(path_, failure);
  if (!aside) return keepInMemory(damage + "; could not set it aside: " + failure);
  printLine("qmcore: the settings file " + path_ + " is not a readable settings store (" + damage +
            "); moved it to " + *aside + " and starting with empty settings");
  try {
    connect();
  } catch (const ErrorException& e) {
    keepInMemory(e.what());
  }
}

void SqliteSettingsStore::connectAndLoadWaitingWhileBusy() {
  // Opening runs steps that SQLite's busy handler does not always wait for (the switch to the
  // write-ahead log, a first read racing another process that creates the same new file), so
  // a busy file is retried here for as long as a statement would wait.
  std::chrono::milliseconds waited{0};
  for (std::chrono::milliseconds delay{5};; delay = std::min(delay * 2, kMaxOpenRetryDelay)) {
    try {
      connectAndLoad();
      return;
    } catch (const ErrorException& e) {
      if (!internal::isBusyError(e.error()) || waited >= kBusyTimeout) throw;
    }
    std::this_thread::sleep_for(delay);
    waited += delay;
  }
}

void SqliteSettingsStore::connectAndLoad() {
  auto connection = std::make_unique<Connection>(openDatabase(path_));
  int unreadable = 0;
  SettingsValue::Dictionary values;
  {
    // One snapshot, so that the version read matches the rows read.
    SqliteTransaction transaction(connection->database, SqliteTransaction::Mode::kDeferred);
    values = loadAll(connection->selectAll, unreadable);
    dataVersion_ = readDataVersion(connection->dataVersion);
    transaction.commit();
  }
  if (unreadable > 0) {
    printLine("qmcore: " + std::to_string(unreadable) + " settings in " + path_ +
              " cannot be read by this version; they are left as they are");
  }
  {
    const std::lock_guard lock(valuesMutex_);
    values_ = std::move(values);
  }
  connection_ = std::move(connection);
}

bool SqliteSettingsStore::isPersistent() const {
  const std::lock_guard lock(fileMutex_);
  return connection_ != nullptr;
}

std::optional<SettingsValue> SqliteSettingsStore::objectForKey(std::string_view key) const {
  const std::lock_guard lock(valuesMutex_);
  if (const auto it = values_.find(key); it != values_.end()) return it->second;
  return std::nullopt;
}

void SqliteSettingsStore::readValue(std::string_view key,
                                    const std::function<void(const SettingsValue*)>& reader) const {
  const std::lock_guard lock(valuesMutex_);
  const auto it = values_.find(key);
  reader(it != values_.end() ? &it->second : nullptr);
}

void SqliteSettingsStore::setObject(std::string_view key, SettingsValue value) {
  const std::lock_guard lock(valuesMutex_);
  values_.insert_or_assign(std::string(key), std::move(value));
  changedKeys_.emplace(key);
}

void SqliteSettingsStore::removeObjectForKey(std::string_view key) {
  const std::lock_guard lock(valuesMutex_);
  if (const auto it = values_.find(key); it != values_.end()) values_.erase(it);
  changedKeys_.emplace(key);
}

SettingsValue::Dictionary SqliteSettingsStore::dictionaryRepresentation() const {
  const std::lock_guard lock(valuesMutex_);
  return values_;
}

bool SqliteSettingsStore::synchronize() {
  const std::lock_guard lock(fileMutex_);
  // Without a connection: a store meant for memory has done its job, a failed file has not.
  if (connection_ == nullptr) return path_.empty();
  return writeChanges();
}

bool SqliteSettingsStore::writeChanges() {
  // Copy the changes out so that readers and writers go on while the file is written.
  std::map<std::string, std::optional<SettingsValue>, std::less<>> changes;
  {
    const std::lock_guard lock(valuesMutex_);
    for (const std::string& key : changedKeys_) {
      const auto it = values_.find(key);
      changes.emplace(key, it != values_.end() ? std::optional(it->second) : std::nullopt);
    }
    changedKeys_.clear();
  }

  Connection& connection = *connection_;
  std::optional<SettingsValue::Dictionary> reloaded;
  int unreadable = 0;
  try {
    // A writer takes the write lock first, waiting for other processes, so that it never
    // has to give up half-way; a pure reader needs no lock at all.
    SqliteTransaction transaction(connection.database, changes.empty()
                                                           ? SqliteTransaction::Mode::kDeferred
                                                           : SqliteTransaction::Mode::kImmediate);
    const std::int64_t version = readDataVersion(connection.dataVersion);
    if (version != dataVersion_) reloaded = loadAll(connection.selectAll, unreadable);
    for (const auto& [key, value] : changes) {
      SqliteStatement& statement = value ? connection.upsert : connection.remove;
      statement.reset();
      statement.bind(1, std::string_view(key));
      if (value) bindValue(statement, *value);
      statement.run();
    }
    transaction.commit();
    dataVersion_ = version;
  } catch (const ErrorException& e) {
    {
      const std::lock_guard lock(valuesMutex_);
      for (const auto& entry : changes) changedKeys_.insert(entry.first);
    }
    if (!reportedWriteFailure_) {
      printLine("qmcore: could not save settings to " + path_ + " (" + e.what() +
                "); they are kept in memory and saved by the next synchronize");
      reportedWriteFailure_ = true;
    }
    return false;
  }
  reportedWriteFailure_ = false;

  if (reloaded) {
    // What other processes wrote comes in; local changes, written or newer, win.
    const std::lock_guard lock(valuesMutex_);
    for (auto& [key, value] : changes) {
      if (value) {
        reloaded->insert_or_assign(key, std::move(*value));
      } else {
        reloaded->erase(key);
      }
    }
    for (const std::string& key : changedKeys_) {
      if (const auto it = values_.find(key); it != values_.end()) {
        reloaded->insert_or_assign(key, std::move(it->second));
      } else {
        reloaded->erase(key);
      }
    }
    values_ = std::move(*reloaded);
  }
  return true;
}

}  // namespace qm
