// The two units in which timers and reminders take a duration, hours and minutes, each
// carrying the settings of its picker, and the conversions between seconds and unit values.
//
//   const auto hours = qm::HoursMinutesDurationUnit::defaultHoursSettings();
//   const auto minutes = qm::HoursMinutesDurationUnit::defaultMinutesSettings();
//   auto [unit, value] =
//       qm::HoursMinutesDurationUnit::unitAndValueForSeconds(5400, hours, minutes);
//   // unit.isHours(), value 2 (1.5 hours round up)
//   unit.secondsForValue(value);  // 7200
//
// The minimum values and steps of the settings serve the picker; these operations do not
// apply them (a value is only capped at the maximum). Thread-safe: values are immutable.

#ifndef QMCORE_FORMATTING_HOURSMINUTESDURATIONUNIT_HPP_
#define QMCORE_FORMATTING_HOURSMINUTESDURATIONUNIT_HPP_

#include <cstdint>
#include <string>
#include <utility>

#include "qmcore/formatting/DurationUnitSettings.hpp"

namespace qm {

class HoursMinutesDurationUnit {
 public:
  enum class Case { kHours, kMinutes };

  static HoursMinutesDurationUnit hours(DurationUnitSettings settings) {
    return HoursMinutesDurationUnit(Case::kHours, std::move(settings));
  }
  static HoursMinutesDurationUnit minutes(DurationUnitSettings settings) {
    return HoursMinutesDurationUnit(Case::kMinutes, std::move(settings));
  }

  // "Hours": 1 ... 24, default 1, step 1, index 0 (the title localized at each call).
  static DurationUnitSettings defaultHoursSettings();
  // "Minutes": 5 ... 55, default 10, step 5, index 1.
  static DurationUnitSettings defaultMinutesSettings();

  // Hours for more than 3599 seconds, else minutes, with the matching settings.
  static HoursMinutesDurationUnit unitForSeconds(std::int64_t seconds,
                                                 const DurationUnitSettings& hourSettings,
                                                 const DurationUnitSettings& minuteSettings);
  // Hours when `index` is the hour settings' index; minutes for any other index.
  static HoursMinutesDurationUnit unitForIndex(std::int64_t index,
                                               const DurationUnitSettings& hourSettings,
                                               const DurationUnitSettings& minuteSettings);
  // The unit of `unitForSeconds` and its `valueForSeconds`.
  static std::pair<HoursMinutesDurationUnit, std::int64_t> unitAndValueForSeconds(
      std::int64_t seconds, const DurationUnitSettings& hourSettings,
      const DurationUnitSettings& minuteSettings);
  // "minutes: 30": the unit's title in lower case and its value for the seconds.
  static std::string uiDescriptionForSeconds(std::int64_t seconds,
                                             const DurationUnitSettings& hourSettings,
                                             const DurationUnitSettings& minuteSettings);

  Case unitCase() const { return case_; }
  bool isHours() const { return case_ == Case::kHours; }
  const DurationUnitSettings& settings() const { return settings_; }

  // Hours: the seconds in whole hours, halves rounded away from zero, at most the hour
  // settings' maximum. Minutes: the whole minutes (truncated), at most the minute settings'
  // maximum.
  std::int64_t valueForSeconds(std::int64_t seconds, const DurationUnitSettings& hourSettings,
                               const DurationUnitSettings& minuteSettings) const;
  // value × 3600 for hours, value × 60 for minutes. Stops the program when the product
  // overflows 64 bits.
  std::int64_t secondsForValue(std::int64_t value) const;

  bool operator==(const HoursMinutesDurationUnit&) const = default;

 private:
  HoursMinutesDurationUnit(Case unitCase, DurationUnitSettings settings)
      : case_(unitCase), settings_(std::move(settings)) {}

  Case case_;
  DurationUnitSettings settings_;
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_HOURSMINUTESDURATIONUNIT_HPP_
