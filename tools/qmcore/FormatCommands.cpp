// qmcore format: measured values as the texts the apps show and speak in the persisted unit
// settings; the heading and bearing commands come from HeadingCommands.cpp.

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "qmcore/formatting/QMUnitsFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/ProviderSupport.hpp"

namespace qm::tool {
namespace {

using Printer = void (*)(const UnitsProvider& provider, double value);

void print(const char* label, const std::string& text) {
  std::printf("%s: %s\n", label, text.c_str());
}

// "text unit", or the text alone when there is no unit.
std::string withUnit(const std::string& text, const std::string& unit) {
  return unit.empty() ? text : text + " " + unit;
}

void printDistance(const UnitsProvider& p, double meters) {
  print("text", p.textForDistance(meters));
  const QMUIValueWithUnit texts = p.uiTextsForDistance(meters);
  print("value", texts.uiValue);
  print("unit", texts.unitText);
  const QMDistanceUnitType unit = p.defaultUnitTypeForDistance(meters);
  print("spoken", withUnit(p.textWithNoUnitsForDistanceInMeters(meters, unit),
                           QMUnitsFormatter::longTextForDistanceLeftWithUnit(unit)));
}

void printMapDistance(const UnitsProvider& p, double meters) {
  print("text", p.textForMapDistance(meters));
}

void printAltitude(const UnitsProvider& p, double meters) {
  const std::string number = p.textForAltitudeWithNoUnits(meters);
  print("text", number.empty() ? "" : number + p.textForCurrentAltitudeUnit());
  print("spoken", number.empty() ? "" : withUnit(number, p.speechTextForCurrentAltitudeUnit()));
}

void printSpeed(const UnitsProvider& p, double metersPerSecond) {
  print("text", withUnit(p.autoDecimalTextForMSSpeedWithNoUnits(metersPerSecond),
                         p.textForCurrentSpeedUnit()));
  print("spoken", p.autoDecimalTextForMSSpeed(metersPerSecond));
}

void printAverageSpeed(const UnitsProvider& p, double metersPerSecond) {
  const std::string number = p.decimalTextForAverageSpeedWithNoUnits(metersPerSecond);
  print("text", withUnit(number, p.textForCurrentSpeedUnit()));
  print("2 decimals", p.decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(metersPerSecond));
  print("4 decimals", p.decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(metersPerSecond));
  print("spoken", withUnit(number, p.speechTextForCurrentSpeedUnit()));
}

void printPace(const UnitsProvider& p, double metersPerSecond) {
  const std::int64_t system = p.generalUnitType();
  print("text", withUnit(QMUnitsFormatter::textForPaceForSpeed(metersPerSecond, system),
                         QMUnitsFormatter::textForPaceUnitWithUnitType(system)));
  print("seconds",
        invariantFormat("%.1f", QMUnitsFormatter::paceForSpeed(metersPerSecond, system)));
}

void printLength(const UnitsProvider& p, double meters) {
  print("text", p.stringForLengthInMeters(meters));
}

void printArea(const UnitsProvider& p, double squareMeters) {
  print("text", p.stringForAreaInSquareMeters(squareMeters));
}

void printPressure(const UnitsProvider& p, double hPa) {
  print("text", p.stringForPressurehPa(hPa));
}

void printVerticalSpeed(const UnitsProvider& p, double metersPerSecond) {
  print("text", withUnit(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(metersPerSecond),
                         p.textForCurrentVerticalSpeedUnit()));
  print("scale", p.textForCurrentVerticalSpeedUnitScale());
}

void printRuler(const UnitsProvider& p, double metersPerPoint) {
  const auto value = static_cast<float>(metersPerPoint);
  if (!std::isfinite(value)) throw UsageError("VALUE is too large for a ruler");
  print("text", p.rulerValueForMetersPerPixel(value));
}

const struct {
  const char* name;
  Printer printer;
} kKinds[] = {
    {"distance", printDistance},
    {"map-distance", printMapDistance},
    {"altitude", printAltitude},
    {"speed", printSpeed},
    {"average-speed", printAverageSpeed},
    {"pace", printPace},
    {"length", printLength},
    {"area", printArea},
    {"pressure", printPressure},
    {"vspeed", printVerticalSpeed},
    {"ruler", printRuler},
};

Printer printerForKind(const std::string& kind) {
  std::string names;
  for (const auto& k : kKinds) {
    if (kind == k.name) return k.printer;
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
    const Printer printer = printerForKind(options->kind);
    const double value = parseNumber(options->value, "VALUE");
    if (!std::isfinite(value)) {
      throw UsageError("VALUE is not a finite number: '" + options->value + "'");
    }
    printer(toolProvider(context), value);
  });
}

}  // namespace

void addFormatCommands(CLI::App& app, ToolContext& context) {
  addValueCommands(app, context);
  addHeadingCommands(app, context);
}

}  // namespace qm::tool
