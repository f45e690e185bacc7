// The built-in units of areas (the map area measurement). Factors are square metres per unit;
// the tsubo is the rounded 3.306. Area texts put the abbreviation right after the number,
// with no blank: "12.5m²".

#ifndef QMCORE_UNITS_QMAREAUNIT_HPP_
#define QMCORE_UNITS_QMAREAUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMSquareMeterUnitUuid;      // ".area-squaremeter"
extern const std::string_view QMTsuboUnitUuid;            // ".area-tsubo"
extern const std::string_view QMAreUnitUuid;              // ".area-are"
extern const std::string_view QMSquareKilometerUnitUuid;  // ".area-squarekilometer"
extern const std::string_view QMDecareUnitUuid;           // ".area-decare"
extern const std::string_view QMHectareUnitUuid;          // ".area-hectare"
extern const std::string_view QMSquareFootUnitUuid;       // ".area-squarefoot"
extern const std::string_view QMSquareYardUnitUuid;       // ".area-squareyard"
extern const std::string_view QMAcreUnitUuid;             // ".area-acre"
extern const std::string_view QMSquareMileUnitUuid;       // ".area-squaremile"

class QMAreaUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit. The square metre, foot and yard switch to the square
  // kilometre or mile at 100000, but not by default.
  static std::shared_ptr<const QMAreaUnit> squareMeterUnit();
  static std::shared_ptr<const QMAreaUnit> tsuboUnit();
  static std::shared_ptr<const QMAreaUnit> areUnit();
  static std::shared_ptr<const QMAreaUnit> squareKilometerUnit();
  static std::shared_ptr<const QMAreaUnit> decareUnit();
  static std::shared_ptr<const QMAreaUnit> hectareUnit();
  static std::shared_ptr<const QMAreaUnit> squareFootUnit();
  static std::shared_ptr<const QMAreaUnit> squareYardUnit();
  static std::shared_ptr<const QMAreaUnit> acreUnit();
  static std::shared_ptr<const QMAreaUnit> squareMileUnit();

  // Every built-in area unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMAreaUnit>> builtinUnits();

  // Square metre for metric (0), square foot for every other value.
  static std::shared_ptr<const QMAreaUnit> defaultForDistanceUnitType(std::int64_t type);

  // The library string for "Area" in lower case.
  static std::string localizedSubjectName();

  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kArea; }
  // "1 ha = 10000.000000 m²".
  std::string uiDescription() const override;
  // The number and the abbreviation without a blank: "12.5m²".
  std::string stringForValue(double value) const override;
  std::string stringForIntegerValue(std::int64_t value) const override;

 private:
  static std::shared_ptr<const QMAreaUnit> make(const Definition& definition);
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMAREAUNIT_HPP_
