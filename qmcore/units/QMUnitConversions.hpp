// Conversions between units of one kind, and between the big distance units of the three unit
// systems.
//
// Unit-to-unit conversion always goes through the SI base with the units' factors, evaluated
// in a fixed order so that results match the same computation elsewhere bit for bit:
//
//   QMConvertUnitValue(*QMLengthUnit::footUnit(), *QMLengthUnit::meterUnit(), 1.0)  // 0.30479999
//
// The kilometric helpers use the deliberately rounded literals 0.62137 (miles per kilometre)
// and 0.5399568 (nautical miles per kilometre), not the catalogs' exact factors; both paths are
// kept as they are. Never use these for temperatures (see `QMTemperatureUnit`).
//
// No function reports errors: a unit with factor 0 gives infinity or NaN, unknown unit systems
// give the fixed results documented below. All functions are pure and thread-safe.

#ifndef QMCORE_UNITS_QMUNITCONVERSIONS_HPP_
#define QMCORE_UNITS_QMUNITCONVERSIONS_HPP_

#include <cstdint>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

// from.ratioToMeter * value / to.ratioToMeter (multiplied first, then divided).
double QMConvertUnitValue(const QMUnit& from, const QMUnit& to, double value);

// A value in the SI base to `unit`: value / unit.ratioToMeter.
double QMConvertMetricValue(const QMUnit& unit, double value);

// A value in `unit` to the SI base: unit.ratioToMeter * value.
double QMConvertToMetricValue(const QMUnit& unit, double value);

// km/h (0), mph (1) or knots (2) to metres per second; -1.0 for any other unit system.
double QMCalculateMetricSpeedForKilometric(std::int64_t unitType, double speed);

// A value between kilometres (0), miles (1) and nautical miles (2). The same system gives the
// value unchanged, whatever it is; any other pair gives 0.0.
double QMConvertKiloValue(std::int64_t from, std::int64_t to, double value);

// Kilopascals to hectopascals, in single precision.
float kPa2hPa(float value);

}  // namespace qm

#endif  // QMCORE_UNITS_QMUNITCONVERSIONS_HPP_
