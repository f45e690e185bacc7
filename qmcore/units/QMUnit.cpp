#include "qmcore/units/QMUnit.hpp"

#include <algorithm>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTimeUnit.hpp"

namespace qm {

const std::string_view QMTimeSubjectUuid = "1_Time";
const std::string_view QMDistanceSubjectUuid = "2_Distance";
const std::string_view QMSpeedSubjectUuid = "3_Speed";
const std::string_view QMAltitudeSubjectUuid = "4_Altitude";

const std::string_view QMMeterAbbreviation = "m";
const std::string_view QMFeetAbbreviation = "ft";

namespace {

// Absent texts print as the platform prints a null object.
std::string orNull(std::string_view text) {
  return text.data() == nullptr ? std::string("(null)") : std::string(text);
}

}  // namespace

QMUnit::QMUnit(int numberOfDecimalPlaces)
    : numberOfDecimalPlaces_(numberOfDecimalPlaces),
      formatter_(formatterWithNumberOfDecimalPlaces(numberOfDecimalPlaces)) {}

NumberFormatter QMUnit::formatterWithNumberOfDecimalPlaces(int n) {
  return NumberFormatter::withDecimals(std::max(n, 0));
}

void QMUnit::define(const Definition& definition) {
  switchToBiggerUnitByDefault_ = definition.switchToBiggerUnitByDefault;
  base_ = definition.base;
  uuid_ = definition.uuid;
  name_ = definition.name;
  abbreviation_ = definition.abbreviation;
  ratioToMeter_ = definition.ratioToMeter;
  numberOfDecimalPlaces_ = definition.numberOfDecimalPlaces;
  formatter_ = formatterWithNumberOfDecimalPlaces(definition.numberOfDecimalPlaces);
  canSwitchToUnit_ = definition.canSwitchToUnit;
  unitSwitchesAtValue_ = definition.unitSwitchesAtValue;
  unitType_ = definition.unitType;
}

QMUnit::Definition QMUnit::definition() const {
  return {.uuid = uuid_,
          .name = name_,
          .abbreviation = abbreviation_,
          .ratioToMeter = ratioToMeter_,
          .numberOfDecimalPlaces = numberOfDecimalPlaces_,
          .unitType = unitType_,
          .canSwitchToUnit = canSwitchToUnit_,
          .unitSwitchesAtValue = unitSwitchesAtValue_,
          .switchToBiggerUnitByDefault = switchToBiggerUnitByDefault_,
          .base = base_};
}

std::string QMUnit::debugDescription() const {
  return invariantFormat("%s (%s), %s m*%f", orNull(name_).c_str(), orNull(uuid_).c_str(),
                         orNull(abbreviation_).c_str(), ratioToMeter_);
}

std::string QMUnit::equivalenceText(double factor, int decimals,
                                    std::string_view targetAbbreviation) const {
  std::string text = "1 ";
  text += localizedAbbreviation();
  text += " = ";
  text += formatterWithNumberOfDecimalPlaces(decimals).format(factor);
  text += ' ';
  text += targetAbbreviation;
  return text;
}

std::string QMUnit::uiDescription() const {
  return equivalenceText(ratioToMeter_, 6, QMLengthUnit::meterUnit()->localizedAbbreviation());
}

std::string QMUnit::stringForValue(double value) const {
  return formatter_.format(value) + " " + localizedAbbreviation();
}

std::string QMUnit::stringForIntegerValue(std::int64_t value) const {
  return formatterWithNumberOfDecimalPlaces(0).format(value) + " " + localizedAbbreviation();
}

std::optional<std::string> QMUnit::automaticSwitchDescriptionForValue(std::int64_t) const {
  return std::nullopt;
}

std::string QMUnit::localizedName() const { return CoreStrings::CLSTRING(name_); }

std::string QMUnit::localizedAbbreviation() const { return CoreStrings::CLSTRING(abbreviation_); }

std::string QMUnit::localizedSubjectNameForSubjectUuid(std::string_view subjectUuid) {
  if (isSameConstant(subjectUuid, QMTimeSubjectUuid)) return QMTimeUnit::localizedSubjectName();
  if (isSameConstant(subjectUuid, QMDistanceSubjectUuid)) {
    return QMDistanceUnit::localizedSubjectName();
  }
  if (isSameConstant(subjectUuid, QMSpeedSubjectUuid)) return QMSpeedUnit::localizedSubjectName();
  if (isSameConstant(subjectUuid, QMAltitudeSubjectUuid)) {
    return QMAltitudeUnit::localizedSubjectName();
  }
  return "---";
}

std::string QMUnit::localizedSubjectNameForSubject(QMMeasurementSubject subject) {
  switch (subject) {
    case QMMeasurementSubject::kSpeed:
      return QMSpeedUnit::localizedSubjectName();
    case QMMeasurementSubject::kDistance:
      return QMDistanceUnit::localizedSubjectName();
    case QMMeasurementSubject::kTime:
      return QMTimeUnit::localizedSubjectName();
    case QMMeasurementSubject::kHeading:
      return CoreStrings::CLSTRING("heading");
    default:
      // Altitude is deliberately unknown here, unlike in the identifier variant.
      return "---";
  }
}

}  // namespace qm
