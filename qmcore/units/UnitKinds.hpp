// The kinds of units in one registry: each kind's name, measured subject, built-in units and
// the order settings screens list them in, with the lookups and the conversion every kind
// shares. The units provider and the qmcore tool both work from it, so a new kind is one row
// here (and its catalog file).
//
//   const qm::UnitKind* speed = qm::unitKindNamed("speed");
//   for (const auto& unit : qm::sortedBuiltinUnits(*speed)) ...   // km/h, mph, knots
//   qm::convertBetweenUnits(36.6, *celsius, *fahrenheit);          // 98: with the offset
//
// Thread-safe: the registry is constant; each call makes new units.

#ifndef QMCORE_UNITS_UNITKINDS_HPP_
#define QMCORE_UNITS_UNITKINDS_HPP_

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMUnit.hpp"
#include "qmcore/units/QMUnitSorting.hpp"
#include "qmcore/units/QMUnitTypes.hpp"

namespace qm {

using UnitList = std::vector<std::shared_ptr<const QMUnit>>;

struct UnitKind {
  // The kind's name in the tool: "length", "distance", "area", "speed", "vspeed", "altitude",
  // "pressure", "time", "temperature".
  std::string_view name;
  QMMeasurementSubject subject;
  // The order settings screens list the kind's units in.
  UnitSortOrder sortOrder;
  // New built-in units of the kind, in catalog order; the distance foot and metre switch at
  // `switches`.
  UnitList (*builtinUnits)(const DistanceSwitchValues& switches);
};

// Every kind, in the order abbreviations are tried when a name is looked up across kinds:
// "mi" and "km" name length units first.
std::span<const UnitKind> unitKinds();
// The kind named `name` or measuring `subject`, or null.
const UnitKind* unitKindNamed(std::string_view name);
const UnitKind* unitKindForSubject(QMMeasurementSubject subject);

// The kind's built-in units in its sort order.
UnitList sortedBuiltinUnits(const UnitKind& kind, const DistanceSwitchValues& switches = {});

// The units of `units` that `name` names: by identifier, abbreviation or localized
// abbreviation (several when the name is ambiguous).
UnitList unitsNamed(const UnitList& units, std::string_view name);

// `value` in `from` converted to `to`, two units of one kind: temperatures with their offset
// (`QMTemperatureUnit::convertTemperature`), everything else through the SI base
// (`QMConvertUnitValue`).
double convertBetweenUnits(double value, const QMUnit& from, const QMUnit& to);

}  // namespace qm

#endif  // QMCORE_UNITS_UNITKINDS_HPP_
