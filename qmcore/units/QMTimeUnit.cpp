#include "qmcore/units/QMTimeUnit.hpp"

#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {

const std::string_view QMSecondTimeUnitUuid = ".time-second";
const std::string_view QMMinuteTimeUnitUuid = ".time-minute";
const std::string_view QMHourTimeUnitUuid = ".time-hour";

const std::string_view QMHourTimeUnitAbbreviation = "h";
const std::string_view QMMinuteTimeUnitAbbreviation = "m";
const std::string_view QMSecondTimeUnitAbbreviation = "s";
const std::string_view QMMinuteTimeUnitLocalizationKey = "m_minute";

std::shared_ptr<const QMTimeUnit> QMTimeUnit::second() {
  auto unit = std::make_shared<QMTimeUnit>();
  unit->define({.uuid = QMSecondTimeUnitUuid,
                .name = "second",
                .abbreviation = QMSecondTimeUnitAbbreviation,
                .ratioToMeter = 1.0,
                .numberOfDecimalPlaces = 0,
                .unitType = DistanceUnitType::kMetric});
  return unit;
}

std::string QMTimeUnit::localizedSubjectName() {
  return lowercaseString(CoreStrings::CLSTRING("Time"));
}

std::string QMTimeUnit::localizedDurationName() {
  return lowercaseString(CoreStrings::CLSTRING("Duration"));
}

std::string QMTimeUnit::localizedHourAbbreviation() {
  return CoreStrings::CLSTRING(QMHourTimeUnitAbbreviation);
}

std::string QMTimeUnit::localizedMinuteAbbreviation() {
  return CoreStrings::CLSTRING(QMMinuteTimeUnitLocalizationKey);
}

std::string QMTimeUnit::localizedSecondAbbreviation() {
  return CoreStrings::CLSTRING(QMSecondTimeUnitAbbreviation);
}

}  // namespace qm
