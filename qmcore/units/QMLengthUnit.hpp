// The built-in units of measured lengths (drawn lines, perimeters). Factors are metres per
// unit; the foot is the deliberately rounded 0.30479999, not 0.3048.
//
// No length unit switches to its bigger unit by default: length units switch only once the
// user has stored a switch value. The shaku and the French foot use the foot's formatter code.

#ifndef QMCORE_UNITS_QMLENGTHUNIT_HPP_
#define QMCORE_UNITS_QMLENGTHUNIT_HPP_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMInchUnitUuid;          // ".length-inch"
extern const std::string_view QMShakuUnitUuid;         // ".length-shaku"
extern const std::string_view QMFootUnitUuid;          // ".length-foot"
extern const std::string_view QMFrenchFootUnitUuid;    // ".length-frenchfoot"
extern const std::string_view QMYardUnitUuid;          // ".length-yard"
extern const std::string_view QMMeterUnitUuid;         // ".length-meter"
extern const std::string_view QMKilometerUnitUuid;     // ".length-kilometer"
extern const std::string_view QMMileUnitUuid;          // ".length-mile"
extern const std::string_view QMNauticalMileUnitUuid;  // ".length-nauticalmile"

class QMLengthUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit.
  static std::shared_ptr<const QMLengthUnit> inchUnit();  // to foot at 20
  static std::shared_ptr<const QMLengthUnit> shakuUnit();
  static std::shared_ptr<const QMLengthUnit> footUnit();  // to mile at 1000
  static std::shared_ptr<const QMLengthUnit> frenchFootUnit();
  static std::shared_ptr<const QMLengthUnit> yardUnit();   // to mile at 1000
  static std::shared_ptr<const QMLengthUnit> meterUnit();  // to kilometre at 1000
  static std::shared_ptr<const QMLengthUnit> kilometerUnit();
  static std::shared_ptr<const QMLengthUnit> mileUnit();
  static std::shared_ptr<const QMLengthUnit> nauticalMileUnit();

  // Every built-in length unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMLengthUnit>> builtinUnits();

  // Metre for metric (0), foot for every other value.
  static std::shared_ptr<const QMLengthUnit> defaultForDistanceUnitType(std::int64_t type);

  // The library string for "distance".
  static std::string localizedSubjectName();

  // The platform length-formatter unit code: 11 m, 14 km, 1281 in, 1282 ft, 1283 yd, 1284 mi.
  int lengthFormatterType() const { return lengthFormatterType_; }
  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kLength; }

 private:
  static std::shared_ptr<const QMLengthUnit> make(const Definition& definition,
                                                  int lengthFormatterType);

  int lengthFormatterType_ = 0;
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMLENGTHUNIT_HPP_
