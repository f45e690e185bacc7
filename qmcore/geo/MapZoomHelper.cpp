#include "qmcore/geo/MapZoomHelper.hpp"

#include <cmath>
#include <string>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/InvariantFormat.hpp"

namespace qm {
namespace {

constexpr double kPi = 3.141592653589793;

double radians(double degrees) { return degrees * kPi / 180.0; }

double atLeastMinimumPitch(double pitch) {
  return pitch <= MapZoomHelper::kMinimumPitch ? MapZoomHelper::kMinimumPitch : pitch;
}

double clampedLatitude(double latitude) {
  if (latitude <= -MapZoomHelper::kLatitudeLimit) return -MapZoomHelper::kLatitudeLimit;
  if (latitude > MapZoomHelper::kLatitudeLimit) return MapZoomHelper::kLatitudeLimit;
  return latitude;
}

// The unrounded zoom for a pitch already in radians and clamped.
double zoomValue(double altitude, double latitude, double pitchRadians, double viewportHeight) {
  if (!(viewportHeight > 0.0)) return 0.0;
  const double metersPerPixel = 2.0 * altitude * std::tan(pitchRadians) / viewportHeight;
  if (!(metersPerPixel > 0.0)) return 0.0;
  return std::log2(std::cos(radians(latitude)) * MapZoomHelper::kGroundResolutionAtZoom0 /
                   metersPerPixel);
}

std::int64_t roundedZoom(double value) {
  const double rounded = std::round(value);
  // 2^63 is the first double beyond the 64-bit range; NaN fails both tests.
  if (!(rounded >= -9223372036854775808.0 && rounded < 9223372036854775808.0)) {
    fatalError(invariantFormat("MapZoomHelper: the zoom level %f is not a 64-bit integer", value));
  }
  return static_cast<std::int64_t>(rounded);
}

}  // namespace

double MapZoomHelper::metersPerPixel(double latitude, std::int64_t zoomLevel) {
  std::int64_t zoom = zoomLevel;
  if (zoom < 1) zoom = 0;
  if (zoom > kMaximumZoomLevel) zoom = kMaximumZoomLevel;
  return std::cos(radians(clampedLatitude(latitude))) * kGroundResolutionAtZoom0 /
         std::pow(2.0, static_cast<double>(zoom));
}

double MapZoomHelper::altitude(std::int64_t zoomLevel, double latitude, double pitch,
                               CGSize viewportSize) {
  if (!(viewportSize.height > 0.0)) return 0.0;
  const double resolution = metersPerPixel(clampedLatitude(latitude), zoomLevel);
  const double pitchRadians = radians(atLeastMinimumPitch(pitch));
  return resolution * viewportSize.height / (2.0 * std::tan(pitchRadians));
}

double MapZoomHelper::zoomLevelValue(double altitude, double latitude, double pitch,
                                     CGSize viewportSize) {
  return zoomValue(altitude, latitude, atLeastMinimumPitch(radians(pitch)), viewportSize.height);
}

std::int64_t MapZoomHelper::zoomLevel(double altitude, double latitude, double pitch,
                                      CGSize viewportSize) {
  return roundedZoom(zoomLevelValue(altitude, latitude, pitch, viewportSize));
}

std::int64_t MapZoomHelper::zoomLevel(const MKMapView& mapView) {
  const double pitchRadians = atLeastMinimumPitch(radians(atLeastMinimumPitch(mapView.pitch)));
  return roundedZoom(zoomValue(mapView.centerCoordinateDistance, mapView.centerLatitude,
                               pitchRadians, mapView.boundsHeight));
}

}  // namespace qm
