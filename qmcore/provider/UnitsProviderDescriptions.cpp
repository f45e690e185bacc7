// The texts that settings screens show about the current units and the unit systems.

#include "qmcore/platform/UnicodeText.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringFormat.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

std::string capitalizedDistance() { return capitalizedString(CoreStrings::CLSTRING("distance")); }

std::string principalUnitName(bool unitsAreDrivenBySpeedUnits) {
  return unitsAreDrivenBySpeedUnits ? QMSpeedUnit::localizedSubjectName()
                                    : CoreStrings::CLSTRING("General");
}

}  // namespace

std::string UnitsProvider::localizedNameOfImperialSystem() {
  return CoreStrings::CLSTRING(QMImperialSystemName);
}

std::string UnitsProvider::localizedNameOfMetricSystem() {
  return CoreStrings::CLSTRING(QMMetricSystemName);
}

std::string UnitsProvider::localizedNameOfNauticalSystem() {
  return CoreStrings::CLSTRING(QMNauticalSystemName);
}

std::vector<std::string> UnitsProvider::allUnitSystems() {
  return {localizedNameOfMetricSystem(), localizedNameOfImperialSystem(),
          localizedNameOfNauticalSystem()};
}

std::string UnitsProvider::descriptionOfCurrentUnits() const {
  if (environment_.unitsAreDrivenBySpeedUnits()) {
    return formatLocalized(
        CoreStrings::CLSTRING("%@. %@: %@. %@: %@."),
        {current_.speedUnit->localizedName(), capitalizedDistance(),
         current_.distanceUnit->localizedName(), CoreStrings::CLSTRING("Altitude"),
         current_.altitudeUnit->localizedName()});
  }
  // The stored system is not range-checked; an unknown one has no name.
  const std::vector<std::string> systems = allUnitSystems();
  const std::string system = current_.generalUnitType >= 0 && current_.generalUnitType < 3
                                 ? systems[static_cast<size_t>(current_.generalUnitType)]
                                 : std::string();
  return formatLocalized(CoreStrings::CLSTRING("%@. %@: %@. %@: %@. %@: %@"),
                         {system, capitalizedDistance(), current_.distanceUnit->localizedName(),
                          CoreStrings::CLSTRING("Altitude"), current_.altitudeUnit->localizedName(),
                          CoreStrings::CLSTRING("Speed"), current_.speedUnit->localizedName()});
}

std::string UnitsProvider::descriptionOfUnitsSystem(std::int64_t type) const {
  std::shared_ptr<const QMUnit> bigUnit;
  std::string smallText;
  if (isNauticalSystem(type)) {
    bigUnit = QMDistanceUnit::nauticalMileUnit();
    smallText = formatLocalized(CoreStrings::CLSTRING("%@ or %@"),
                                {QMDistanceUnit::meterUnit()->localizedName(),
                                 QMDistanceUnit::footUnit()->localizedName()});
  } else {
    const auto smallUnit = QMDistanceUnit::defaultForUnitType(type, current_.distanceUnitType);
    bigUnit = smallUnit->canSwitchToUnit();
    smallText = smallUnit->localizedName();
  }
  return formatLocalized(
      CoreStrings::CLSTRING("%1$@: %2$@ and %3$@. %4$@: %5$@"),
      {capitalizedDistance(), smallText, bigUnit ? bigUnit->localizedName() : std::string(),
       CoreStrings::CLSTRING("Speed"),
       QMSpeedUnit::defaultForDistanceUnitType(type)->localizedName()});
}

std::string UnitsProvider::principalUnitLocalizedName() const {
  return principalUnitName(environment_.unitsAreDrivenBySpeedUnits());
}

std::string UnitsProvider::restrictedDistanceUnitSelectionMessage() const {
  if (isNauticalSystem(current_.generalUnitType))
    return CoreStrings::CLSTRING("nauticalSettingsHelpText");
  const std::string format =
      CoreStrings::CLSTRING("For %1$@ and %2$@ %3$@ units are deduced from applied %4$@ units.");
  if (environment_.unitsAreDrivenBySpeedUnits()) {
    return formatLocalized(
        format, {QMSpeedUnit::kmhUnit()->localizedName(), QMSpeedUnit::mphUnit()->localizedName(),
                 QMDistanceUnit::localizedSubjectName(), principalUnitLocalizedName()});
  }
  return formatLocalized(format,
                         {localizedNameOfImperialSystem(), localizedNameOfMetricSystem(),
                          QMDistanceUnit::localizedSubjectName(), principalUnitLocalizedName()});
}

}  // namespace qm
