// qmcore units [KIND]: the built-in unit catalogs, sorted as the units provider lists them.
// qmcore convert VALUE FROM TO: a value between two units of one kind.

#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/QMUnitConversions.hpp"
#include "qmcore/units/QMUnitSorting.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"
#include "tools/qmcore/Commands.hpp"

namespace qm::tool {
namespace {

using UnitList = std::vector<std::shared_ptr<const QMUnit>>;

template <typename Unit>
UnitList sortedCatalog(std::vector<std::shared_ptr<const Unit>> units, UnitSortOrder order) {
  UnitList result;
  for (auto& unit : sortedUnits(std::move(units), order)) result.push_back(std::move(unit));
  return result;
}

struct Kind {
  const char* name;
  UnitList (*units)();
};

// In this order abbreviations are tried by `convert`: "mi" and "km" are length units first.
constexpr Kind kKinds[] = {
    {"length",
     [] {
       return sortedCatalog(QMLengthUnit::builtinUnits(), UnitSortOrder::kAscendingThenShorterName);
     }},
    {"distance",
     [] { return sortedCatalog(QMDistanceUnit::builtinUnits(), UnitSortOrder::kDescending); }},
    {"area",
     [] {
       return sortedCatalog(QMAreaUnit::builtinUnits(), UnitSortOrder::kAscendingThenShorterName);
     }},
    {"speed", [] { return sortedCatalog(QMSpeedUnit::builtinUnits(), UnitSortOrder::kAscending); }},
    {"vspeed",
     [] { return sortedCatalog(QMVerticalSpeedUnit::builtinUnits(), UnitSortOrder::kAscending); }},
    {"altitude",
     [] { return sortedCatalog(QMAltitudeUnit::builtinUnits(), UnitSortOrder::kDescending); }},
    {"pressure",
     [] { return sortedCatalog(QMPressureUnit::builtinUnits(), UnitSortOrder::kAscending); }},
    {"time", [] { return UnitList{QMTimeUnit::second()}; }},
    {"temperature",
     [] { return sortedCatalog(QMTemperatureUnit::builtinUnits(), UnitSortOrder::kAscending); }},
};

std::string kindNames() {
  std::string names;
  for (const Kind& kind : kKinds) {
    if (!names.empty()) names += ", ";
    names += kind.name;
  }
  return names;
}

// The shortest text that reads back as the same double, without an exponent unless the
// value is too large or too small to read well without one.
std::string numberText(double value) {
  const double magnitude = std::fabs(value);
  const bool fixed = magnitude == 0.0 || (magnitude >= 1e-6 && magnitude < 1e21);
  char buffer[512];
  const auto result =
      fixed ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
            : std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

void printKind(const Kind& kind) {
  for (const auto& unit : kind.units()) {
    std::printf("%s\t%s\t%s\t%s\t%s\n", std::string(unit->uuid()).c_str(),
                unit->localizedName().c_str(), unit->localizedAbbreviation().c_str(),
                numberText(unit->ratioToMeter()).c_str(), unit->uiDescription().c_str());
  }
}

void listUnits(const std::optional<std::string>& kindName) {
  if (!kindName) {
    for (const Kind& kind : kKinds) {
      std::printf("# %s\n", kind.name);
      printKind(kind);
    }
    return;
  }
  for (const Kind& kind : kKinds) {
    if (*kindName == kind.name) return printKind(kind);
  }
  throw UsageError("unknown kind '" + *kindName + "' (one of " + kindNames() + ")");
}

// The units of `units` that `name` names: by identifier, abbreviation or localised
// abbreviation.
UnitList unitsNamed(const UnitList& units, const std::string& name) {
  UnitList found;
  for (const auto& unit : units) {
    if (unit->uuid() == name || unit->abbreviation() == name ||
        unit->localizedAbbreviation() == name) {
      found.push_back(unit);
    }
  }
  return found;
}

bool namesAnyUnit(const std::string& name) {
  for (const Kind& kind : kKinds) {
    if (!unitsNamed(kind.units(), name).empty()) return true;
  }
  return false;
}

void convert(const std::string& valueText, const std::string& fromName, const std::string& toName) {
  const double value = parseNumber(valueText, "value");
  for (const Kind& kind : kKinds) {
    const UnitList units = kind.units();
    const UnitList from = unitsNamed(units, fromName);
    const UnitList to = unitsNamed(units, toName);
    if (from.size() != 1 || to.size() != 1) continue;
    // Temperatures convert with an offset, never through their factors.
    const bool temperature = std::string_view(kind.name) == "temperature";
    const double result = temperature
                              ? QMTemperatureUnit::convertTemperature(value, *from[0], *to[0])
                              : QMConvertUnitValue(*from[0], *to[0], value);
    std::printf("%s\n", numberText(result).c_str());
    return;
  }
  for (const std::string& name : {fromName, toName}) {
    if (!namesAnyUnit(name)) {
      throw UsageError("unknown unit '" + name + "' (see qmcore units)");
    }
  }
  throw UsageError("cannot convert '" + fromName + "' to '" + toName + "': not units of one kind");
}

}  // namespace

void addUnitsCommands(CLI::App& app, ToolContext& /*context*/) {
  auto kind = std::make_shared<std::optional<std::string>>();
  CLI::App* units = app.add_subcommand(
      "units", "List the built-in units: identifier, name, abbreviation, factor, description");
  units->add_option("KIND", *kind, "One kind only: " + kindNames());
  units->callback([kind] { listUnits(*kind); });

  struct ConvertArguments {
    std::string value, from, to;
  };
  auto arguments = std::make_shared<ConvertArguments>();
  CLI::App* convertCommand =
      app.add_subcommand("convert", "Convert VALUE from one unit to another of the same kind");
  convertCommand->add_option("VALUE", arguments->value, "The number to convert")->required();
  convertCommand
      ->add_option("FROM", arguments->from, "Unit identifier (.length-foot) or abbreviation (ft)")
      ->required();
  convertCommand->add_option("TO", arguments->to, "Unit identifier or abbreviation")->required();
  convertCommand->callback(
      [arguments] { convert(arguments->value, arguments->from, arguments->to); });
}

}  // namespace qm::tool
