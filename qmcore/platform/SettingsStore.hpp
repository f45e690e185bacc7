// The persistent key-value settings store, the stand-in for the phone platform's
// `NSUserDefaults`.
//
// Values are of the property-list kinds (bool, 64-bit integer, double, string, bytes, date,
// array, dictionary) and read back with the kind they were written with. A write is visible at
// once to every reader in the process; it is durable once `synchronize` returns. Reads come
// from memory. The typed getters convert between kinds as the platform does (a missing key
// reads as false, 0, 0.0 or absent).
//
//   std::shared_ptr<qm::SettingsStore> store = qm::SettingsStore::standard();
//   store->setInteger("DistanceUnitType", 1);
//   store->synchronize();
//   store->integerForKey("DistanceUnitType");  // 1
//
// The standard store lives in the file named by QM_SETTINGS_PATH, else
// $XDG_CONFIG_HOME/qmcore/settings.sqlite, else ~/.config/qmcore/settings.sqlite. Stores are
// thread-safe; several processes may use the same file at once.

#ifndef QMCORE_PLATFORM_SETTINGSSTORE_HPP_
#define QMCORE_PLATFORM_SETTINGSSTORE_HPP_

#include <cstdint>
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

  // The process-wide standard store (see the file rule above). Never null: when the file
  // cannot be opened the store works in memory and says so on stderr.
  static std::shared_ptr<SettingsStore> standard();

  // A store of its own for `suiteName`, in a file beside the standard one, shared per name.
  static std::shared_ptr<SettingsStore> named(std::string_view suiteName);

  // A store kept in the file at `path` (created with its folder when missing). A file that is
  // not a readable store is renamed aside, with a line on stderr, and the store starts empty.
  static std::shared_ptr<SettingsStore> openFile(const std::string& path);

  // The stored value, or absent.
  virtual std::optional<SettingsValue> objectForKey(std::string_view key) const = 0;
  virtual void setObject(std::string_view key, SettingsValue value) = 0;
  virtual void removeObjectForKey(std::string_view key) = 0;
  // Makes every write so far durable. False when the file could not be written.
  virtual bool synchronize() = 0;

  bool hasKey(std::string_view key) const { return objectForKey(key).has_value(); }

  // Typed reads with the platform's conversions: numbers and bools convert among each other,
  // strings are read as numbers when they are ones ("12", "1.5", "YES", "true"); anything else
  // reads as false, 0 or 0.0.
  bool boolForKey(std::string_view key) const;
  std::int64_t integerForKey(std::string_view key) const;
  double doubleForKey(std::string_view key) const;
  // A string value (numbers are given as their text), else absent.
  std::optional<std::string> stringForKey(std::string_view key) const;

  void setBool(std::string_view key, bool value) { setObject(key, SettingsValue(value)); }
  void setInteger(std::string_view key, std::int64_t value) {
    setObject(key, SettingsValue(value));
  }
  void setDouble(std::string_view key, double value) { setObject(key, SettingsValue(value)); }
  void setString(std::string_view key, std::string_view value) {
    setObject(key, SettingsValue(value));
  }
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_SETTINGSSTORE_HPP_
