// The settings store kept in an SQLite file: the implementation behind
// `SettingsStore::standard()`, `named()`, `openFile()` and `inMemory()`. Most code uses those
// and the `SettingsStore` interface; this header is for code that needs to know about the file.
//
// Opening loads every value into memory; reads never touch the file. Writes change memory at
// once and are written, all in one transaction, by `synchronize` or by the destructor. The
// file uses write-ahead logging with full synchronisation, so a commit is on disk before
// `synchronize` returns, and readers in other processes do not block writers.
//
// In the file, the table `settings(key TEXT PRIMARY KEY, kind INTEGER NOT NULL, value)` holds
// one row per key: scalars in SQLite's own types (bools and integers as INTEGER, doubles and
// dates (seconds since 1970) as REAL, a NaN as NULL, strings as TEXT, bytes as BLOB), arrays
// and dictionaries as a BLOB in a self-describing encoding. `PRAGMA user_version` is the
// format version. Rows this version cannot read are left untouched in the file.

#ifndef QMCORE_PLATFORM_SQLITESETTINGSSTORE_HPP_
#define QMCORE_PLATFORM_SQLITESETTINGSSTORE_HPP_

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/platform/internal/Sqlite.hpp"

namespace qm {

class SqliteSettingsStore final : public SettingsStore {
 public:
  // A store in the file at `path`, created with its folder when missing. Never throws for
  // file problems: a damaged file is set aside and an unusable one leaves the store in memory,
  // each with a line on stderr (see SettingsStore). Prefer `SettingsStore::openFile`, which
  // shares one store per file within the process.
  explicit SqliteSettingsStore(std::string path);
  // A store kept in memory only; its `synchronize` returns true.
  SqliteSettingsStore();
  // Writes what is not yet synchronised; failures are reported on stderr.
  ~SqliteSettingsStore() override;

  SqliteSettingsStore(const SqliteSettingsStore&) = delete;
  SqliteSettingsStore& operator=(const SqliteSettingsStore&) = delete;

  std::optional<SettingsValue> objectForKey(std::string_view key) const override;
  void setObject(std::string_view key, SettingsValue value) override;
  void removeObjectForKey(std::string_view key) override;
  bool synchronize() override;
  SettingsValue::Dictionary dictionaryRepresentation() const override;

  // The file given at construction; empty for a store kept in memory.
  const std::string& path() const { return path_; }
  // True when `synchronize` writes to the file, false when the store is kept in memory.
  bool isPersistent() const;

  // Opens the database of a settings store at `path`, creating the file (not its folder)
  // when missing: checks that it is a readable store, turns on write-ahead logging with full
  // synchronisation and a busy timeout, and creates the table. Throws ErrorException; for a
  // file that is not a readable store `internal::isDamagedFileError` is true of its error.
  static internal::SqliteDatabase openDatabase(const std::string& path);

  // How long a write waits for another process's lock before it fails.
  static constexpr std::chrono::milliseconds kBusyTimeout{10000};
  // The longest pause between two attempts to open a file another process holds locked.
  static constexpr std::chrono::milliseconds kMaxOpenRetryDelay{200};

 protected:
  void readValue(std::string_view key,
                 const std::function<void(const SettingsValue*)>& reader) const override;

 private:
  struct Connection;

  void open();
  void connectAndLoad();
  void connectAndLoadWaitingWhileBusy();
  bool writeChanges();

  const std::string path_;

  // Held while talking to the file; taken before `valuesMutex_` when both are needed, so
  // that readers only wait for the in-memory work of a synchronisation, never for the disk.
  mutable std::mutex fileMutex_;
  std::unique_ptr<Connection> connection_;  // null when kept in memory
  std::int64_t dataVersion_ = 0;            // of the file when last read
  bool reportedWriteFailure_ = false;

  mutable std::mutex valuesMutex_;
  SettingsValue::Dictionary values_;
  std::set<std::string, std::less<>> changedKeys_;  // set or removed since the last write
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_SQLITESETTINGSSTORE_HPP_
