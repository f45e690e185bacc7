// The persistent key-value settings store, the stand-in for the phone platform's
// `NSUserDefaults`.
//
// Values are of the property-list kinds (bool, 64-bit integer, double, string, bytes, date,
// array, dictionary) and read back with the kind they were written with, nested arrays and
// dictionaries included. A write is visible at once to every reader in the process; it is
// durable once `synchronize` returns (it then survives the process being killed, and with the
// file system's help a power loss). Reads come from memory. The typed getters convert between
// kinds as the platform does (a missing key reads as false, 0, 0.0 or absent).
//
//   std::shared_ptr<qm::SettingsStore> store = qm::SettingsStore::standard();
//   store->setInteger("DistanceUnitType", 1);
//   store->synchronize();
//   store->integerForKey("DistanceUnitType");  // 1
//
// Files. The standard store lives in the file named by QM_SETTINGS_PATH, else
// $XDG_CONFIG_HOME/qmcore/settings.sqlite (when that variable holds an absolute path), else
// ~/.config/qmcore/settings.sqlite; the folder is created when missing. A store file that is
// not a readable store (not a database, corrupt, or a database of something else) is never
// overwritten: it is renamed to "<file>.damaged-<unix seconds>" (with "-1", "-2", ... added
// when that name is taken), a line on stderr says so, and the store starts empty. A file that
// cannot be opened or written at all (folder not writable, file write-protected) leaves the
// store working in memory, with what could be read from the file, after one line on stderr;
// its `synchronize` then returns false.
//
// Threads and processes. Stores are thread-safe. Several processes may use the same file at
// once: a writer waits for another's lock instead of failing, and `synchronize` also brings in
// what other processes have synchronised (pending writes of this process win). A store must
// not be used in a child process after `fork`; the child opens stores of its own (and, as
// with every SQLite file, only files its parent does not have open).

#ifndef QMCORE_PLATFORM_SETTINGSSTORE_HPP_
#define QMCORE_PLATFORM_SETTINGSSTORE_HPP_

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "qmcore/platform/Date.hpp"

namespace qm {

// One value of the property-list kinds.
class SettingsValue {
 public:
  using Bytes = std::vector<std::uint8_t>;
  using Array = std::vector<SettingsValue>;
  using Dictionary = std::map<std::string, SettingsValue, std::less<>>;
  using Storage =
      std::variant<bool, std::int64_t, double, std::string, Bytes, Date, Array, Dictionary>;

  SettingsValue(bool v) : storage_(v) {}                           // NOLINT
  SettingsValue(int v) : storage_(std::int64_t{v}) {}              // NOLINT
  SettingsValue(std::int64_t v) : storage_(v) {}                   // NOLINT
  SettingsValue(double v) : storage_(v) {}                         // NOLINT
  SettingsValue(std::string v) : storage_(std::move(v)) {}         // NOLINT
  SettingsValue(std::string_view v) : storage_(std::string(v)) {}  // NOLINT
  SettingsValue(const char* v) : storage_(std::string(v)) {}       // NOLINT
  SettingsValue(Bytes v) : storage_(std::move(v)) {}               // NOLINT
  SettingsValue(Date v) : storage_(v) {}                           // NOLINT
  SettingsValue(Array v) : storage_(std::move(v)) {}               // NOLINT
  SettingsValue(Dictionary v) : storage_(std::move(v)) {}          // NOLINT

  const Storage& storage() const { return storage_; }
  template <typename T>
  bool is() const {
    return std::holds_alternative<T>(storage_);
  }
  // The value when it is of kind T, else nullptr.
  template <typename T>
  const T* get() const {
    return std::get_if<T>(&storage_);
  }

  bool operator==(const SettingsValue&) const = default;

 private:
  Storage storage_;
};

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // The process-wide standard store (see the file rule above), opened on first use under a
  // one-time guard. Never null: when the file cannot be opened the store works in memory and
  // says so on stderr.
  static std::shared_ptr<SettingsStore> standard();

  // A store of its own for `suiteName`, in the file namedFilePath(suiteName), shared per name
  // while in use. Never null. The empty name gives the standard store, as the platform does
  // for a missing suite name.
  static std::shared_ptr<SettingsStore> named(std::string_view suiteName);

  // A store kept in the file at `path` (created with its folder when missing), shared per
  // file while in use: every call for the same file gets the same store, so all its users see
  // each other's writes at once. Never null; failures as described at the top. The empty
  // path gives a new store kept in memory, as `inMemory()` does.
  static std::shared_ptr<SettingsStore> openFile(const std::string& path);

  // A new store that is kept in memory only and never touches a file, for tests and for
  // settings that must not persist. Its `synchronize` returns true.
  static std::shared_ptr<SettingsStore> inMemory();

  // The file of the standard store, from the environment as it is now (see the rule above).
  static std::string standardFilePath();

  // The file of the named store `suiteName`: "<folder of the standard store>/<name>.sqlite".
  // So that every name stays inside that folder and distinct names get distinct files, bytes
  // other than ASCII letters, digits, '-', '_', '.' and non-ASCII (UTF-8) bytes are written as
  // "%XX" (hexadecimal), as is a leading '.': "a/b" gives "a%2Fb.sqlite", ".." "%2E..sqlite".
  // Given the empty name, the standard store's file.
  static std::string namedFilePath(std::string_view suiteName);

  // The stored value, or absent.
  virtual std::optional<SettingsValue> objectForKey(std::string_view key) const = 0;
  // Stores `value` under `key` (any text, the empty one included), replacing what was there.
  virtual void setObject(std::string_view key, SettingsValue value) = 0;
  // Removes the key; nothing happens when it is absent.
  virtual void removeObjectForKey(std::string_view key) = 0;
  // Makes every write so far durable and brings in what other processes have synchronised
  // into the same file. False when the file could not be written (the writes stay in memory
  // and a later `synchronize` tries again) or the store has no file to write to.
  virtual bool synchronize() = 0;
  // Every key with its value, a snapshot.
  virtual SettingsValue::Dictionary dictionaryRepresentation() const = 0;

  bool hasKey(std::string_view key) const;

  // Typed reads with the platform's conversions. A missing key or a value of another kind
  // (bytes, date, array, dictionary) reads as false, 0, 0.0 or absent.
  //
  // Number texts are whole strings (spaces around allowed) of the form [+-]digits[.digits]
  // [e[+-]digits] that fit a double, e.g. "12", " -1.5", "2e3"; "YES" and "true" read as 1,
  // "NO" and "false" as 0 (in any letter case). Other strings read as false, 0 or 0.0.
  //
  // boolForKey: a bool as it is; a number is true when it is not 0 (NaN is false); a string
  //   by its number text.
  bool boolForKey(std::string_view key) const;
  // integerForKey: an integer as it is; a bool is 0 or 1; a double is truncated toward zero
  //   and clamped to the 64-bit range (NaN gives 0); a string by its number text, likewise
  //   ("1.9" gives 1; integer texts are exact up to the 64-bit limits).
  std::int64_t integerForKey(std::string_view key) const;
  // doubleForKey: a double as it is; an integer converted; a bool is 0.0 or 1.0; a string by
  //   its number text.
  double doubleForKey(std::string_view key) const;
  // stringForKey: a string as it is; a number as its invariant text ("42", "1.5", "0.1" (the
  //   shortest text that reads back as the same double), "1e+20", "inf", "nan"); a bool as "1"
  //   or "0". Absent for a missing key and the other kinds.
  std::optional<std::string> stringForKey(std::string_view key) const;

  void setBool(std::string_view key, bool value) { setObject(key, SettingsValue(value)); }
  void setInteger(std::string_view key, std::int64_t value) {
    setObject(key, SettingsValue(value));
  }
  void setDouble(std::string_view key, double value) { setObject(key, SettingsValue(value)); }
  void setString(std::string_view key, std::string_view value) {
    setObject(key, SettingsValue(value));
  }

 protected:
  // Calls `reader` once with the value stored under `key`, or with nullptr, without copying
  // the value. The typed getters read through it; stores override it to read under their lock
  // (the default goes through `objectForKey`).
  virtual void readValue(std::string_view key,
                         const std::function<void(const SettingsValue*)>& reader) const;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_SETTINGSSTORE_HPP_
