#include "qmcore/geo/QMPlanimeterSettings.hpp"

#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"

namespace qm {

QMPlanimeterSettings::QMPlanimeterSettings(Env& env, const EnvironmentSettings& environment)
    : store_(env.standardSettings()), center_(env.notificationCenter()), environment_(environment) {
  initValues();
}

QMPlanimeterSettings& QMPlanimeterSettings::sharedInstance() {
  static QMPlanimeterSettings instance(Env::Default(), EnvironmentSettings::shared());
  return instance;
}

void QMPlanimeterSettings::notifyOnSettingsChange(NotificationCenter& center) {
  center.post(QMPlanimeterUnitTypeChangedNotification);
}

void QMPlanimeterSettings::notifyOnPointSettingsChange(NotificationCenter& center) {
  center.post(QMWaypointsCollectionChangedNotification, std::int64_t{6});
}

void QMPlanimeterSettings::initValues() {
  const bool dotsByDefault = environment_.defaultMapShowDotsForConnectionPoints();
  const auto read = [this](std::string_view key, bool fallback) {
    return store_->hasKey(key) ? store_->boolForKey(key) : fallback;
  };
  polygonAnnotationsAsDots_ = read(kQMPolygonAnnotationsAsDotsKey, dotsByDefault);
  routeAnnotationsAsDots_ = read(kQMRouteAnnotationsAsDotsKey, dotsByDefault);
  editorShowsLengthAnnotations_ = read(kQMEditorShowsLengthAnnotationsKey, true);
  editorShowsAreaCenterAnnotations_ = read(kQMEditorShowsAreaCenterAnnotationsKey, true);
  navigatorShowsRouteLengthAnnotations_ = read(kQMNavigatorShowsRouteLengthAnnotationsKey, true);
  navigatorShowsAreaCenterAnnotations_ = read(kQMNavigatorShowsAreaCenterAnnotationsKey, true);
  initAnnotationAngleType();
}

void QMPlanimeterSettings::initAnnotationAngleType() {
  setAnnotationAngleType(store_->hasKey(kQMAnnotationAngleTypeKey)
                             ? store_->integerForKey(kQMAnnotationAngleTypeKey)
                             : 0);
}

void QMPlanimeterSettings::storeSwitch(bool& field, std::string_view key, bool value,
                                       void (*notify)(NotificationCenter&)) {
  field = value;
  store_->setBool(key, value);
  store_->synchronize();
  notify(center_);
}

void QMPlanimeterSettings::storeLabelSwitch(bool& field, std::string_view key, bool value) {
  storeSwitch(field, key, value, &notifyOnSettingsChange);
}

void QMPlanimeterSettings::setPolygonAnnotationsAsDots(bool value) {
  storeSwitch(polygonAnnotationsAsDots_, kQMPolygonAnnotationsAsDotsKey, value,
              &notifyOnPointSettingsChange);
}

void QMPlanimeterSettings::setRouteAnnotationsAsDots(bool value) {
  storeSwitch(routeAnnotationsAsDots_, kQMRouteAnnotationsAsDotsKey, value,
              &notifyOnPointSettingsChange);
}

void QMPlanimeterSettings::setEditorShowsLengthAnnotations(bool value) {
  storeLabelSwitch(editorShowsLengthAnnotations_, kQMEditorShowsLengthAnnotationsKey, value);
}

void QMPlanimeterSettings::setEditorShowsAreaCenterAnnotations(bool value) {
  storeLabelSwitch(editorShowsAreaCenterAnnotations_, kQMEditorShowsAreaCenterAnnotationsKey,
                   value);
}

void QMPlanimeterSettings::setNavigatorShowsRouteLengthAnnotations(bool value) {
  storeLabelSwitch(navigatorShowsRouteLengthAnnotations_,
                   kQMNavigatorShowsRouteLengthAnnotationsKey, value);
}

void QMPlanimeterSettings::setNavigatorShowsAreaCenterAnnotations(bool value) {
  storeLabelSwitch(navigatorShowsAreaCenterAnnotations_, kQMNavigatorShowsAreaCenterAnnotationsKey,
                   value);
}

void QMPlanimeterSettings::assignAnnotationAngleType(std::int64_t value) {
  setAnnotationAngleType(value);
  store_->setInteger(kQMAnnotationAngleTypeKey, value);
  notifyOnSettingsChange(center_);
}

}  // namespace qm
