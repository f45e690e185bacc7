// Properties bound to one key of a settings store: reading the property reads the store (with
// an optional override and an optional validating converter in front), writing it writes the
// store. No value is cached, so two properties on one key see each other's writes at once.
//
//   qm::UserDefaultsBackedInt launches(0, "LaunchCount", qm::UserDefaults::standard(env));
//   launches.setWrappedValue(launches.wrappedValue() + 1);   // stored and synchronised
//   launches.modifyWrappedValue([](std::int64_t& n) { ++n; });
//
// Reading (`getValue`), in order:
//  1. an override answering (true, v) gives v; the store is not touched;
//  2. with a converter, the object stored in `storage` (no presence test) that converts to
//     Value is handed to it: (true, v) gives v, (false, _) the default; no object or one that
//     does not convert goes on to 3;
//  3. `internalGetValue()`: the default unless the key is present in the *standard* store
//     (see UserDefaults.hpp) and the object in `storage` converts exactly (SettingsBridge.hpp).
//     A stored object of another kind reads as the default and is left as it is.
//
// Writing (`setValue`): an absent optional removes the key (no synchronisation); any other
// value is stored and the store synchronised. The enumeration and colour properties store
// without synchronising.
//
// Not thread-safe by themselves; the stores are.

#ifndef QMCORE_PERSISTENCE_USERDEFAULTSBACKED_HPP_
#define QMCORE_PERSISTENCE_USERDEFAULTSBACKED_HPP_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "qmcore/persistence/SettingsBridge.hpp"
#include "qmcore/persistence/UserDefaults.hpp"
#include "qmcore/platform/Color.hpp"

namespace qm {

// Whether a value is an absent optional, without knowing what it wraps.
template <typename T>
struct AnyOptional {
  static bool isNil(const T&) { return false; }
};
template <typename T>
struct AnyOptional<std::optional<T>> {
  static bool isNil(const std::optional<T>& value) { return !value.has_value(); }
};

template <typename Value>
class UserDefaultsBacked {
 public:
  // Answers (true, v) to make the property read v.
  using GetOverride = std::function<std::pair<bool, Value>()>;
  // Validates or converts a stored value: (false, _) rejects it in favour of the default.
  using Converter = std::function<std::pair<bool, Value>(const Value&)>;

  // Nothing is read or written here.
  UserDefaultsBacked(Value wrappedValue, std::string key, UserDefaults storage,
                     GetOverride getOverride = {}, Converter converter = {})
      : key_(std::move(key)),
        defaultValue_(std::move(wrappedValue)),
        storage_(std::move(storage)),
        getOverride_(std::move(getOverride)),
        converter_(std::move(converter)) {}

  // For an optional Value: the default is absent.
  UserDefaultsBacked(
      std::string key, UserDefaults storage, GetOverride getOverride = {},
      Converter converter = {}) requires std::is_constructible_v<Value, std::nullopt_t>
      : UserDefaultsBacked(Value(std::nullopt), std::move(key), std::move(storage),
                           std::move(getOverride), std::move(converter)) {}

  virtual ~UserDefaultsBacked() = default;

  virtual Value wrappedValue() const { return getValue(); }
  virtual void setWrappedValue(const Value& value) { setValue(value); }
  // Reads, lets `change` change the value in place, and writes it back through the setter.
  virtual void modifyWrappedValue(const std::function<void(Value&)>& change) {
    Value value = getValue();
    change(value);
    setValue(value);
  }

  // The override's answer; without one, (false, the default).
  virtual std::pair<bool, Value> getOverridenValue() const {
    if (getOverride_) return getOverride_();
    return {false, defaultValue_};
  }

  // The type's read of the store (rule 3 above).
  virtual Value internalGetValue() const {
    if (!storage_.contains(key_)) return defaultValue_;
    if (std::optional<Value> value = storedValue()) return std::move(*value);
    return defaultValue_;
  }

  // The type's write of the store.
  virtual void setValue(const Value& value) {
    if (AnyOptional<Value>::isNil(value)) {
      storage_.store->removeObjectForKey(key_);
      return;
    }
    if (std::optional<SettingsValue> object = SettingsBridge<Value>::toObject(value)) {
      storage_.store->setObject(key_, std::move(*object));
      storage_.store->synchronize();
    }
  }

  Value getValue() const {
    std::pair<bool, Value> overridden = getOverridenValue();
    if (overridden.first) return std::move(overridden.second);
    if (converter_) {
      if (std::optional<Value> stored = storedValue()) {
        std::pair<bool, Value> converted = converter_(*stored);
        return converted.first ? std::move(converted.second) : defaultValue_;
      }
    }
    return internalGetValue();
  }

  const std::string& key() const { return key_; }
  const Value& defaultValue() const { return defaultValue_; }
  const UserDefaults& storage() const { return storage_; }

 protected:
  // The object stored for the key in `storage`, when it converts to Value.
  std::optional<Value> storedValue() const {
    const std::optional<SettingsValue> object = storage_.store->objectForKey(key_);
    if (!object) return std::nullopt;
    return SettingsBridge<Value>::fromObject(*object);
  }

 private:
  const std::string key_;
  const Value defaultValue_;
  const UserDefaults storage_;
  const GetOverride getOverride_;
  const Converter converter_;
};

class UserDefaultsBackedInt : public UserDefaultsBacked<std::int64_t> {
 public:
  using UserDefaultsBacked::UserDefaultsBacked;
};

// Kept as a number holding the float: a stored double that a float does not hold exactly
// reads as the default.
class UserDefaultsBackedFloat : public UserDefaultsBacked<float> {
 public:
  using UserDefaultsBacked::UserDefaultsBacked;
};

class UserDefaultsBackedString : public UserDefaultsBacked<std::string> {
 public:
  using UserDefaultsBacked::UserDefaultsBacked;
};

// Setting an absent string removes the key.
class UserDefaultsBackedNullableString : public UserDefaultsBacked<std::optional<std::string>> {
 public:
  using UserDefaultsBacked::UserDefaultsBacked;
};

class UserDefaultsBackedBool : public UserDefaultsBacked<bool> {
 public:
  using UserDefaultsBacked::UserDefaultsBacked;
};

// An enumeration kept as its raw value, read with `UserDefaults::enumValue` (a raw value that
// names no case reads as the default) and written with `setEnumValue`, without synchronising.
template <RawValueEnum E>
class UserDefaultsBackedEnum : public UserDefaultsBacked<E> {
 public:
  using UserDefaultsBacked<E>::UserDefaultsBacked;

  E internalGetValue() const override {
    return this->storage().template enumValue<E>(this->key(), this->defaultValue());
  }
  void setValue(const E& value) override {
    this->storage().template setEnumValue<E>(this->key(), value);
  }
};

// A colour kept as its colour text (ColorPersistance.hpp), written without synchronising.
// Reading: the default when `storage` holds nothing for the key, or when the standard store's
// string for the key is absent or empty; otherwise the colour of that string. A non-empty
// string that is not a colour text stops the program: a damaged stored colour is a programmer
// error, not something to paint over with black.
class UserDefaultsBackedColor : public UserDefaultsBacked<Color> {
 public:
  using UserDefaultsBacked::UserDefaultsBacked;

  Color internalGetValue() const override;
  void setValue(const Color& value) override;
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_USERDEFAULTSBACKED_HPP_
