// The built-in units of altitude. Factors are metres per unit; the altitude foot is exactly
// 0.3048, unlike the rounded length and distance foot (0.30479999).

#ifndef QMCORE_UNITS_QMALTITUDEUNIT_HPP_
#define QMCORE_UNITS_QMALTITUDEUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMFootAltitudeUnitUuid;   // ".altitude-foot"
extern const std::string_view QMMeterAltitudeUnitUuid;  // ".altitude-meter"

class QMAltitudeUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit with 0 decimals.
  static std::shared_ptr<const QMAltitudeUnit> footUnit();
  static std::shared_ptr<const QMAltitudeUnit> meterUnit();

  // Every built-in altitude unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMAltitudeUnit>> builtinUnits();

  // Foot for imperial (1); for nautical (2) metre when `nauticalAltitudeUnitTypePreference` is
  // 0, else foot; metre for every other type.
  static std::shared_ptr<const QMAltitudeUnit> defaultForUnitType(
      std::int64_t type, std::int64_t nauticalAltitudeUnitTypePreference);

  // The library string for "Altitude" in lower case.
  static std::string localizedSubjectName();

  // The platform length-formatter unit code: 11 m, 1282 ft.
  int lengthFormatterType() const { return lengthFormatterType_; }
  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kAltitude; }
  // The metre (the very constant `QMMeterAltitudeUnitUuid`) describes itself in feet:
  // "1 m = 3.280840 ft"; every other unit in metres.
  std::string uiDescription() const override;

 private:
  static std::shared_ptr<const QMAltitudeUnit> make(const Definition& definition,
                                                    int lengthFormatterType);

  int lengthFormatterType_ = 0;
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMALTITUDEUNIT_HPP_
