// JSON texts of records, with fixed encoder and decoder settings, and JSON values kept under a
// key of the standard settings store.
//
// A record is encodable and decodable when nlohmann/json finds `to_json`/`from_json` for it
// (see JsonCoding.hpp) and names itself through `qm::JsonTypeName<T>`:
//
//   std::optional<std::string> text = qm::JsonHelper::jsonStringFromObject(track);
//   std::optional<Track> back = qm::JsonHelper::objectFromJsonString<Track>(*text);
//
// The encoders (each call makes its own):
//
//   configuration          layout                        slashes  dates
//   plain (jsonEncoder)    one line                      "/"      number (since 2001-01-01)
//   compact                one line                      "/"      ISO 8601 text
//   pretty                 indented by two spaces        "\/"     number
//   pretty ordered by key  indented by two spaces        "\/"     number
//   debug description      one line                      "/"      ISO 8601 text
//
// Object keys come out sorted by key in every configuration (nlohmann/json keeps objects
// ordered so); the ordered configurations rely on it, the others allow any order.
// The decoders: plain (dates as numbers) and ISO 8601 dates.
//
// Failures never throw to the caller: they give an absent result (or, from
// `objectResultFromJsonString`, an `Error`) and, where noted, one debug log line.
// Thread-safe: nothing is shared between calls.

#ifndef QMCORE_PERSISTENCE_JSONHELPER_HPP_
#define QMCORE_PERSISTENCE_JSONHELPER_HPP_

#include <nlohmann/json.hpp>

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/persistence/JsonCoding.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/SettingsStore.hpp"

namespace qm {

// The error domain and code of a readable decoding failure.
inline constexpr std::string_view kJsonDecodingErrorDomain = "com.quillmark.account";
inline constexpr std::int64_t kJsonDecodingErrorCode = 1006;

// A decoded record, or why decoding failed.
template <typename T>
using JsonResult = std::variant<T, Error>;

struct JsonEncoderOptions {
  // Indentation of nested values; negative: everything on one line.
  int indent = -1;
  // Whether "/" is written as "\/".
  bool escapesSlashes = false;
  JsonDateStrategy dates = JsonDateStrategy::kReferenceDateSeconds;
};

class JsonEncoder {
 public:
  explicit JsonEncoder(JsonEncoderOptions options = {}) : options_(options) {}
  const JsonEncoderOptions& options() const { return options_; }

  // The text of `value`. Throws when the value cannot be written (a string that is not valid
  // UTF-8, or an exception of the record's own `to_json`).
  template <typename T>
  std::string encode(const T& value) const {
    const ScopedJsonDateStrategy dates(options_.dates);
    return write(nlohmann::json(value));
  }

  // The text of a JSON value with this encoder's layout and slashes.
  std::string write(const nlohmann::json& value) const;

 private:
  JsonEncoderOptions options_;
};

class JsonDecoder {
 public:
  explicit JsonDecoder(JsonDateStrategy dates = JsonDateStrategy::kReferenceDateSeconds)
      : dates_(dates) {}

  // The record of `text`. Throws JsonDecodingError (kDataCorrupted when the text is not JSON).
  template <typename T>
  T decode(std::string_view text) const {
    const nlohmann::json value = parse(text);
    const ScopedJsonDateStrategy dates(dates_);
    return decodeValue<T>(value);
  }

  static nlohmann::json parse(std::string_view text);

 private:
  JsonDateStrategy dates_;
};

class JsonHelper {
 public:
  static JsonEncoder jsonEncoder() { return JsonEncoder(JsonEncoderOptions{}); }
  static JsonEncoder compactJsonEncoder() {
    return JsonEncoder(JsonEncoderOptions{.dates = JsonDateStrategy::kISO8601});
  }
  static JsonEncoder prettyJsonEncoder() {
    return JsonEncoder(JsonEncoderOptions{.indent = 2, .escapesSlashes = true});
  }
  static JsonEncoder prettyOrderedByKeyJsonEncoder() { return prettyJsonEncoder(); }
  static JsonEncoder debugDescriptionJsonEncoder() {
    return JsonEncoder(JsonEncoderOptions{.dates = JsonDateStrategy::kISO8601});
  }

  // The plain encoding; absent when encoding fails (nothing is logged).
  template <typename T>
  static std::optional<std::string> jsonStringFromObject(const T& object) {
    try {
      return jsonEncoder().encode(object);
    } catch (const std::exception&) {
      return std::nullopt;
    }
  }

  // The compact, pretty and pretty-ordered encodings; absent after one log line when
  // encoding fails ("[JSON] Error while compact encoding object, error: ...", "[JSON] Error
  // while pretty encoding object, error: ..." for both pretty forms).
  template <typename T>
  static std::optional<std::string> compactJsonStringFromObject(const T& object) {
    return encodeOrLog(compactJsonEncoder(), object, "compact");
  }
  template <typename T>
  static std::optional<std::string> prettyJsonStringFromObject(const T& object) {
    return encodeOrLog(prettyJsonEncoder(), object, "pretty");
  }
  template <typename T>
  static std::optional<std::string> prettyOrderedByKeyJsonStringFromObject(const T& object) {
    return encodeOrLog(prettyOrderedByKeyJsonEncoder(), object, "pretty");
  }

  // The record of a text, dates as numbers or as ISO 8601 text. Absent when the text does not
  // decode, after the log line "Error on decoding from json <error>, json: <text>, target
  // type: <JsonTypeName<T>>".
  template <typename T>
  static std::optional<T> objectFromJsonString(std::string_view text) {
    return decodeOrLog<T>(JsonDecoder(), text);
  }
  template <typename T>
  static std::optional<T> objectFromJsonStringWithIsoDates(std::string_view text) {
    return decodeOrLog<T>(JsonDecoder(JsonDateStrategy::kISO8601), text);
  }

  // The record of a text, or an error saying what is wrong. A missing key, a missing value
  // and a value of another type give an Error in kJsonDecodingErrorDomain with code
  // kJsonDecodingErrorCode whose description begins "Type: <record type>, " and names the key
  // or type and the coding path; a text that is not JSON gives the platform's "corrupt data"
  // error (domain "NSCocoaErrorDomain", code 4864). Never absent here: every C++ text has
  // bytes; the optional keeps the shape apps expect.
  template <typename T>
  static std::optional<JsonResult<T>> objectResultFromJsonString(std::string_view text) {
    try {
      return JsonResult<T>(std::in_place_index<0>, JsonDecoder().decode<T>(text));
    } catch (const JsonDecodingError& error) {
      return JsonResult<T>(std::in_place_index<1>, decodingErrorFor(error, JsonTypeName<T>::value));
    }
  }

  // The record encoded with the plain encoder and decoded again; absent if either step fails.
  template <typename T>
  static std::optional<T> cloneViaJson(const T& object) {
    const std::optional<std::string> text = jsonStringFromObject(object);
    if (!text) return std::nullopt;
    return objectFromJsonString<T>(*text);
  }

  // The record kept as JSON text under `key` in the environment's standard store; absent when
  // no string is stored there (or it does not decode, logged as above).
  template <typename T>
  static std::optional<T> jsonObjectFromUserDefaults(Env& env, std::string_view key) {
    const std::optional<SettingsValue> stored = env.standardSettings()->objectForKey(key);
    if (!stored || !stored->is<std::string>()) return std::nullopt;
    return objectFromJsonString<T>(*stored->get<std::string>());
  }

  // Keeps `object` as plain JSON text under `key` in the environment's standard store: an
  // absent object removes the key; an object that does not encode leaves the stored value as
  // it is. With `synchronizeDefaults` the store is synchronised afterwards (after a removal
  // too).
  template <typename T>
  static void saveJsonObjectToUserDefaults(Env& env, std::string_view key,
                                           const std::optional<T>& object,
                                           bool synchronizeDefaults) {
    const std::shared_ptr<SettingsStore> store = env.standardSettings();
    if (!object) {
      store->removeObjectForKey(key);
    } else if (std::optional<std::string> text = jsonStringFromObject(*object)) {
      store->setObject(key, SettingsValue(std::move(*text)));
    }
    if (synchronizeDefaults) store->synchronize();
  }

  // The JSON object of a text, untyped; absent when the text is not JSON (whose error is
  // printed as one line on standard output) or its top level is not an object.
  static std::optional<nlohmann::json> convertToDictionary(std::string_view text);

  // The Error of a readable decoding failure, as `objectResultFromJsonString` returns it.
  static Error decodingErrorFor(const JsonDecodingError& error, std::string_view typeName);

 private:
  template <typename T>
  static std::optional<std::string> encodeOrLog(const JsonEncoder& encoder, const T& object,
                                                const char* configuration) {
    try {
      return encoder.encode(object);
    } catch (const std::exception& error) {
      logEncodingError(configuration, error);
      return std::nullopt;
    }
  }

  template <typename T>
  static std::optional<T> decodeOrLog(const JsonDecoder& decoder, std::string_view text) {
    try {
      return decoder.decode<T>(text);
    } catch (const std::exception& error) {
      logDecodingError(error, text, JsonTypeName<T>::value);
      return std::nullopt;
    }
  }

  static void logEncodingError(const char* configuration, const std::exception& error);

 public:
  // The log line of a failed decoding (also written by the sequence store).
  static void logDecodingError(const std::exception& error, std::string_view text,
                               std::string_view typeName);
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_JSONHELPER_HPP_
