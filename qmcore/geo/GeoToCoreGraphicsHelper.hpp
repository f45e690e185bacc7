// Maps a point of the flat map into a view that shows a rectangle of the map.
//
//   qm::GeoToCoreGraphicsHelper::cgPoint({150, 50}, {{100, 0}, {100, 100}}, {200, 400});
//   // CGPoint{100, 200}
//
// Stateless and safe to call from any thread.

#ifndef QMCORE_GEO_GEOTOCOREGRAPHICSHELPER_HPP_
#define QMCORE_GEO_GEOTOCOREGRAPHICSHELPER_HPP_

#include <optional>

#include "qmcore/geo/MapTypes.hpp"

namespace qm {

class GeoToCoreGraphicsHelper {
 public:
  // Where `point` appears in a view of `size` that shows `mapRect`, scaled independently in x
  // and y. None when the rectangle's width or height is not above 0 (also NaN), or when the
  // rectangle does not contain the point (`MKMapRectContainsPoint`).
  static std::optional<CGPoint> cgPoint(const MKMapPoint& point, const MKMapRect& mapRect,
                                        const CGSize& size);
};

}  // namespace qm

#endif  // QMCORE_GEO_GEOTOCOREGRAPHICSHELPER_HPP_
