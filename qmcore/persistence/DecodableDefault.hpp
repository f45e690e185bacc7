// Record fields whose type carries a default: a field missing from the JSON object (or null)
// decodes as the default instead of failing; a value of the wrong type still fails.
//
//   struct Settings {
//     qm::DecodableDefault::True enabled;                       // true unless the text says so
//     qm::DecodableDefault::EmptyList<std::vector<int>> ids;    // {} unless given
//   };
//   void from_json(const nlohmann::json& j, Settings& s) {
//     qm::decodeField(j, "enabled", s.enabled);
//     qm::decodeField(j, "ids", s.ids);
//   }
//
// A new default is a source type with `using Value = ...;` and `static Value defaultValue()`.

#ifndef QMCORE_PERSISTENCE_DECODABLEDEFAULT_HPP_
#define QMCORE_PERSISTENCE_DECODABLEDEFAULT_HPP_

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "qmcore/persistence/JsonCoding.hpp"

namespace qm::DecodableDefault {

namespace Sources {
struct True {
  using Value = bool;
  static Value defaultValue() { return true; }
};
struct False {
  using Value = bool;
  static Value defaultValue() { return false; }
};
struct Zero {
  using Value = std::int64_t;
  static Value defaultValue() { return 0; }
};
struct EmptyString {
  using Value = std::string;
  static Value defaultValue() { return {}; }
};
template <typename List>
struct EmptyList {
  using Value = List;
  static Value defaultValue() { return {}; }
};
template <typename Map>
struct EmptyMap {
  using Value = Map;
  static Value defaultValue() { return {}; }
};
}  // namespace Sources

template <typename Source>
struct Wrapper {
  using Value = typename Source::Value;

  Wrapper() = default;
  Wrapper(Value value) : wrappedValue(std::move(value)) {}  // NOLINT

  Value wrappedValue = Source::defaultValue();

  // Equality and hashing look at the value only.
  bool operator==(const Wrapper& other) const { return wrappedValue == other.wrappedValue; }
};

using True = Wrapper<Sources::True>;
using False = Wrapper<Sources::False>;
using Zero = Wrapper<Sources::Zero>;
using EmptyString = Wrapper<Sources::EmptyString>;
template <typename List>
using EmptyList = Wrapper<Sources::EmptyList<List>>;
template <typename Map>
using EmptyMap = Wrapper<Sources::EmptyMap<Map>>;

template <typename Source>
void to_json(nlohmann::json& j, const Wrapper<Source>& field) {
  j = field.wrappedValue;
}

// A present value must be a Value: errors propagate.
template <typename Source>
void from_json(const nlohmann::json& j, Wrapper<Source>& field) {
  field.wrappedValue = Source::defaultValue();
  field.wrappedValue = decodeValue<typename Source::Value>(j);
}

}  // namespace qm::DecodableDefault

namespace qm {

// A missing key or null gives the source's default.
template <typename Source>
void decodeField(const nlohmann::json& object, std::string_view key,
                 DecodableDefault::Wrapper<Source>& out) {
  if (!object.is_object()) throw internal::valueError(object, "Dictionary", {});
  const auto found = object.find(key);
  if (found == object.end() || found->is_null()) {
    out.wrappedValue = Source::defaultValue();
    return;
  }
  try {
    out.wrappedValue = decodeValue<typename Source::Value>(*found);
  } catch (const JsonDecodingError& error) {
    throw error.nestedIn(std::string(key));
  }
}

}  // namespace qm

template <typename Source>
struct std::hash<qm::DecodableDefault::Wrapper<Source>> {
  std::size_t operator()(const qm::DecodableDefault::Wrapper<Source>& field) const {
    return std::hash<typename Source::Value>()(field.wrappedValue);
  }
};

#endif  // QMCORE_PERSISTENCE_DECODABLEDEFAULT_HPP_
