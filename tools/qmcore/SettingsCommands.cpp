// qmcore settings: the persisted unit settings, shown and changed.

#include <cmath>
#include <functional>
#include <memory>
#include <string>

#include "qmcore/provider/UnitsProvider.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"
#include "tools/qmcore/ProviderSupport.hpp"

namespace qm::tool {
namespace {

// A unit as a field: "identifier (name, abbreviation)" in the text, an object in JSON.
void addUnit(Record& record, const char* label, const QMUnit& unit) {
  const std::string id(unit.uuid());
  const std::string name = unit.localizedName();
  const std::string abbreviation = unit.localizedAbbreviation();
  record.field(label, Json{{"identifier", id}, {"name", name}, {"abbreviation", abbreviation}},
               id + " (" + name + ", " + abbreviation + ")");
}

void printSettings(const UnitsProvider& p, const ToolContext& context) {
  const std::vector<std::string> systems = UnitsProvider::allUnitSystems();
  const std::int64_t system = p.generalUnitType();
  Record record(Record::Layout::kLabelledLines);
  record.field("system", system >= 0 && system < 3 ? systems[static_cast<size_t>(system)]
                                                   : std::to_string(system));
  const struct {
    const char* label;
    const QMUnit& unit;
  } rows[] = {{"distance", *p.distanceUnit()}, {"altitude", *p.altitudeUnit()},
              {"speed", *p.speedUnit()},       {"vertical speed", *p.verticalSpeedUnit()},
              {"pressure", *p.pressureUnit()}, {"temperature", *p.temperatureUnit()},
              {"length", *p.lengthUnit()},     {"area", *p.areaUnit()}};
  for (const auto& row : rows) addUnit(record, row.label, row.unit);
  record.field("description", p.descriptionOfCurrentUnits()).print(context);
}

// Every unit the provider knows, by identifier.
std::shared_ptr<const QMUnit> unitWithUuid(const UnitsProvider& p, const std::string& id) {
  const std::shared_ptr<const QMUnit> found[] = {
      p.lengthUnitWithUuid(id), p.areaUnitWithUuid(id), p.speedUnitWithUuid(id),
      p.verticalSpeedUnitWithUuid(id), p.distanceUnitWithUuid(id)};
  for (const auto& unit : found) {
    if (unit) return unit;
  }
  if (const auto it = p.builtinAltitudeUnits().find(id); it != p.builtinAltitudeUnits().end()) {
    return it->second;
  }
  if (const auto it = p.builtinPressureUnits().find(id); it != p.builtinPressureUnits().end()) {
    return it->second;
  }
  if (const auto it = p.builtinTemperatureUnits().find(id);
      it != p.builtinTemperatureUnits().end()) {
    return it->second;
  }
  throw UsageError("unknown unit '" + id + "'");
}

// The catalog entry of `kind` named `id`, or a usage error.
template <typename Unit>
std::shared_ptr<const Unit> catalogUnit(const UnitsProvider::Catalog<Unit>& catalog,
                                        const std::string& kind, const std::string& id) {
  const auto it = catalog.find(id);
  if (it == catalog.end()) throw UsageError("unknown " + kind + " unit '" + id + "'");
  return it->second;
}

std::int64_t switchValue(const std::string& text) {
  if (text == "never") return QMUnitShouldNotSwitchAutomatically;
  const double value = parseNumber(text, "switch value");
  if (value != std::trunc(value) || std::fabs(value) > 1e15) {
    throw UsageError("switch value is not a whole number: '" + text + "'");
  }
  return static_cast<std::int64_t>(value);
}

std::int64_t choice(const std::string& text, std::initializer_list<const char*> names,
                    const std::string& what) {
  std::int64_t index = 0;
  std::string known;
  for (const char* name : names) {
    if (text == name) return index;
    known += (known.empty() ? "" : "|") + std::string(name);
    ++index;
  }
  throw UsageError("unknown " + what + " '" + text + "' (expected " + known + ")");
}

void setUnit(UnitsProvider& p, const std::string& kind, const std::string& id) {
  const bool removal = id == "default";
  if (kind == "length") {
    p.setCurrentLengthUnit(removal ? nullptr : catalogUnit(p.builtinLengthUnits(), kind, id));
  } else if (kind == "area") {
    p.setCurrentAreaUnit(removal ? nullptr : catalogUnit(p.builtinAreaUnits(), kind, id));
  } else if (removal) {
    throw UsageError("only length and area units can go back to the default");
  } else if (kind == "pressure") {
    p.setPressureUnit(*catalogUnit(p.builtinPressureUnits(), kind, id));
  } else if (kind == "temperature") {
    p.setTemperatureUnit(*catalogUnit(p.builtinTemperatureUnits(), kind, id));
  } else if (kind == "vspeed") {
    p.setVerticalSpeedUnit(*catalogUnit(p.builtinVerticalSpeedUnits(), kind, id));
  } else {
    throw UsageError("unknown kind '" + kind +
                     "' (expected length, area, pressure, temperature or vspeed)");
  }
}

}  // namespace

// What the settings subcommands read from the command line.
struct SettingsArguments {
  std::string system, nauticalDistance, altitude, kind, id, value;
};

void addSettingsCommands(CLI::App& app, ToolContext& context) {
  CLI::App* settings = app.add_subcommand(
      "settings", "Show the persisted unit settings, or change one (then shows them all)");
  settings->require_subcommand(0, 1);
  // Shared by the callbacks, which the app keeps for as long as it lives.
  const auto args = std::make_shared<SettingsArguments>();

  // Each change runs in its subcommand's callback; the settings callback then shows the result.
  const auto change = [&context](CLI::App* command, std::function<void(UnitsProvider&)> apply) {
    command->callback([&context, apply] { apply(toolProvider(context)); });
  };

  auto* system = settings->add_subcommand("system", "Set the unit system");
  system->add_option("SYSTEM", args->system, "metric, imperial or nautical")->required();
  change(system, [args](UnitsProvider& p) {
    p.setGeneralUnitType(choice(args->system, {"metric", "imperial", "nautical"}, "unit system"));
  });

  auto* nautical = settings->add_subcommand("nautical-distance",
                                            "Short distances in nautical mode: metres or feet");
  nautical->add_option("UNIT", args->nauticalDistance, "metres or feet")->required();
  change(nautical, [args](UnitsProvider& p) {
    p.setNauticalDistanceUnitType(
        choice(args->nauticalDistance, {"metres", "feet"}, "distance unit"));
  });

  auto* altitude = settings->add_subcommand("altitude", "Altitudes in metres or feet");
  altitude->add_option("UNIT", args->altitude, "metres or feet")->required();
  change(altitude, [args](UnitsProvider& p) {
    p.setAltitudeUnitType(choice(args->altitude, {"metres", "feet"}, "altitude unit"));
  });

  auto* unit = settings->add_subcommand(
      "unit",
      "Choose the unit of a kind (length, area, pressure, temperature, vspeed) by "
      "identifier; 'default' removes a length or area choice");
  unit->add_option("KIND", args->kind)->required();
  unit->add_option("ID", args->id)->required();
  change(unit, [args](UnitsProvider& p) { setUnit(p, args->kind, args->id); });

  auto* switching = settings->add_subcommand(
      "switch", "Set the value from which a unit switches to its bigger unit, or 'never'");
  switching->add_option("ID", args->id)->required();
  switching->add_option("VALUE", args->value)->required();
  change(switching, [args](UnitsProvider& p) {
    const auto target = unitWithUuid(p, args->id);
    p.setAutomaticSwitchValue(switchValue(args->value), *target);
  });

  auto* rules = settings->add_subcommand("rules", "Show the switching rule of a unit");
  rules->add_option("ID", args->id)->required();
  rules->callback([&context, args] {
    const UnitsProvider& p = toolProvider(context);
    Record(Record::Layout::kOneLine)
        .jsonField("identifier", args->id)
        .field("text", p.rulesDescriptionForUnit(*unitWithUuid(p, args->id)))
        .print(context);
  });

  settings->callback([&context, rules] {
    if (!rules->parsed()) printSettings(toolProvider(context), context);
  });
}

}  // namespace qm::tool
