// How a value of a defaults-backed property becomes a stored object and back.
//
// Reading back is strict, as the platform's bridging of property-list objects is: a number is
// accepted for an integer, double, float or Bool only when that type holds it exactly (2.0
// reads as the integer 2, 2.5 does not; 1 reads as true, 2 does not; 0.1 stored as a double is
// not a float; 2^53 + 1 stored as an integer is not a double), a string is never a number and
// a number never a string. A value that does not convert is reported as absent, and the
// property then reads its default.

#ifndef QMCORE_PERSISTENCE_SETTINGSBRIDGE_HPP_
#define QMCORE_PERSISTENCE_SETTINGSBRIDGE_HPP_

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "qmcore/persistence/ColorPersistance.hpp"
#include "qmcore/platform/Color.hpp"
#include "qmcore/platform/SettingsStore.hpp"

namespace qm {

// Specialised per value type: `toObject` (absent: the value is an absent optional, which
// removes the key) and `fromObject` (absent: the object does not convert).
template <typename Value>
struct SettingsBridge;

namespace internal {
// The stored number as a double, when the object is a number (or a Bool, as 0 or 1) that a
// double holds exactly.
std::optional<double> storedNumber(const SettingsValue& object);
std::optional<std::int64_t> exactInteger(const SettingsValue& object);
}  // namespace internal

template <>
struct SettingsBridge<std::int64_t> {
  static std::optional<SettingsValue> toObject(std::int64_t v) { return SettingsValue(v); }
  static std::optional<std::int64_t> fromObject(const SettingsValue& object) {
    return internal::exactInteger(object);
  }
};

template <>
struct SettingsBridge<double> {
  static std::optional<SettingsValue> toObject(double v) { return SettingsValue(v); }
  static std::optional<double> fromObject(const SettingsValue& object) {
    return internal::storedNumber(object);
  }
};

template <>
struct SettingsBridge<float> {
  static std::optional<SettingsValue> toObject(float v) {
    return SettingsValue(static_cast<double>(v));
  }
  static std::optional<float> fromObject(const SettingsValue& object) {
    const std::optional<double> number = internal::storedNumber(object);
    if (!number) return std::nullopt;
    if (std::isnan(*number)) return static_cast<float>(*number);
    const auto narrow = static_cast<float>(*number);
    if (static_cast<double>(narrow) != *number) return std::nullopt;
    return narrow;
  }
};

template <>
struct SettingsBridge<bool> {
  static std::optional<SettingsValue> toObject(bool v) { return SettingsValue(v); }
  static std::optional<bool> fromObject(const SettingsValue& object) {
    const std::optional<double> number = internal::storedNumber(object);
    if (!number || (*number != 0.0 && *number != 1.0)) return std::nullopt;
    return *number == 1.0;
  }
};

template <>
struct SettingsBridge<std::string> {
  static std::optional<SettingsValue> toObject(const std::string& v) { return SettingsValue(v); }
  static std::optional<std::string> fromObject(const SettingsValue& object) {
    if (const std::string* text = object.get<std::string>()) return *text;
    return std::nullopt;
  }
};

template <>
struct SettingsBridge<SettingsValue::Bytes> {
  static std::optional<SettingsValue> toObject(const SettingsValue::Bytes& v) {
    return SettingsValue(v);
  }
  static std::optional<SettingsValue::Bytes> fromObject(const SettingsValue& object) {
    if (const auto* bytes = object.get<SettingsValue::Bytes>()) return *bytes;
    return std::nullopt;
  }
};

template <>
struct SettingsBridge<Date> {
  static std::optional<SettingsValue> toObject(Date v) { return SettingsValue(v); }
  static std::optional<Date> fromObject(const SettingsValue& object) {
    if (const Date* date = object.get<Date>()) return *date;
    return std::nullopt;
  }
};

// An absent optional has no object (writing it removes the key).
template <typename T>
struct SettingsBridge<std::optional<T>> {
  static std::optional<SettingsValue> toObject(const std::optional<T>& v) {
    if (!v) return std::nullopt;
    return SettingsBridge<T>::toObject(*v);
  }
  static std::optional<std::optional<T>> fromObject(const SettingsValue& object) {
    std::optional<T> value = SettingsBridge<T>::fromObject(object);
    if (!value) return std::nullopt;
    return std::optional<T>(std::move(value));
  }
};

// Colours and enumerations are stored in forms of their own (a colour text, a raw value); no
// stored object converts to them directly.
template <>
struct SettingsBridge<Color> {
  static std::optional<SettingsValue> toObject(const Color& v) {
    return SettingsValue(stringFromColor(v));
  }
  static std::optional<Color> fromObject(const SettingsValue&) { return std::nullopt; }
};

template <typename E>
requires std::is_enum_v<E>
struct SettingsBridge<E> {
  static std::optional<SettingsValue> toObject(E v) {
    return SettingsValue(static_cast<std::int64_t>(v));
  }
  static std::optional<E> fromObject(const SettingsValue&) { return std::nullopt; }
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_SETTINGSBRIDGE_HPP_
