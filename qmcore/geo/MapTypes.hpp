// The map and geometry value types of the geo helpers: plain structs of doubles with the field
// names map code expects (`CLLocationCoordinate2D`, `MKMapRect`, `CGSize`, ...), and the
// four properties of a map view that the zoom computation reads.
//
//   qm::MKMapRect rect{{0, 0}, {256, 256}};
//   qm::MKMapRectContainsPoint(rect, {10, 10});   // true
//   qm::MKMapRectContainsPoint(rect, {256, 10});  // false: the far edges are outside
//
// All types are trivially copyable and safe to share between threads.

#ifndef QMCORE_GEO_MAPTYPES_HPP_
#define QMCORE_GEO_MAPTYPES_HPP_

namespace qm {

// A position in degrees: latitude north positive, longitude east positive.
struct CLLocationCoordinate2D {
  double latitude = 0.0;
  double longitude = 0.0;
  bool operator==(const CLLocationCoordinate2D&) const = default;
};

// The extent of a coordinate region in degrees.
struct MKCoordinateSpan {
  double latitudeDelta = 0.0;
  double longitudeDelta = 0.0;
  bool operator==(const MKCoordinateSpan&) const = default;
};

// A point on the flat web-Mercator map, in map units.
struct MKMapPoint {
  double x = 0.0;
  double y = 0.0;
};

struct MKMapSize {
  double width = 0.0;
  double height = 0.0;
};

// A rectangle on the flat map: its top-left corner and its size, in map units.
struct MKMapRect {
  MKMapPoint origin;
  MKMapSize size;
};

// Whether `point` lies in `rect`: the near edges (origin) belong to it, the far edges do not,
// so that rectangles tiling the map never share a point. An empty, negative or NaN rectangle
// contains nothing, and a NaN point lies in no rectangle.
inline bool MKMapRectContainsPoint(const MKMapRect& rect, const MKMapPoint& point) {
  return point.x >= rect.origin.x && point.x < rect.origin.x + rect.size.width &&
         point.y >= rect.origin.y && point.y < rect.origin.y + rect.size.height;
}

// A size and a point in a view's coordinate space, in points.
struct CGSize {
  double width = 0.0;
  double height = 0.0;
};

struct CGPoint {
  double x = 0.0;
  double y = 0.0;
  bool operator==(const CGPoint&) const = default;
};

// What the zoom computation reads of a map view and its camera.
struct MKMapView {
  double centerCoordinateDistance = 0.0;  // the camera's distance to the centre, metres
  double pitch = 0.0;                     // the camera's pitch, degrees from straight down
  double centerLatitude = 0.0;            // latitude of the view's centre coordinate, degrees
  double boundsHeight = 0.0;              // height of the view's bounds, points
};

}  // namespace qm

#endif  // QMCORE_GEO_MAPTYPES_HPP_
