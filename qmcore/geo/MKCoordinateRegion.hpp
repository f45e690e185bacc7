// Coordinate regions: the region that encloses a track (narrow also when the track crosses the
// 180th meridian), the validity test the map views need, and a two-line description.
//
//   const std::vector<qm::CLLocationCoordinate2D> track{{0, 179}, {0, -179}};
//   const auto region = qm::MKCoordinateRegion::fromCoordinates(track);
//   region->center.longitude;       // 180
//   region->span.longitudeDelta;    // 2, not 358
//   region->isValid();              // true
//
// Stateless; every function is safe to call from any thread.

#ifndef QMCORE_GEO_MKCOORDINATEREGION_HPP_
#define QMCORE_GEO_MKCOORDINATEREGION_HPP_

#include <optional>
#include <span>
#include <string>

#include "qmcore/geo/MapTypes.hpp"

namespace qm {

struct MKCoordinateRegion {
  CLLocationCoordinate2D center;
  MKCoordinateSpan span;

  // The bounding box of `coordinates`, with no margin; none for an empty list. A lone
  // coordinate gets a span of 1.0 by 1.01 degrees around it. Of the box over the longitudes as
  // given and the box over longitudes moved into [0, 360), the narrower one wins (the plain one
  // on a tie); a shifted centre east of 180 is moved back by 360. One pass over the list.
  // A NaN latitude (longitude) makes the centre latitude and latitude delta (longitude) NaN,
  // so a track with a bad point yields a region that is not `isValid`.
  static std::optional<MKCoordinateRegion> fromCoordinates(
      std::span<const CLLocationCoordinate2D> coordinates);

  // |center latitude| <= 90, |center longitude| <= 180, 0 < latitude delta <= 180 and
  // 0 < longitude delta <= 360. False when any component is NaN.
  bool isValid() const;

  // "◎ <lat>, <lon>\n⇿ <latitude delta>° × <longitude delta>°", numbers as "%.6f" in the POSIX
  // locale.
  std::string formattedDescription() const;

  bool operator==(const MKCoordinateRegion&) const = default;
};

// The validity test as a class-level function, for code that passes checks around by name.
class MKCoordinateRegionValidator {
 public:
  static bool isValid(const MKCoordinateRegion& region) { return region.isValid(); }
};

}  // namespace qm

#endif  // QMCORE_GEO_MKCOORDINATEREGION_HPP_
