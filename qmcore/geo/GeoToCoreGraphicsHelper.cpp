#include "qmcore/geo/GeoToCoreGraphicsHelper.hpp"

namespace qm {

std::optional<CGPoint> GeoToCoreGraphicsHelper::cgPoint(const MKMapPoint& point,
                                                        const MKMapRect& mapRect,
                                                        const CGSize& size) {
  if (!(mapRect.size.height > 0.0) || !(mapRect.size.width > 0.0)) return std::nullopt;
  if (!MKMapRectContainsPoint(mapRect, point)) return std::nullopt;
  return CGPoint{(point.x - mapRect.origin.x) / mapRect.size.width * size.width,
                 (point.y - mapRect.origin.y) / mapRect.size.height * size.height};
}

}  // namespace qm
