// qmcore units [KIND]: the built-in unit catalogs, sorted as the units provider lists them.
// qmcore convert VALUE FROM TO: a value between two units of one kind.

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/units/UnitKinds.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

std::string kindNames() {
  std::string names;
  for (const UnitKind& kind : unitKinds()) {
    if (!names.empty()) names += ", ";
    names += kind.name;
  }
  return names;
}

void printKind(const UnitKind& kind, const ToolContext& context) {
  for (const auto& unit : sortedBuiltinUnits(kind)) {
    Record(Record::Layout::kOneLine)
        .jsonField("kind", std::string(kind.name))
        .field("identifier", std::string(unit->uuid()))
        .field("name", unit->localizedName())
        .field("abbreviation", unit->localizedAbbreviation())
        .field("factor", unit->ratioToMeter(), numberText(unit->ratioToMeter()))
        .field("description", unit->uiDescription())
        .print(context);
  }
}

void listUnits(const std::optional<std::string>& kindName, const ToolContext& context) {
  if (!kindName) {
    for (const UnitKind& kind : unitKinds()) {
      printTextLine(context, "# " + std::string(kind.name));
      printKind(kind, context);
    }
    return;
  }
  if (const UnitKind* kind = unitKindNamed(*kindName)) return printKind(*kind, context);
  throw UsageError("unknown kind '" + *kindName + "' (one of " + kindNames() + ")");
}

bool namesAnyUnit(const std::string& name) {
  for (const UnitKind& kind : unitKinds()) {
    if (!unitsNamed(kind.builtinUnits({}), name).empty()) return true;
  }
  return false;
}

void convert(const std::string& valueText, const std::string& fromName, const std::string& toName,
             const ToolContext& context) {
  const double value = parseNumber(valueText, "value");
  for (const UnitKind& kind : unitKinds()) {
    const UnitList units = kind.builtinUnits({});
    const UnitList from = unitsNamed(units, fromName);
    const UnitList to = unitsNamed(units, toName);
    if (from.size() != 1 || to.size() != 1) continue;
    const double result = convertBetweenUnits(value, *from[0], *to[0]);
    Record(Record::Layout::kOneLine)
        .jsonField("value", value)
        .jsonField("from", std::string(from[0]->uuid()))
        .jsonField("to", std::string(to[0]->uuid()))
        .field("result", result, numberText(result))
        .print(context);
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

void addUnitsCommands(CLI::App& app, ToolContext& context) {
  auto kind = std::make_shared<std::optional<std::string>>();
  CLI::App* units = app.add_subcommand(
      "units", "List the built-in units: identifier, name, abbreviation, factor, description");
  units->add_option("KIND", *kind, "One kind only: " + kindNames());
  units->callback([kind, &context] { listUnits(*kind, context); });

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
  convertCommand->callback([arguments, &context] {
    convert(arguments->value, arguments->from, arguments->to, context);
  });
}

}  // namespace qm::tool
