#include "qmcore/units/QMUnitTypes.hpp"

#include <nlohmann/json.hpp>

#include <limits>
#include <string>

namespace qm {
namespace {

using nlohmann::json;

// The integer under `key` of an object; only JSON integers are accepted (nlohmann would
// otherwise truncate 2.5 or turn true into 1).
std::int64_t integerAt(const json& j, const char* key) {
  const json& value = j.at(key);
  if (!value.is_number_integer()) {
    throw json::type_error::create(
        302, std::string("\"") + key + "\" must be an integer, not " + value.type_name(), &j);
  }
  if (value.is_number_unsigned() &&
      value.get<std::uint64_t>() >
          static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    throw json::out_of_range::create(406, std::string("\"") + key + "\" is too large", &j);
  }
  return value.get<std::int64_t>();
}

[[noreturn]] void throwNotAValue(const json& j, const char* what, std::int64_t raw) {
  throw json::out_of_range::create(406, std::to_string(raw) + " is not a " + what, &j);
}

DistanceUnitType distanceUnitTypeFromRaw(const json& context, std::int64_t raw) {
  // 3 is accepted as the packed form's decoder accepts it.
  if (raw < 0 || raw > 3) throwNotAValue(context, "distance unit type (0 to 3)", raw);
  return static_cast<DistanceUnitType>(raw);
}

}  // namespace

void to_json(json& j, DistanceUnitType value) {
  j = json{{"unitType", static_cast<std::int64_t>(value)}};
}

void from_json(const json& j, DistanceUnitType& value) {
  value = distanceUnitTypeFromRaw(j, integerAt(j, "unitType"));
}

void to_json(json& j, QMMeasurementSubject value) {
  j = json{{"subject", static_cast<std::int64_t>(value)}};
}

void from_json(const json& j, QMMeasurementSubject& value) {
  const std::int64_t raw = integerAt(j, "subject");
  if (raw < 0 || raw > 10 || raw == 4) {
    throwNotAValue(j, "measurement subject (0 to 10 without 4)", raw);
  }
  value = static_cast<QMMeasurementSubject>(raw);
}

void to_json(json& j, const QMDistanceUnitType& value) {
  j = json{{"isKilometric", value.isKilometric},
           {"unitType", static_cast<std::int64_t>(value.unitType)}};
}

void from_json(const json& j, QMDistanceUnitType& value) {
  const json& isKilometric = j.at("isKilometric");
  if (!isKilometric.is_boolean()) {
    throw json::type_error::create(
        302, std::string("\"isKilometric\" must be a boolean, not ") + isKilometric.type_name(),
        &j);
  }
  const json& unitType = j.at("unitType");
  QMDistanceUnitType result{.isKilometric = isKilometric.get<bool>()};
  if (unitType.is_object()) {
    result.unitType = unitType.get<DistanceUnitType>();
  } else {
    result.unitType = distanceUnitTypeFromRaw(j, integerAt(j, "unitType"));
  }
  value = result;
}

}  // namespace qm
