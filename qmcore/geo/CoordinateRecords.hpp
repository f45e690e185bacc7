// Records that carry a converted coordinate from the coordinate converter to the screens. The
// conversions themselves live in the apps.
//
//   qm::CoordinateContainer target({47.3769, 8.5417}, qm::QMCoordinateType::kUTM);
//   target.geoCoordinate.latitude;  // 47.3769, fixed for the container's life
//   target.component1 = 465000.0;  // easting
//   target.component2 = 5247000.0; // northing
//   target.zone = "32T";

#ifndef QMCORE_GEO_COORDINATERECORDS_HPP_
#define QMCORE_GEO_COORDINATERECORDS_HPP_

#include <cstdint>
#include <optional>
#include <string>

#include "qmcore/geo/CoordinateFormats.hpp"
#include "qmcore/geo/MapTypes.hpp"

namespace qm {

// A position in the Military Grid Reference System.
struct MGRSCoordinates {
  std::uint32_t zone = 0;  // UTM zone number
  double easting = 0.0;    // within the 100 km square, metres
  double northing = 0.0;   // within the 100 km square, metres
  std::string gzd;         // grid zone designation
  bool isValid = false;    // whether the conversion succeeded
};

// A source position and what it converts to. The position is set once, at construction, and
// is const from then on: it is read and written as one unit, so a reader on any thread sees the
// latitude and longitude of one and the same position. The other fields are plain and belong to
// one thread at a time.
struct CoordinateContainer {
  // Components start at 0 and the zone absent.
  CoordinateContainer(CLLocationCoordinate2D geoCoordinate, QMCoordinateType targetType)
      : geoCoordinate(geoCoordinate), targetCoordinateType(targetType) {}

  const CLLocationCoordinate2D geoCoordinate;  // the source position
  QMCoordinateType targetCoordinateType;       // the system to convert into
  double component1 = 0.0;                     // e.g. easting, or latitude
  double component2 = 0.0;                     // e.g. northing, or longitude
  std::optional<std::string> zone;             // the zone text of grid systems; absent otherwise
};

}  // namespace qm

#endif  // QMCORE_GEO_COORDINATERECORDS_HPP_
