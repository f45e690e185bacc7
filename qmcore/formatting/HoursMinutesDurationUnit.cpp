#include "qmcore/formatting/HoursMinutesDurationUnit.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/TextCase.hpp"
#include "qmcore/platform/UnicodeText.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMTimeUnit.hpp"

namespace qm {

DurationUnitSettings HoursMinutesDurationUnit::defaultHoursSettings() {
  return DurationUnitSettings(capitalizedString(CoreStrings::CLSTRING("hours")), 24, 1, 1, 1, 0);
}

DurationUnitSettings HoursMinutesDurationUnit::defaultMinutesSettings() {
  return DurationUnitSettings(capitalizedString(CoreStrings::CLSTRING("minutes")), 55, 5, 10, 5, 1);
}

HoursMinutesDurationUnit HoursMinutesDurationUnit::unitForSeconds(
    std::int64_t seconds, const DurationUnitSettings& hourSettings,
    const DurationUnitSettings& minuteSettings) {
  return seconds > kSecondsPerHour - 1 ? hours(hourSettings) : minutes(minuteSettings);
}

HoursMinutesDurationUnit HoursMinutesDurationUnit::unitForIndex(
    std::int64_t index, const DurationUnitSettings& hourSettings,
    const DurationUnitSettings& minuteSettings) {
  return index == hourSettings.index() ? hours(hourSettings) : minutes(minuteSettings);
}

std::pair<HoursMinutesDurationUnit, std::int64_t> HoursMinutesDurationUnit::unitAndValueForSeconds(
    std::int64_t seconds, const DurationUnitSettings& hourSettings,
    const DurationUnitSettings& minuteSettings) {
  HoursMinutesDurationUnit unit = unitForSeconds(seconds, hourSettings, minuteSettings);
  const std::int64_t value = unit.valueForSeconds(seconds, hourSettings, minuteSettings);
  return {std::move(unit), value};
}

std::string HoursMinutesDurationUnit::uiDescriptionForSeconds(
    std::int64_t seconds, const DurationUnitSettings& hourSettings,
    const DurationUnitSettings& minuteSettings) {
  const auto [unit, value] = unitAndValueForSeconds(seconds, hourSettings, minuteSettings);
  return lowercaseString(unit.settings().localizedTitle()) + ": " + std::to_string(value);
}

std::int64_t HoursMinutesDurationUnit::valueForSeconds(
    std::int64_t seconds, const DurationUnitSettings& hourSettings,
    const DurationUnitSettings& minuteSettings) const {
  if (case_ == Case::kMinutes) {
    return std::min(minuteSettings.maxValue(), seconds / kSecondsPerMinute);
  }
  // std::round takes halves away from zero; the hours of any 64-bit count fit in 64 bits.
  const double hours = std::round(static_cast<double>(seconds) / kSecondsPerHour);
  return std::min(hourSettings.maxValue(), static_cast<std::int64_t>(hours));
}

std::int64_t HoursMinutesDurationUnit::secondsForValue(std::int64_t value) const {
  const std::int64_t factor = case_ == Case::kHours ? kSecondsPerHour : kSecondsPerMinute;
  if (value > std::numeric_limits<std::int64_t>::max() / factor ||
      value < std::numeric_limits<std::int64_t>::min() / factor) {
    fatalError("Duration value " + std::to_string(value) + " overflows when converted to seconds");
  }
  return value * factor;
}

}  // namespace qm
