// The small value types that name a unit system, a distance unit choice and a measured kind,
// and their JSON forms.
//
//   DistanceUnitType: the unit system, 0 metric, 1 imperial, 2 nautical (3 is accepted when
//     decoding but has no named meaning here).
//   QMDistanceUnitType: the big or small distance unit of a system; packed into one integer by
//     `QMDistanceUnit::encodeDistanceUnit` as (isKilometric & 1) | unitType << 8.
//   QMMeasurementSubject: the kind a unit measures (4 is unused).
//
// JSON (nlohmann::json, found by argument-dependent lookup):
//
//   DistanceUnitType::kNautical          <-> {"unitType": 2}
//   QMMeasurementSubject::kDistance      <-> {"subject": 2}
//   QMDistanceUnitType{true, kNautical}  <-> {"isKilometric": true, "unitType": 2}
//
// Reading a `QMDistanceUnitType` accepts the nested unit type both as a bare integer and as the
// object {"unitType": n}. Bad input throws a nlohmann::json exception with a readable message:
// `out_of_range` (id 403) for a missing key, `type_error` (id 302) for a value of the wrong JSON
// type, `out_of_range` (id 406) for an integer that names no value of the enumeration.
//
// Functions elsewhere that take a unit system as `std::int64_t` accept any integer, because the
// provider's stored general type is deliberately left unchecked; they document what happens to
// values outside 0...2.

#ifndef QMCORE_UNITS_QMUNITTYPES_HPP_
#define QMCORE_UNITS_QMUNITTYPES_HPP_

#include <nlohmann/json_fwd.hpp>

#include <cstdint>

namespace qm {

enum class DistanceUnitType : std::int64_t {
  kMetric = 0,    // kilometres, metres
  kImperial = 1,  // miles, feet
  kNautical = 2,  // nautical miles
};

struct QMDistanceUnitType {
  // true: the big unit of the system (km, mi, nm); false: the small one (m, ft).
  bool isKilometric = false;
  // The unit system; for the small unit 0 means metres and 1 feet.
  DistanceUnitType unitType = DistanceUnitType::kMetric;

  bool operator==(const QMDistanceUnitType&) const = default;
};

enum class QMMeasurementSubject : std::int64_t {
  kSpeed = 0,
  kVerticalSpeed = 1,
  kDistance = 2,
  kAltitude = 3,
  kLength = 5,
  kTime = 6,
  kArea = 7,
  kPressure = 8,
  kTemperature = 9,
  kHeading = 10,
};

void to_json(nlohmann::json& j, DistanceUnitType value);
void from_json(const nlohmann::json& j, DistanceUnitType& value);
void to_json(nlohmann::json& j, QMMeasurementSubject value);
void from_json(const nlohmann::json& j, QMMeasurementSubject& value);
void to_json(nlohmann::json& j, const QMDistanceUnitType& value);
void from_json(const nlohmann::json& j, QMDistanceUnitType& value);

}  // namespace qm

#endif  // QMCORE_UNITS_QMUNITTYPES_HPP_
