// The built-in units of vertical speed. Factors are metres per second per unit.
//
// Each unit also carries the display scales it offers (`availableScales`), its `defaultScale`
// and the `scale` it is shown with. Units are immutable: the units provider applies the user's
// stored scale by taking `withScale` of a catalog unit. What a scale value means belongs to the
// value texts.

#ifndef QMCORE_UNITS_QMVERTICALSPEEDUNIT_HPP_
#define QMCORE_UNITS_QMVERTICALSPEEDUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMMetersPerSecondVerticalSpeedUnitUuid;  // ".vspeed-m/s"
extern const std::string_view QMMetersPerMinuteVerticalSpeedUnitUuid;  // ".vspeed-m/min"
extern const std::string_view QMFeetPerMinuteVerticalSpeedUnitUuid;    // ".vspeed-ft/min"

class QMVerticalSpeedUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit whose `scale` is its `defaultScale`.
  static std::shared_ptr<const QMVerticalSpeedUnit> metersPerSecondUnit();  // scales -1, 0, 1
  static std::shared_ptr<const QMVerticalSpeedUnit> metersPerMinuteUnit();  // scales 1, 2, 3
  static std::shared_ptr<const QMVerticalSpeedUnit> feetPerMinuteUnit();    // scales 1, 2, 3

  // Every built-in vertical speed unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMVerticalSpeedUnit>> builtinUnits();

  // m/s for metric (0), ft/min for every other value.
  static std::shared_ptr<const QMVerticalSpeedUnit> defaultForDistanceUnitType(std::int64_t type);

  // The library string for "vertical speed", as it is.
  static std::string localizedSubjectName();

  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kVerticalSpeed; }

  const std::vector<int>& availableScales() const { return availableScales_; }
  int defaultScale() const { return defaultScale_; }
  int scale() const { return scale_; }
  // A new unit like this one but shown with `scale`.
  std::shared_ptr<const QMVerticalSpeedUnit> withScale(int scale) const;

 private:
  static std::shared_ptr<const QMVerticalSpeedUnit> make(const Definition& definition,
                                                         int defaultScale,
                                                         std::vector<int> availableScales);

  std::vector<int> availableScales_;
  int defaultScale_ = 0;
  int scale_ = 0;
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMVERTICALSPEEDUNIT_HPP_
