// Display switches of the map measuring tools: whether polygons and routes show their vertices
// as dots, which length and area-centre labels the editor and the navigator draw, and the angle
// unit of those labels. Every switch is persisted in the settings store and announced to the
// map views by notification.
//
//   auto& settings = qm::QMPlanimeterSettings::sharedInstance();
//   settings.setRouteAnnotationsAsDots(true);  // stores, synchronises, posts
//                                              // "WaypointsCollectionChanged" with 6
//
// The units provider also posts this class's "QMPlanimeterUnitTypeChanged" when the current
// length or area unit changes, since only the map displays depend on them.
//
// Not thread-safe apart from `sharedInstance`: use an instance from one thread at a time.
// Setters do not compare with the old value: setting the same value writes and notifies again.

#ifndef QMCORE_GEO_QMPLANIMETERSETTINGS_HPP_
#define QMCORE_GEO_QMPLANIMETERSETTINGS_HPP_

#include <cstdint>
#include <memory>
#include <string_view>

#include "qmcore/platform/Env.hpp"
#include "qmcore/provider/UnitsProviderKeys.hpp"

namespace qm {

class EnvironmentSettings;
class NotificationCenter;
class SettingsStore;

// Settings keys.
inline constexpr std::string_view kQMPolygonAnnotationsAsDotsKey = "QM_polygonAnnotationsAsDots";
inline constexpr std::string_view kQMRouteAnnotationsAsDotsKey = "QM_routeAnnotationsAsDots";
inline constexpr std::string_view kQMEditorShowsLengthAnnotationsKey =
    "QM_editorShowsLengthAnnotations";
inline constexpr std::string_view kQMEditorShowsAreaCenterAnnotationsKey =
    "QM_editorShowsAreaCenterAnnotations";
inline constexpr std::string_view kQMNavigatorShowsRouteLengthAnnotationsKey =
    "QM_navigatorShowsRouteLengthAnnotations";
inline constexpr std::string_view kQMNavigatorShowsAreaCenterAnnotationsKey =
    "QM_navigatorShowsAreaCenterAnnotations";
inline constexpr std::string_view kQMAnnotationAngleTypeKey = "QM_annotationAngleType";

// Notification names. "QMPlanimeterUnitTypeChanged" (`QMPlanimeterUnitTypeChangedNotification`,
// shared with the units provider) has no object; this one carries the number 6 (an
// `std::int64_t`).
inline constexpr std::string_view QMWaypointsCollectionChangedNotification =
    "WaypointsCollectionChanged";

class QMPlanimeterSettings {
 public:
  // Reads every switch from `env`'s standard store; absent keys take their defaults (dots: the
  // environment's `defaultMapShowDotsForConnectionPoints`; labels: on; angle type 0).
  // Notifications go to `env`'s centre. `env` and `environment` must outlive the settings.
  QMPlanimeterSettings(Env& env, const EnvironmentSettings& environment);

  // The instance over `Env::Default()` and the shared environment settings.
  static QMPlanimeterSettings& sharedInstance();

  // Post "QMPlanimeterUnitTypeChanged" (object: none) and "WaypointsCollectionChanged"
  // (object: 6) on `center`.
  static void notifyOnSettingsChange(
      NotificationCenter& center = Env::Default().notificationCenter());
  static void notifyOnPointSettingsChange(
      NotificationCenter& center = Env::Default().notificationCenter());

  bool polygonAnnotationsAsDots() const { return polygonAnnotationsAsDots_; }
  bool routeAnnotationsAsDots() const { return routeAnnotationsAsDots_; }
  bool editorShowsLengthAnnotations() const { return editorShowsLengthAnnotations_; }
  bool editorShowsAreaCenterAnnotations() const { return editorShowsAreaCenterAnnotations_; }
  bool navigatorShowsRouteLengthAnnotations() const {
    return navigatorShowsRouteLengthAnnotations_;
  }
  bool navigatorShowsAreaCenterAnnotations() const { return navigatorShowsAreaCenterAnnotations_; }
  std::int64_t annotationAngleType() const { return annotationAngleType_; }

  // Set, store, synchronise, then post "WaypointsCollectionChanged".
  void setPolygonAnnotationsAsDots(bool value);
  void setRouteAnnotationsAsDots(bool value);
  // Set, store, synchronise, then post "QMPlanimeterUnitTypeChanged".
  void setEditorShowsLengthAnnotations(bool value);
  void setEditorShowsAreaCenterAnnotations(bool value);
  void setNavigatorShowsRouteLengthAnnotations(bool value);
  void setNavigatorShowsAreaCenterAnnotations(bool value);

  // Only sets the field: no write, no notification.
  void setAnnotationAngleType(std::int64_t value) { annotationAngleType_ = value; }
  // Sets the field, stores it (without an explicit synchronise) and posts
  // "QMPlanimeterUnitTypeChanged".
  void assignAnnotationAngleType(std::int64_t value);

  // Re-reads every switch from the store.
  void initValues();
  // Re-reads the angle type alone: the stored integer, or 0 when none is stored. Like the
  // plain setter it neither writes nor notifies.
  void initAnnotationAngleType();

 private:
  void storeSwitch(bool& field, std::string_view key, bool value,
                   void (*notify)(NotificationCenter&));
  void storeLabelSwitch(bool& field, std::string_view key, bool value);

  std::shared_ptr<SettingsStore> store_;
  NotificationCenter& center_;
  const EnvironmentSettings& environment_;

  bool polygonAnnotationsAsDots_ = false;
  bool routeAnnotationsAsDots_ = false;
  bool editorShowsLengthAnnotations_ = true;
  bool editorShowsAreaCenterAnnotations_ = true;
  bool navigatorShowsRouteLengthAnnotations_ = true;
  bool navigatorShowsAreaCenterAnnotations_ = true;
  std::int64_t annotationAngleType_ = 0;
};

}  // namespace qm

#endif  // QMCORE_GEO_QMPLANIMETERSETTINGS_HPP_
