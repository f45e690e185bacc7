#include "qmcore/formatting/QMUnitsFormatter.hpp"

#include <array>
#include <cmath>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/QMUnitCalculator.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

// Below this speed (m/s) there is no pace.
constexpr double kPaceFloorMetersPerSecond = 0.01;

// The localized text of the key that `field` picks from the row of `code`; "" for a code or
// a row without a key.
std::string localizedSystemKey(std::int64_t code, std::string_view UnitSystem::*field) {
  const UnitSystem* system = unitSystem(code);
  if (system == nullptr || (system->*field).empty()) return "";
  return CoreStrings::CLSTRING(system->*field);
}

// White space and line breaks as Unicode defines them, UTF-8 encoded.
constexpr std::array<std::string_view, 25> kWhiteSpace = {
    "\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

std::string_view trimmedWhiteSpace(std::string_view text) {
  for (bool trimmed = true; trimmed && !text.empty();) {
    trimmed = false;
    for (const std::string_view space : kWhiteSpace) {
      if (text.starts_with(space)) {
        text.remove_prefix(space.size());
        trimmed = true;
      }
      if (text.ends_with(space)) {
        text.remove_suffix(space.size());
        trimmed = true;
      }
    }
  }
  return text;
}

}  // namespace

std::string QMUnitsFormatter::textForKilometricUnitType(std::int64_t unitType) {
  const UnitSystem* system = unitSystem(unitType);
  return system == nullptr ? "" : localizedAbbreviation(system->bigUnit);
}

std::string QMUnitsFormatter::longTextForPluralKilometricUnitType(std::int64_t unitType) {
  return localizedSystemKey(unitType, &UnitSystem::bigUnitPluralKey);
}

std::string QMUnitsFormatter::textForKilometricSpeedType(std::int64_t unitType) {
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr) return "";
  return system->speedLabelIsLocalized ? CoreStrings::CLSTRING(system->speedLabel)
                                       : std::string(system->speedLabel);
}

std::string QMUnitsFormatter::speechTextForKilometricSpeedType(std::int64_t unitType) {
  return localizedSystemKey(unitType, &UnitSystem::speedSpeechKey);
}

std::string QMUnitsFormatter::textForPaceUnitWithUnitType(std::int64_t unitType) {
  return localizedSystemKey(unitType, &UnitSystem::paceUnitKey);
}

std::string QMUnitsFormatter::longTextForUnitType(std::int64_t unitType) {
  return localizedSystemKey(unitType, &UnitSystem::smallUnitLongKey);
}

std::string QMUnitsFormatter::longTextForDistanceLeftUnitType(std::int64_t unitType) {
  return localizedSystemKey(unitType, &UnitSystem::smallUnitDistanceLeftKey);
}

std::string QMUnitsFormatter::longTextForKilometricDistanceLeftUnitType(std::int64_t unitType) {
  return localizedSystemKey(unitType, &UnitSystem::bigUnitDistanceLeftKey);
}

std::string QMUnitsFormatter::longTextForDistanceLeftWithUnit(const QMDistanceUnitType& unit) {
  const auto code = static_cast<std::int64_t>(unit.unitType);
  return unit.isKilometric ? longTextForKilometricDistanceLeftUnitType(code)
                           : longTextForDistanceLeftUnitType(code);
}

std::int64_t QMUnitsFormatter::unitTypeForSpeedString(std::optional<std::string_view> text) {
  if (text == "MPH") return 1;
  if (text == "KTS") return 2;
  return 0;  // "KMH" and everything else
}

std::int64_t QMUnitsFormatter::unitTypeForAltitudeString(std::optional<std::string_view> text) {
  if (!text) return 0;
  const std::string_view trimmed = trimmedWhiteSpace(*text);
  if (trimmed == "ft") return 1;
  if (trimmed == "yd") return 3;
  return 0;  // "m" and everything else
}

std::string QMUnitsFormatter::textForChargedDistance(double meters, std::int64_t unitType,
                                                     std::string_view unitSeparator) {
  const std::string label = textForKilometricUnitType(unitType);
  return invariantFormat("%.2f%.*s%s", QMCalculateKilometricDistance(unitType, meters),
                         static_cast<int>(unitSeparator.size()), unitSeparator.data(),
                         label.c_str());
}

double QMUnitsFormatter::paceForSpeed(double metersPerSecond, std::int64_t targetUnit) {
  if (metersPerSecond < kPaceFloorMetersPerSecond) return 0.0;
  return kSecondsPerHour / calculator::calculateKilometricSpeed(metersPerSecond, targetUnit);
}

std::string QMUnitsFormatter::textForPaceForSpeed(double metersPerSecond, std::int64_t targetUnit) {
  const double pace = paceForSpeed(metersPerSecond, targetUnit);
  // A speed that is not a number has no pace either.
  if (pace == 0.0 || std::isnan(pace)) return "--:--";
  return QMFormatter::textForTicksSkipHours(pace);
}

}  // namespace qm
