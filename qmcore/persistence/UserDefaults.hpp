// Typed reads of a settings store that fall back to a caller-given default when the key is
// absent, and enumeration values by raw value: the additions the apps know as an extension of
// `NSUserDefaults`.
//
// A `UserDefaults` is a store together with the process's standard store, because the presence
// test always asks the standard store, whichever store is read. This asymmetry is kept on
// purpose (apps rely on it); with a store that is the standard one it makes no difference:
//
//   qm::UserDefaults defaults = qm::UserDefaults::standard(env);
//   defaults.integerForKey("Count", 5);   // 5 until "Count" is stored
//
//   qm::UserDefaults other{env.namedSettings("group"), env.standardSettings()};
//   other.integerForKey("Count", 5);      // 5 while "Count" is stored only in "group"
//
// Enumerations: an enum with a signed-integer raw value lists its cases for these reads by
// specialising `qm::EnumRawValues`:
//
//   enum class Mode : std::int64_t { kA = 0, kB = 2 };
//   template <> struct qm::EnumRawValues<Mode> { static constexpr Mode cases[] = {Mode::kA,
//   Mode::kB}; };
//
// Thread-safety: as the stores'.

#ifndef QMCORE_PERSISTENCE_USERDEFAULTS_HPP_
#define QMCORE_PERSISTENCE_USERDEFAULTS_HPP_

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>

#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/SettingsStore.hpp"

namespace qm {

// The cases of an enumeration read by raw value (see above).
template <typename E>
struct EnumRawValues;

template <typename E>
concept RawValueEnum = std::is_enum_v<E> && requires {
  EnumRawValues<E>::cases;
};

// The case whose raw value is `raw`, or absent.
template <RawValueEnum E>
std::optional<E> enumFromRawValue(std::int64_t raw) {
  for (const E value : EnumRawValues<E>::cases) {
    if (static_cast<std::int64_t>(value) == raw) return value;
  }
  return std::nullopt;
}

struct UserDefaults {
  // The store read and written; never null.
  std::shared_ptr<SettingsStore> store;
  // The process's standard store, which every presence test asks; never null.
  std::shared_ptr<SettingsStore> standardStore;

  // The environment's standard store in both roles.
  static UserDefaults standard(Env& env) {
    std::shared_ptr<SettingsStore> s = env.standardSettings();
    return UserDefaults{s, s};
  }

  // True when an object is stored for `key` in the standard store (not in `store`).
  bool contains(std::string_view key) const { return standardStore->hasKey(key); }

  // `defaultValue` when `contains(key)` is false; otherwise the store's own typed read.
  bool boolForKey(std::string_view key, bool defaultValue) const {
    return contains(key) ? store->boolForKey(key) : defaultValue;
  }
  double doubleForKey(std::string_view key, double defaultValue) const {
    return contains(key) ? store->doubleForKey(key) : defaultValue;
  }
  std::int64_t integerForKey(std::string_view key, std::int64_t defaultValue) const {
    return contains(key) ? store->integerForKey(key) : defaultValue;
  }
  std::optional<double> nullableDouble(std::string_view key,
                                       std::optional<double> defaultValue) const {
    return contains(key) ? std::optional<double>(store->doubleForKey(key)) : defaultValue;
  }
  // The case of the stored integer; `defaultValue` when the key is absent or the raw value
  // names no case.
  template <RawValueEnum E>
  E enumValue(std::string_view key, E defaultValue) const {
    if (!contains(key)) return defaultValue;
    return enumFromRawValue<E>(store->integerForKey(key)).value_or(defaultValue);
  }
  // Writes the raw value as an integer; does not synchronise.
  template <RawValueEnum E>
  void setEnumValue(std::string_view key, E value) const {
    store->setInteger(key, static_cast<std::int64_t>(value));
  }
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_USERDEFAULTS_HPP_
