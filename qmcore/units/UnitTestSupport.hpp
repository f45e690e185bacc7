// Helpers shared by the unit tests: a one-line summary of a unit.

#ifndef QMCORE_UNITS_UNITTESTSUPPORT_HPP_
#define QMCORE_UNITS_UNITTESTSUPPORT_HPP_

#include <charconv>
#include <memory>
#include <string>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm::testing {

// "uuid|name|abbreviation|factor|decimals|unit type|subject|switch unit@value|flags|code": the
// factor in its shortest exact form, flags "D" (switches by default) and "B" (base), the code is
// the length-formatter type where the class has one. A formatter that does not match the
// decimals shows as "BAD FORMATTER".
template <typename Unit>
std::string summary(const Unit& unit) {
  char factor[64];
  const auto end =
      std::to_chars(factor, factor + sizeof factor, unit.ratioToMeter(), std::chars_format::fixed)
          .ptr;
  std::string s = std::string(unit.uuid()) + "|" + std::string(unit.name()) + "|" +
                  std::string(unit.abbreviation()) + "|" + std::string(factor, end) + "|" +
                  std::to_string(unit.numberOfDecimalPlaces()) + "|" +
                  std::to_string(static_cast<int>(unit.unitType())) + "|" +
                  std::to_string(static_cast<int>(unit.subject())) + "|";
  if (unit.canSwitchToUnit()) {
    s += std::string(unit.canSwitchToUnit()->uuid()) + "@" +
         std::to_string(unit.unitSwitchesAtValue());
  } else if (unit.unitSwitchesAtValue() != 0) {
    s += '@';
    s += std::to_string(unit.unitSwitchesAtValue());
  }
  s +=
      std::string("|") + (unit.switchToBiggerUnitByDefault() ? "D" : "") + (unit.base() ? "B" : "");
  if constexpr (requires { unit.lengthFormatterType(); }) {
    s += '|';
    s += std::to_string(unit.lengthFormatterType());
  }
  if (unit.formatter().options() !=
      NumberFormatter::withDecimals(unit.numberOfDecimalPlaces()).options()) {
    s += " BAD FORMATTER";
  }
  return s;
}

template <typename Unit>
std::vector<std::string> summaries(const std::vector<std::shared_ptr<const Unit>>& units) {
  std::vector<std::string> result;
  for (const auto& unit : units) result.push_back(summary(*unit));
  return result;
}

}  // namespace qm::testing

#endif  // QMCORE_UNITS_UNITTESTSUPPORT_HPP_
