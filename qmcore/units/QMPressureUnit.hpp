// The built-in units of air pressure. Factors are hectopascals per unit.

#ifndef QMCORE_UNITS_QMPRESSUREUNIT_HPP_
#define QMCORE_UNITS_QMPRESSUREUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMhPaUnitUuid;   // ".pressure-hpa"
extern const std::string_view QMinHgUnitUuid;  // ".pressure-inHg"

class QMPressureUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit.
  static std::shared_ptr<const QMPressureUnit> hpaUnit();
  static std::shared_ptr<const QMPressureUnit> inHgUnit();

  // Every built-in pressure unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMPressureUnit>> builtinUnits();

  // inHg for imperial (1) and nautical (2), hPa for every other value.
  static std::shared_ptr<const QMPressureUnit> defaultForDistanceUnitType(std::int64_t type);

  // The library string for "Pressure" in lower case.
  static std::string localizedSubjectName();

  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kPressure; }
  // "1 inHg = 33.86 hPa": the factor with 2 decimals.
  std::string uiDescription() const override;

 private:
  static std::shared_ptr<const QMPressureUnit> make(const Definition& definition);
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMPRESSUREUNIT_HPP_
