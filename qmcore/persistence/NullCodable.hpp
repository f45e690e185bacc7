// A record field that is written as an explicit JSON null when absent (instead of being left
// out) and read leniently: a null or a value of another type reads as absent.
//
//   struct Note { qm::NullCodable<std::string> title; };
//   // to_json:   {"title": null}
//   // from_json: {"title": 5} gives an absent title, not an error
//
// Decode it with `decodeField` like any field: a missing key is still an error.

#ifndef QMCORE_PERSISTENCE_NULLCODABLE_HPP_
#define QMCORE_PERSISTENCE_NULLCODABLE_HPP_

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

#include "qmcore/persistence/JsonCoding.hpp"

namespace qm {

template <typename Value>
struct NullCodable {
  NullCodable() = default;
  NullCodable(std::optional<Value> value) : wrappedValue(std::move(value)) {}  // NOLINT

  std::optional<Value> wrappedValue;

  bool operator==(const NullCodable&) const = default;
};

template <typename Value>
void to_json(nlohmann::json& j, const NullCodable<Value>& field) {
  if (field.wrappedValue) {
    j = *field.wrappedValue;
  } else {
    j = nullptr;
  }
}

template <typename Value>
void from_json(const nlohmann::json& j, NullCodable<Value>& field) {
  try {
    field.wrappedValue = decodeValue<Value>(j);
  } catch (const std::exception&) {
    // Lenient by design: whatever does not read as a Value is absent.
    field.wrappedValue.reset();
  }
}

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_NULLCODABLE_HPP_
