// Web-map zoom levels, ground resolution and camera heights.
//
// Zoom level z shows the world 256 * 2^z pixels wide; at the equator one pixel then covers
// 156543.03392 / 2^z metres, and cos(latitude) times that elsewhere. A camera looking down at a
// pitch sees a viewport of height h pixels from a height of resolution * h / (2 tan(pitch)).
//
//   qm::MapZoomHelper::metersPerPixel(0, 0);                    // 156543.03392
//   qm::MapZoomHelper::altitude(10, 48.0, 30.0, {390, 844});    // metres
//   qm::MapZoomHelper::zoomLevel(altitude, 48.0, 30.0, {390, 844});  // back to 10
//
// The conversions are deliberately not symmetric: the forward one clamps the latitude to the
// web-Mercator limit, the zoom to 0..24 and the pitch in degrees; the backward one clamps only
// the pitch, and in radians. Stateless and safe to call from any thread.

#ifndef QMCORE_GEO_MAPZOOMHELPER_HPP_
#define QMCORE_GEO_MAPZOOMHELPER_HPP_

#include <cstdint>

#include "qmcore/geo/MapTypes.hpp"

namespace qm {

class MapZoomHelper {
 public:
  // Latitudes are clamped to +-kLatitudeLimit in the forward conversions.
  static constexpr double kLatitudeLimit = 85.0511;
  // Metres per pixel at the equator at zoom 0 (a 256-pixel world).
  static constexpr double kGroundResolutionAtZoom0 = 156543.03392;
  static constexpr std::int64_t kMaximumZoomLevel = 24;
  // Keeps the tangent of the viewing angle away from zero.
  static constexpr double kMinimumPitch = 0.01;

  // Metres per pixel: latitude clamped to [-85.0511, 85.0511], zoom to 0..24 (every zoom below
  // 1 counts as 0). A NaN latitude gives NaN.
  static double metersPerPixel(double latitude, std::int64_t zoomLevel);

  // The camera height in metres at which a viewport shows `zoomLevel`; `pitch` in degrees,
  // raised to 0.01 degrees when lower. 0 when the viewport height is not above 0.
  static double altitude(std::int64_t zoomLevel, double latitude, double pitch,
                         CGSize viewportSize);

  // The zoom level a camera at `altitude` metres shows: log2 of the ground resolution at zoom 0
  // over the camera's metres per pixel, rounded half away from zero. `pitch` in degrees; after
  // conversion it is raised to 0.01 radians when lower. Neither the latitude nor the result is
  // clamped. 0 when the viewport height or the metres per pixel are not above 0 (a zero, negative
  // or NaN altitude). Stops the program through `fatalError` when the value is infinite or NaN
  // (a latitude of NaN or beyond +-90 degrees, an infinite altitude); `zoomLevelValue` lets a
  // caller with untrusted input check first.
  static std::int64_t zoomLevel(double altitude, double latitude, double pitch,
                                CGSize viewportSize);

  // `zoomLevel` of the view's camera distance, pitch, centre latitude and bounds height, with
  // the pitch clamped twice: to 0.01 in degrees, then to 0.01 in radians.
  static std::int64_t zoomLevel(const MKMapView& mapView);

  // The value `zoomLevel` rounds: the same steps without the rounding and without the stop,
  // so infinite or NaN where `zoomLevel` would stop.
  static double zoomLevelValue(double altitude, double latitude, double pitch, CGSize viewportSize);
};

}  // namespace qm

#endif  // QMCORE_GEO_MAPZOOMHELPER_HPP_
