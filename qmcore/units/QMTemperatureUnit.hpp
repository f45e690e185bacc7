// The built-in temperature units and the conversion between them.
//
// Temperatures convert with an offset, never through factors: `ratioToMeter` (Celsius 1.0,
// Fahrenheit 10.0) is only an ordering key, so never use `QMConvertUnitValue` here. Only the
// conversion from Celsius is rounded to a whole degree; this asymmetry is deliberate:
//
//   QMTemperatureUnit::convertTemperature(36.6, *celsius, *fahrenheit);  // 98, not 97.88
//   QMTemperatureUnit::convertTemperature(98, *fahrenheit, *celsius);    // 36.666...

#ifndef QMCORE_UNITS_QMTEMPERATUREUNIT_HPP_
#define QMCORE_UNITS_QMTEMPERATUREUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "qmcore/units/QMUnit.hpp"
#include "qmcore/units/UnitsUuid.hpp"

namespace qm {

class QMTemperatureUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // Each factory returns a new unit with 0 decimals; name and abbreviation are both "°C" or
  // "°F". The identifiers are `UnitsUuid::QMCelsiusUnitUuid` and `QMFarenheitUnitUuid`.
  static std::shared_ptr<const QMTemperatureUnit> celsiusUnit();
  static std::shared_ptr<const QMTemperatureUnit> farenheitUnit();

  // Every built-in temperature unit, new objects, in the order of the factories above.
  static std::vector<std::shared_ptr<const QMTemperatureUnit>> builtinUnits();

  // Fahrenheit for imperial (1), Celsius for every other value.
  static std::shared_ptr<const QMTemperatureUnit> defaultForDistanceUnitType(std::int64_t type);

  // The library string for "Temperature" in lower case.
  static std::string localizedSubjectName();

  // `value` unchanged when both identifiers have the same text; from ".temperature-c":
  // value * 9 / 5 + 32 rounded half away from zero; from any other unit: (value - 32) * 5 / 9.
  static double convertTemperature(double value, const QMUnit& from, const QMUnit& to);

  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kTemperature; }
  // Zero of this unit in the other one: "0°C = 32°F", "0°F = -18°C".
  std::string uiDescription() const override;

 private:
  static std::shared_ptr<const QMTemperatureUnit> make(const Definition& definition);
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMTEMPERATUREUNIT_HPP_
