#include "qmcore/units/UnitKinds.hpp"

#include <array>

#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/QMUnitConversions.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"

namespace qm {
namespace {

template <typename Unit>
UnitList asUnitList(const std::vector<std::shared_ptr<const Unit>>& units) {
  return UnitList(units.begin(), units.end());
}

constexpr std::array<UnitKind, 9> kUnitKinds = {{
    {"length", QMMeasurementSubject::kLength, UnitSortOrder::kAscendingThenShorterName,
     [](const DistanceSwitchValues&) { return asUnitList(QMLengthUnit::builtinUnits()); }},
    {"distance", QMMeasurementSubject::kDistance, UnitSortOrder::kDescending,
     [](const DistanceSwitchValues& s) { return asUnitList(QMDistanceUnit::builtinUnits(s)); }},
    {"area", QMMeasurementSubject::kArea, UnitSortOrder::kAscendingThenShorterName,
     [](const DistanceSwitchValues&) { return asUnitList(QMAreaUnit::builtinUnits()); }},
    {"speed", QMMeasurementSubject::kSpeed, UnitSortOrder::kAscending,
     [](const DistanceSwitchValues&) { return asUnitList(QMSpeedUnit::builtinUnits()); }},
    {"vspeed", QMMeasurementSubject::kVerticalSpeed, UnitSortOrder::kAscending,
     [](const DistanceSwitchValues&) { return asUnitList(QMVerticalSpeedUnit::builtinUnits()); }},
    {"altitude", QMMeasurementSubject::kAltitude, UnitSortOrder::kDescending,
     [](const DistanceSwitchValues&) { return asUnitList(QMAltitudeUnit::builtinUnits()); }},
    {"pressure", QMMeasurementSubject::kPressure, UnitSortOrder::kAscending,
     [](const DistanceSwitchValues&) { return asUnitList(QMPressureUnit::builtinUnits()); }},
    {"time", QMMeasurementSubject::kTime, UnitSortOrder::kAscending,
     [](const DistanceSwitchValues&) { return UnitList{QMTimeUnit::second()}; }},
    {"temperature", QMMeasurementSubject::kTemperature, UnitSortOrder::kAscending,
     [](const DistanceSwitchValues&) { return asUnitList(QMTemperatureUnit::builtinUnits()); }},
}};

}  // namespace

std::span<const UnitKind> unitKinds() { return kUnitKinds; }

const UnitKind* unitKindNamed(std::string_view name) {
  for (const UnitKind& kind : kUnitKinds) {
    if (kind.name == name) return &kind;
  }
  return nullptr;
}

const UnitKind* unitKindForSubject(QMMeasurementSubject subject) {
  for (const UnitKind& kind : kUnitKinds) {
    if (kind.subject == subject) return &kind;
  }
  return nullptr;
}

UnitList sortedBuiltinUnits(const UnitKind& kind, const DistanceSwitchValues& switches) {
  return sortedUnits(kind.builtinUnits(switches), kind.sortOrder);
}

UnitList unitsNamed(const UnitList& units, std::string_view name) {
  UnitList found;
  for (const auto& unit : units) {
    if (unit->uuid() == name || unit->abbreviation() == name ||
        unit->localizedAbbreviation() == name) {
      found.push_back(unit);
    }
  }
  return found;
}

double convertBetweenUnits(double value, const QMUnit& from, const QMUnit& to) {
  if (from.subject() == QMMeasurementSubject::kTemperature) {
    return QMTemperatureUnit::convertTemperature(value, from, to);
  }
  return QMConvertUnitValue(from, to, value);
}

}  // namespace qm
