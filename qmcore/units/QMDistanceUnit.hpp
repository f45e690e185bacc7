// The built-in units of travelled distances (odometers, navigation), the defaults of the unit
// systems, and the packed integer form of a `QMDistanceUnitType`.
//
// Factors are metres per unit; the foot is the deliberately rounded 0.30479999. The names are
// plural ("Feet", "miles" in lower case) and are string-table keys, so they stay as they are.
// The foot and the metre switch to mile and kilometre by default, at thresholds that the host
// app decides through the environment settings; the factories take them as
// `DistanceSwitchValues` (the provider passes `EnvironmentSettings::distanceSwitchValues()`),
// and a unit keeps the values it was made with. Without a host's say: 2000 ft and 1000 m.

#ifndef QMCORE_UNITS_QMDISTANCEUNIT_HPP_
#define QMCORE_UNITS_QMDISTANCEUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMFootDistanceUnitUuid;          // ".distance-foot"
extern const std::string_view QMMeterDistanceUnitUuid;         // ".distance-meter"
extern const std::string_view QMKilometerDistanceUnitUuid;     // ".distance-kilometer"
extern const std::string_view QMMileDistanceUnitUuid;          // ".distance-mile"
extern const std::string_view QMNauticalMileDistanceUnitUuid;  // ".distance-nauticalmile"

// The built-in switch values of the distance foot and metre.
struct DistanceSwitchValues {
  // Feet from which the foot switches to miles.
  std::int64_t feet = 2000;
  // Metres from which the metre switches to kilometres.
  std::int64_t meters = 1000;
};

class QMDistanceUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit.
  static std::shared_ptr<const QMDistanceUnit> footUnit(const DistanceSwitchValues& switches = {});
  static std::shared_ptr<const QMDistanceUnit> meterUnit(const DistanceSwitchValues& switches = {});
  static std::shared_ptr<const QMDistanceUnit> kilometerUnit();
  static std::shared_ptr<const QMDistanceUnit> mileUnit();
  static std::shared_ptr<const QMDistanceUnit> nauticalMileUnit();

  // Every built-in distance unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMDistanceUnit>> builtinUnits(
      const DistanceSwitchValues& switches = {});

  // Feet for imperial (1); for nautical (2) metres when `nauticalDistanceUnitTypePreference`
  // is 0, else feet; metres for every other type.
  static std::shared_ptr<const QMDistanceUnit> defaultForUnitType(
      std::int64_t type, std::int64_t nauticalDistanceUnitTypePreference,
      const DistanceSwitchValues& switches = {});

  // The library string for "distance".
  static std::string localizedSubjectName();

  // (isKilometric & 1) | unitType << 8.
  static std::int64_t encodeDistanceUnit(QMDistanceUnitType type);
  // isKilometric from bit 0; the unit type from the bits above (arithmetic shift), 0 unless it
  // lies in 0...3. Never fails.
  static QMDistanceUnitType decodeDistanceUnitFromInteger(std::int64_t value);

  // The platform length-formatter unit code: 11 m, 14 km, 1282 ft, 1284 mi and nm.
  int lengthFormatterType() const { return lengthFormatterType_; }
  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kDistance; }
  // The metre (the very constant `QMMeterDistanceUnitUuid`) describes itself in feet:
  // "1 m = 3.280840 ft"; every other unit in metres.
  std::string uiDescription() const override;

 private:
  static std::shared_ptr<const QMDistanceUnit> make(const Definition& definition,
                                                    int lengthFormatterType);

  int lengthFormatterType_ = 0;
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMDISTANCEUNIT_HPP_
