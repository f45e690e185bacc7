// How records become JSON and back: the pieces that records' `to_json`/`from_json` functions
// (nlohmann/json's customisation points, found by argument-dependent lookup) use, so that
// `JsonHelper` can name what went wrong when a text does not decode.
//
//   struct Track { std::string name; qm::Date start; std::int64_t points = 0; };
//   template <> struct qm::JsonTypeName<Track> { static constexpr std::string_view value = "Track";
//   }; void to_json(nlohmann::json& j, const Track& t) {
//     j = {{"name", t.name}, {"start", t.start}, {"points", t.points}};
//   }
//   void from_json(const nlohmann::json& j, Track& t) {
//     qm::decodeField(j, "name", t.name);      // throws JsonDecodingError naming key and path
//     qm::decodeField(j, "start", t.start);
//     qm::decodeField(j, "points", t.points);
//   }
//
// Dates are written as the encoder in use says: seconds since 2001-01-01 as a number (the
// default form), or ISO 8601 text "yyyy-MM-ddTHH:mm:ssZ" in UTC, without fractions.
// Thread-safe: the date form in use is per thread.

#ifndef QMCORE_PERSISTENCE_JSONCODING_HPP_
#define QMCORE_PERSISTENCE_JSONCODING_HPP_

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "qmcore/platform/Date.hpp"

namespace qm {

// The unqualified name of a type in decoding messages ("AutoIncrementSequence"). Records
// specialise it; the library names the JSON value types it knows.
template <typename T>
struct JsonTypeName {
  static constexpr std::string_view value = "Value";
};
template <>
struct JsonTypeName<bool> {
  static constexpr std::string_view value = "Bool";
};
template <>
struct JsonTypeName<std::int64_t> {
  static constexpr std::string_view value = "Int";
};
template <>
struct JsonTypeName<int> {
  static constexpr std::string_view value = "Int32";
};
template <>
struct JsonTypeName<double> {
  static constexpr std::string_view value = "Double";
};
template <>
struct JsonTypeName<float> {
  static constexpr std::string_view value = "Float";
};
template <>
struct JsonTypeName<std::string> {
  static constexpr std::string_view value = "String";
};
template <>
struct JsonTypeName<Date> {
  static constexpr std::string_view value = "Date";
};

// How dates are written and read.
enum class JsonDateStrategy {
  kReferenceDateSeconds,  // a number: seconds since 2001-01-01 (the default form)
  kISO8601,               // "2001-01-01T00:00:00Z"
};

// Sets the date form of this thread's encoding or decoding for its lifetime.
class ScopedJsonDateStrategy {
 public:
  explicit ScopedJsonDateStrategy(JsonDateStrategy strategy);
  ~ScopedJsonDateStrategy();
  ScopedJsonDateStrategy(const ScopedJsonDateStrategy&) = delete;
  ScopedJsonDateStrategy& operator=(const ScopedJsonDateStrategy&) = delete;

  static JsonDateStrategy current();

 private:
  JsonDateStrategy previous_;
};

// The ISO 8601 text of a date, and the date of such a text (a "Z" or "+hh:mm" zone; absent
// for anything else).
std::string iso8601Text(Date date);
std::optional<Date> dateFromISO8601Text(std::string_view text);

void to_json(nlohmann::json& j, const Date& date);
void from_json(const nlohmann::json& j, Date& date);

// A decoding failure: what was missing or wrong, and where.
class JsonDecodingError : public std::runtime_error {
 public:
  enum class Kind { kKeyNotFound, kValueNotFound, kTypeMismatch, kDataCorrupted };

  // `subject`: the key (key not found) or the expected type's name (the others).
  JsonDecodingError(Kind kind, std::string subject, std::vector<std::string> codingPath,
                    std::string debugDescription);

  Kind kind() const { return kind_; }
  const std::string& subject() const { return subject_; }
  const std::vector<std::string>& codingPath() const { return codingPath_; }
  const std::string& debugDescription() const { return debugDescription_; }
  // "[points]", "[legs, Index 2, name]": the keys and list positions leading to the value.
  std::string codingPathDescription() const;
  // The same failure one level further out: `key` prepended to the path.
  JsonDecodingError nestedIn(std::string key) const;

 private:
  Kind kind_;
  std::string subject_;
  std::vector<std::string> codingPath_;
  std::string debugDescription_;
};

namespace internal {
// The failure of reading a `typeName` value out of `value` (a null: value not found; anything
// else: type mismatch).
JsonDecodingError valueError(const nlohmann::json& value, std::string_view typeName,
                             std::vector<std::string> codingPath);
// Turns an error of nlohmann/json's own conversions into a JsonDecodingError.
JsonDecodingError fromLibraryError(const nlohmann::json::exception& error,
                                   std::string_view typeName);
// Whether `value` is a number that T holds exactly.
template <typename T>
bool holdsInteger(const nlohmann::json& value) {
  if (value.is_number_unsigned()) {
    return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<T>::max());
  }
  if (value.is_number_integer()) {
    const std::int64_t n = value.get<std::int64_t>();
    return std::in_range<T>(n);
  }
  if (value.is_number_float()) {
    const double d = value.get<double>();
    // Whole numbers strictly inside T's range (2^63 itself is outside int64).
    return d >= static_cast<double>(std::numeric_limits<T>::min()) &&
           d < static_cast<double>(std::numeric_limits<T>::max()) + 1.0 && d == std::trunc(d);
  }
  return false;
}

// Lists and string-keyed maps, whose elements are decoded one by one with decodeValue, so that
// they are read as strictly as single values are.
template <typename T>
concept JsonList = !std::is_same_v<T, std::string> && requires(T list) {
  list.push_back(std::declval<typename T::value_type>());
};
template <typename T>
concept JsonStringMap = std::is_same_v<typename T::key_type, std::string> && requires {
  typename T::mapped_type;
};
}  // namespace internal

// Decodes `value` as T, turning nlohmann/json's conversion errors into JsonDecodingError.
// Numbers, Booleans and strings are read strictly, as the platform's decoder does, in lists and
// string-keyed maps too: no Boolean as a number, no 1.5 or 1e99 as an integer, no number as a
// string.
template <typename T>
T decodeValue(const nlohmann::json& value) {
  if constexpr (std::is_same_v<T, bool>) {
    if (!value.is_boolean()) throw internal::valueError(value, JsonTypeName<T>::value, {});
  } else if constexpr (std::is_integral_v<T>) {
    if (!internal::holdsInteger<T>(value)) {
      throw internal::valueError(value, JsonTypeName<T>::value, {});
    }
  } else if constexpr (std::is_floating_point_v<T>) {
    if (!value.is_number()) throw internal::valueError(value, JsonTypeName<T>::value, {});
  } else if constexpr (std::is_same_v<T, std::string>) {
    if (!value.is_string()) throw internal::valueError(value, JsonTypeName<T>::value, {});
  } else if constexpr (internal::JsonList<T>) {
    if (!value.is_array()) throw internal::valueError(value, "Array", {});
    T list;
    for (std::size_t i = 0; i < value.size(); ++i) {
      try {
        list.push_back(decodeValue<typename T::value_type>(value[i]));
      } catch (const JsonDecodingError& error) {
        throw error.nestedIn("Index " + std::to_string(i));
      }
    }
    return list;
  } else if constexpr (internal::JsonStringMap<T>) {
    if (!value.is_object()) throw internal::valueError(value, "Dictionary", {});
    T map;
    for (const auto& [key, item] : value.items()) {
      try {
        map.emplace(key, decodeValue<typename T::mapped_type>(item));
      } catch (const JsonDecodingError& error) {
        throw error.nestedIn(key);
      }
    }
    return map;
  }
  try {
    return value.get<T>();
  } catch (const JsonDecodingError&) {
    throw;
  } catch (const nlohmann::json::type_error&) {
    throw internal::valueError(value, JsonTypeName<T>::value, {});
  } catch (const nlohmann::json::exception& error) {
    throw internal::fromLibraryError(error, JsonTypeName<T>::value);
  }
}

// Reads the field `key` of the JSON object `object` into `out`. A missing key, a null or a
// value of another type throws JsonDecodingError with the path to the field; errors from
// inside the field's own decoding get the key prepended to their path.
template <typename T>
void decodeField(const nlohmann::json& object, std::string_view key, T& out) {
  if (!object.is_object()) {
    throw internal::valueError(object, "Dictionary", {});
  }
  const auto found = object.find(key);
  if (found == object.end()) {
    throw JsonDecodingError(JsonDecodingError::Kind::kKeyNotFound, std::string(key), {},
                            "No value associated with key \"" + std::string(key) + "\".");
  }
  try {
    out = decodeValue<T>(*found);
  } catch (const JsonDecodingError& error) {
    throw error.nestedIn(std::string(key));
  }
}

// Reads an optional field: a missing key or null leaves `out` absent.
template <typename T>
void decodeFieldIfPresent(const nlohmann::json& object, std::string_view key,
                          std::optional<T>& out) {
  if (!object.is_object()) throw internal::valueError(object, "Dictionary", {});
  const auto found = object.find(key);
  if (found == object.end() || found->is_null()) {
    out.reset();
    return;
  }
  T value{};
  decodeField(object, key, value);
  out = std::move(value);
}

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_JSONCODING_HPP_
