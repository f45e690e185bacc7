// qmcore format: measured values as the texts the apps show and speak in the persisted unit
// settings; the heading and bearing commands come from HeadingCommands.cpp.

#include <cmath>
#include <memory>
#include <string>

#include "qmcore/formatting/QMUnitsFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"
#include "tools/qmcore/ProviderSupport.hpp"

namespace qm::tool {
namespace {

// Adds the texts of `value` to the record, one field each.
using Texts = void (*)(const UnitsProvider& provider, double value, Record& record);

// "text unit", or the text alone when there is no unit.
std::string withUnit(const std::string& text, const std::string& unit) {
  return unit.empty() ? text : text + " " + unit;
}

void distanceTexts(const UnitsProvider& p, double meters, Record& r) {
  r.field("text", p.textForDistance(meters));
  const QMUIValueWithUnit texts = p.uiTextsForDistance(meters);
  r.field("value", texts.uiValue);
  r.field("unit", texts.unitText);
  const QMDistanceUnitType unit = p.defaultUnitTypeForDistance(meters);
  r.field("spoken", withUnit(p.textWithNoUnitsForDistanceInMeters(meters, unit),
                             QMUnitsFormatter::longTextForDistanceLeftWithUnit(unit)));
}

void mapDistanceTexts(const UnitsProvider& p, double meters, Record& r) {
  r.field("text", p.textForMapDistance(meters));
}

void altitudeTexts(const UnitsProvider& p, double meters, Record& r) {
  const std::string number = p.textForAltitudeWithNoUnits(meters);
  r.field("text", number.empty() ? "" : number + p.textForCurrentAltitudeUnit());
  r.field("spoken", number.empty() ? "" : withUnit(number, p.speechTextForCurrentAltitudeUnit()));
}

void speedTexts(const UnitsProvider& p, double metersPerSecond, Record& r) {
  r.field("text", withUnit(p.autoDecimalTextForMSSpeedWithNoUnits(metersPerSecond),
                           p.textForCurrentSpeedUnit()));
  r.field("spoken", p.autoDecimalTextForMSSpeed(metersPerSecond));
}

void averageSpeedTexts(const UnitsProvider& p, double metersPerSecond, Record& r) {
  const std::string number = p.decimalTextForAverageSpeedWithNoUnits(metersPerSecond);
  r.field("text", withUnit(number, p.textForCurrentSpeedUnit()));
  r.field({"2 decimals", "twoDecimals"},
          p.decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(metersPerSecond));
  r.field({"4 decimals", "fourDecimals"},
          p.decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(metersPerSecond));
  r.field("spoken", withUnit(number, p.speechTextForCurrentSpeedUnit()));
}

void paceTexts(const UnitsProvider& p, double metersPerSecond, Record& r) {
  const std::int64_t system = p.generalUnitType();
  r.field("text", withUnit(QMUnitsFormatter::textForPaceForSpeed(metersPerSecond, system),
                           QMUnitsFormatter::textForPaceUnitWithUnitType(system)));
  const double seconds = QMUnitsFormatter::paceForSpeed(metersPerSecond, system);
  r.field("seconds", seconds, invariantFormat("%.1f", seconds));
}

void lengthTexts(const UnitsProvider& p, double meters, Record& r) {
  r.field("text", p.stringForLengthInMeters(meters));
}

void areaTexts(const UnitsProvider& p, double squareMeters, Record& r) {
  r.field("text", p.stringForAreaInSquareMeters(squareMeters));
}

void pressureTexts(const UnitsProvider& p, double hPa, Record& r) {
  r.field("text", p.stringForPressurehPa(hPa));
}

void verticalSpeedTexts(const UnitsProvider& p, double metersPerSecond, Record& r) {
  r.field("text", withUnit(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(metersPerSecond),
                           p.textForCurrentVerticalSpeedUnit()));
  r.field("scale", p.textForCurrentVerticalSpeedUnitScale());
}

void rulerTexts(const UnitsProvider& p, double metersPerPoint, Record& r) {
  const auto value = static_cast<float>(metersPerPoint);
  if (!std::isfinite(value)) throw UsageError("VALUE is too large for a ruler");
  r.field("text", p.rulerValueForMetersPerPixel(value));
}

const struct {
  const char* name;
  Texts texts;
} kKinds[] = {
    {"distance", distanceTexts},
    {"map-distance", mapDistanceTexts},
    {"altitude", altitudeTexts},
    {"speed", speedTexts},
    {"average-speed", averageSpeedTexts},
    {"pace", paceTexts},
    {"length", lengthTexts},
    {"area", areaTexts},
    {"pressure", pressureTexts},
    {"vspeed", verticalSpeedTexts},
    {"ruler", rulerTexts},
};

Texts textsForKind(const std::string& kind) {
  std::string names;
  for (const auto& k : kKinds) {
    if (kind == k.name) return k.texts;
    names += names.empty() ? "" : ", ";
    names += k.name;
  }
  throw UsageError("unknown kind '" + kind + "' (one of " + names + ")");
}

struct FormatOptions {
  std::string kind;
  std::string value;
};

void addValueCommands(CLI::App& app, ToolContext& context) {
  CLI::App* format = app.add_subcommand(
      "format",
      "The texts of a measured VALUE in the current unit settings. KIND and the unit of VALUE: "
      "distance, map-distance, altitude, length (metres); area (square metres); speed, "
      "average-speed, pace, vspeed (metres per second); pressure (hPa); ruler (metres per "
      "point of a map)");
  auto options = std::make_shared<FormatOptions>();
  format->add_option("KIND", options->kind, "What VALUE measures")->required();
  format->add_option("VALUE", options->value, "The measured value in SI units")->required();
  format->callback([options, &context] {
    const Texts texts = textsForKind(options->kind);
    const double value = parseFiniteNumber(options->value, "VALUE");
    Record record(Record::Layout::kLabelledLines);
    texts(toolProvider(context), value, record);
    record.print(context);
  });
}

}  // namespace

void addFormatCommands(CLI::App& app, ToolContext& context) {
  addValueCommands(app, context);
  addHeadingCommands(app, context);
}

}  // namespace qm::tool
