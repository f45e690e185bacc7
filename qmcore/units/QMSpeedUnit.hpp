// The built-in units of speed over ground. The factor is km/h per unit (km/h is 1.0), not the
// SI base: convert to metres per second with `QMCalculateMetricSpeedForKilometric`.

#ifndef QMCORE_UNITS_QMSPEEDUNIT_HPP_
#define QMCORE_UNITS_QMSPEEDUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMKmhSpeedUnitUuid;   // ".speed-kmh"
extern const std::string_view QMMphSpeedUnitUuid;   // ".speed-mph"
extern const std::string_view QMKnotSpeedUnitUuid;  // ".speed-knot"

class QMSpeedUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit with 2 decimals.
  static std::shared_ptr<const QMSpeedUnit> kmhUnit();
  static std::shared_ptr<const QMSpeedUnit> mphUnit();
  static std::shared_ptr<const QMSpeedUnit> knotUnit();

  // Every built-in speed unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMSpeedUnit>> builtinUnits();

  // km/h for metric (0), knot for nautical (2), mph for every other value.
  static std::shared_ptr<const QMSpeedUnit> defaultForDistanceUnitType(std::int64_t type);

  // The library string for "Speed" in lower case.
  static std::string localizedSubjectName();

  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kSpeed; }
  // The translated name in upper case: "KM/H", "MPH", "KNOTS".
  std::string localizedName() const override;
  // The unit's system and its equivalents in the two other speed units:
  // "Metric. 1.00 km/h = 0.62 mph or 0.54 kts". The km/h and mph units are recognised by
  // identity of their identifier constants; any other unit counts as nautical.
  std::string uiDescription() const override;
  // "<this unit's text of 1> = <1 u in a> or <1 u in b>", e.g. "1.00 km/h = 0.62 mph or 0.54 kts".
  std::string descriptionForSpeedUnit(const QMUnit& unit, const QMUnit& contraUnit1,
                                      const QMUnit& contraUnit2) const;

 private:
  static std::shared_ptr<const QMSpeedUnit> make(const Definition& definition);
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMSPEEDUNIT_HPP_
