#include "qmcore/platform/internal/SettingsValueCoding.hpp"

#include <cstddef>
#include <exception>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include <nlohmann/json.hpp>

namespace qm::internal {
namespace {

using nlohmann::json;

template <typename... Ts>
struct Overloaded : Ts... {
  using Ts::operator()...;
};
template <typename... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

json toJson(const SettingsValue& value) {
  json payload =
      std::visit(Overloaded{
                     [](bool v) { return json(v); },
                     [](std::int64_t v) { return json(v); },
                     [](double v) { return json(v); },  // CBOR keeps NaN, infinities and -0.0
                     [](const std::string& v) { return json(v); },
                     [](const SettingsValue::Bytes& v) { return json::binary(v); },
                     [](Date v) { return json(v.timeIntervalSince1970()); },
                     [](const SettingsValue::Array& v) {
                       json array = json::array();
                       for (const SettingsValue& element : v) array.push_back(toJson(element));
                       return array;
                     },
                     [](const SettingsValue::Dictionary& v) {
                       json object = json::object();
                       for (const auto& [key, element] : v) object[key] = toJson(element);
                       return object;
                     },
                 },
                 value.storage());
  return json::array({static_cast<std::int64_t>(kindOf(value)), std::move(payload)});
}

// Stops the reading of input that nests containers deeper than `kMaxEncodedNesting` (nlohmann
// reads nested containers by recursion, so a long run of array heads would exhaust the stack)
// or declares more elements than the input has bytes (each element takes at least one).
class ShapeCheck final : public json::json_sax_t {
 public:
  explicit ShapeCheck(std::size_t inputSize) : inputSize_(inputSize) {}

  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t&) override { return true; }
  bool string(string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool key(string_t&) override { return true; }
  bool start_object(std::size_t elements) override { return enter(elements); }
  bool end_object() override { return leave(); }
  bool start_array(std::size_t elements) override { return enter(elements); }
  bool end_array() override { return leave(); }
  bool parse_error(std::size_t, const std::string&, const json::exception&) override {
    return false;
  }

 private:
  // nlohmann's size of a container of indefinite length.
  static constexpr std::size_t kUnknownSize = static_cast<std::size_t>(-1);

  bool enter(std::size_t elements) {
    if (elements != kUnknownSize && elements > inputSize_) return false;
    return ++depth_ <= kMaxEncodedNesting;
  }
  bool leave() {
    --depth_;
    return true;
  }

  const std::size_t inputSize_;
  std::size_t depth_ = 0;
};

std::optional<double> numberOf(const json& payload) {
  if (payload.is_number_float()) return payload.get<double>();
  // An integral double may come back from the encoder's compact forms as an integer.
  // (is_number_integer is true for unsigned numbers too, so ask about those first.)
  if (payload.is_number_unsigned()) return static_cast<double>(payload.get<std::uint64_t>());
  if (payload.is_number_integer()) return static_cast<double>(payload.get<std::int64_t>());
  return std::nullopt;
}

std::optional<SettingsValue> fromJson(const json& tagged) {
  if (!tagged.is_array() || tagged.size() != 2 || !tagged[0].is_number_integer()) {
    return std::nullopt;
  }
  const json& payload = tagged[1];
  switch (static_cast<SettingsKind>(tagged[0].get<std::int64_t>())) {
    case SettingsKind::kBool:
      if (!payload.is_boolean()) return std::nullopt;
      return SettingsValue(payload.get<bool>());
    case SettingsKind::kInteger:
      if (payload.is_number_unsigned()) {
        const auto v = payload.get<std::uint64_t>();
        if (v > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
          return std::nullopt;
        }
        return SettingsValue(static_cast<std::int64_t>(v));
      }
      if (!payload.is_number_integer()) return std::nullopt;
      return SettingsValue(payload.get<std::int64_t>());
    case SettingsKind::kDouble:
      if (const auto v = numberOf(payload)) return SettingsValue(*v);
      return std::nullopt;
    case SettingsKind::kString:
      if (!payload.is_string()) return std::nullopt;
      return SettingsValue(payload.get<std::string>());
    case SettingsKind::kBytes:
      if (!payload.is_binary()) return std::nullopt;
      return SettingsValue(SettingsValue::Bytes(payload.get_binary()));
    case SettingsKind::kDate:
      if (const auto v = numberOf(payload)) return SettingsValue(Date::fromUnixSeconds(*v));
      return std::nullopt;
    case SettingsKind::kArray: {
      if (!payload.is_array()) return std::nullopt;
      SettingsValue::Array array;
      array.reserve(payload.size());
      for (const json& element : payload) {
        auto decoded = fromJson(element);
        if (!decoded) return std::nullopt;
        array.push_back(std::move(*decoded));
      }
      return SettingsValue(std::move(array));
    }
    case SettingsKind::kDictionary: {
      if (!payload.is_object()) return std::nullopt;
      SettingsValue::Dictionary dictionary;
      for (const auto& [key, element] : payload.items()) {
        auto decoded = fromJson(element);
        if (!decoded) return std::nullopt;
        dictionary.emplace(key, std::move(*decoded));
      }
      return SettingsValue(std::move(dictionary));
    }
  }
  return std::nullopt;  // a kind of a later version
}

}  // namespace

SettingsKind kindOf(const SettingsValue& value) {
  return std::visit(Overloaded{
                        [](bool) { return SettingsKind::kBool; },
                        [](std::int64_t) { return SettingsKind::kInteger; },
                        [](double) { return SettingsKind::kDouble; },
                        [](const std::string&) { return SettingsKind::kString; },
                        [](const SettingsValue::Bytes&) { return SettingsKind::kBytes; },
                        [](Date) { return SettingsKind::kDate; },
                        [](const SettingsValue::Array&) { return SettingsKind::kArray; },
                        [](const SettingsValue::Dictionary&) { return SettingsKind::kDictionary; },
                    },
                    value.storage());
}

std::vector<std::uint8_t> encodeSettingsValue(const SettingsValue& value) {
  return json::to_cbor(toJson(value));
}

std::optional<SettingsValue> decodeSettingsValue(std::span<const std::uint8_t> bytes) {
  // nlohmann throws for some malformed input even with exceptions turned off (a declared
  // size beyond what a container can hold), and any failure here only means "not ours".
  try {
    // Tags are never written, so one in the input means it is not ours (for both passes).
    ShapeCheck check(bytes.size());
    if (!json::sax_parse(bytes.begin(), bytes.end(), &check, json::input_format_t::cbor,
                         /*strict=*/true)) {
      return std::nullopt;
    }
    const json tagged =
        json::from_cbor(bytes.begin(), bytes.end(), /*strict=*/true,
                        /*allow_exceptions=*/false, json::cbor_tag_handler_t::error);
    if (tagged.is_discarded()) return std::nullopt;
    return fromJson(tagged);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace qm::internal
