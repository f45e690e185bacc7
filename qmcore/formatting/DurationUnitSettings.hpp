// The settings of a duration unit's picker: its title, range, default and step, and the
// unit's position in the unit picker. Timers and reminders let the user pick a duration in
// hours or in minutes; see "qmcore/formatting/HoursMinutesDurationUnit.hpp".

#ifndef QMCORE_FORMATTING_DURATIONUNITSETTINGS_HPP_
#define QMCORE_FORMATTING_DURATIONUNITSETTINGS_HPP_

#include <cstdint>
#include <string>

namespace qm {

// An immutable value.
class DurationUnitSettings {
 public:
  DurationUnitSettings(std::string localizedTitle, std::int64_t maxValue, std::int64_t minValue,
                       std::int64_t defaultValue, std::int64_t step, std::int64_t index)
      : localizedTitle_(std::move(localizedTitle)),
        maxValue_(maxValue),
        minValue_(minValue),
        defaultValue_(defaultValue),
        step_(step),
        index_(index) {}

  // The unit's title as the picker shows it ("Hours").
  const std::string& localizedTitle() const { return localizedTitle_; }
  // The largest and smallest selectable values, and the initial one.
  std::int64_t maxValue() const { return maxValue_; }
  std::int64_t minValue() const { return minValue_; }
  std::int64_t defaultValue() const { return defaultValue_; }
  // The picker's increment.
  std::int64_t step() const { return step_; }
  // The unit's position in the unit picker.
  std::int64_t index() const { return index_; }

  bool operator==(const DurationUnitSettings&) const = default;

 private:
  std::string localizedTitle_;
  std::int64_t maxValue_;
  std::int64_t minValue_;
  std::int64_t defaultValue_;
  std::int64_t step_;
  std::int64_t index_;
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_DURATIONUNITSETTINGS_HPP_
