// The time unit (the second) and the localised abbreviations of hours, minutes and seconds.
//
// Only the second has a factory; the minute and hour identifiers are published for other uses.
// The minute's abbreviation has its own string-table key, "m_minute", because "m" is the
// metre's: in German the minute is "min" while the metre stays "m".

#ifndef QMCORE_UNITS_QMTIMEUNIT_HPP_
#define QMCORE_UNITS_QMTIMEUNIT_HPP_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

extern const std::string_view QMSecondTimeUnitUuid;  // ".time-second"
extern const std::string_view QMMinuteTimeUnitUuid;  // ".time-minute"
extern const std::string_view QMHourTimeUnitUuid;    // ".time-hour"

extern const std::string_view QMHourTimeUnitAbbreviation;       // "h"
extern const std::string_view QMMinuteTimeUnitAbbreviation;     // "m"
extern const std::string_view QMSecondTimeUnitAbbreviation;     // "s"
extern const std::string_view QMMinuteTimeUnitLocalizationKey;  // "m_minute"

inline constexpr std::int64_t kSecondsPerMinute = 60;
inline constexpr std::int64_t kSecondsPerHour = 3600;
inline constexpr std::int64_t kSecondsPerDay = 86400;

class QMTimeUnit : public QMUnit {
 public:
  using QMUnit::QMUnit;

  // A new unit: factor 1.0 (seconds), 0 decimals.
  static std::shared_ptr<const QMTimeUnit> second();

  // The library strings for "Time" and "Duration" in lower case.
  static std::string localizedSubjectName();
  static std::string localizedDurationName();

  // The translations of "h", "m_minute" and "s" in the current locale.
  static std::string localizedHourAbbreviation();
  static std::string localizedMinuteAbbreviation();
  static std::string localizedSecondAbbreviation();

  QMMeasurementSubject subject() const override { return QMMeasurementSubject::kTime; }
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMTIMEUNIT_HPP_
