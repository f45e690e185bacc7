#include "qmcore/geo/MKCoordinateRegion.hpp"

#include <cmath>
#include <limits>

#include "qmcore/platform/InvariantFormat.hpp"

namespace qm {
namespace {

constexpr MKCoordinateSpan kSinglePointSpan{1.0, 1.01};

// Centre and span of a box, the centre measured back from the maximum as the maps expect
// (max - delta / 2 rounds differently from (min + max) / 2).
MKCoordinateRegion boxRegion(double minLatitude, double maxLatitude, double minLongitude,
                             double maxLongitude) {
  const double latitudeDelta = maxLatitude - minLatitude;
  const double longitudeDelta = maxLongitude - minLongitude;
  return {{maxLatitude - latitudeDelta * 0.5, maxLongitude - longitudeDelta * 0.5},
          {latitudeDelta, longitudeDelta}};
}

// Running minima and maxima of a track, the longitudes both as given and moved into [0, 360).
struct Bounds {
  explicit Bounds(const CLLocationCoordinate2D& c)
      : minLatitude(c.latitude),
        maxLatitude(c.latitude),
        minLongitude(c.longitude),
        maxLongitude(c.longitude),
        minShifted(shifted(c.longitude)),
        maxShifted(minShifted),
        nanLatitude(c.latitude != c.latitude),
        nanLongitude(c.longitude != c.longitude) {}

  static double shifted(double longitude) {
    return longitude < 0.0 ? longitude + 360.0 : longitude;
  }

  void add(const CLLocationCoordinate2D& c) {
    const double s = shifted(c.longitude);
    minLatitude = c.latitude < minLatitude ? c.latitude : minLatitude;
    maxLatitude = c.latitude > maxLatitude ? c.latitude : maxLatitude;
    minLongitude = c.longitude < minLongitude ? c.longitude : minLongitude;
    maxLongitude = c.longitude > maxLongitude ? c.longitude : maxLongitude;
    minShifted = s < minShifted ? s : minShifted;
    maxShifted = s > maxShifted ? s : maxShifted;
    nanLatitude |= c.latitude != c.latitude;
    nanLongitude |= c.longitude != c.longitude;
  }

  void merge(const Bounds& other) {
    minLatitude = other.minLatitude < minLatitude ? other.minLatitude : minLatitude;
    maxLatitude = other.maxLatitude > maxLatitude ? other.maxLatitude : maxLatitude;
    minLongitude = other.minLongitude < minLongitude ? other.minLongitude : minLongitude;
    maxLongitude = other.maxLongitude > maxLongitude ? other.maxLongitude : maxLongitude;
    minShifted = other.minShifted < minShifted ? other.minShifted : minShifted;
    maxShifted = other.maxShifted > maxShifted ? other.maxShifted : maxShifted;
    nanLatitude |= other.nanLatitude;
    nanLongitude |= other.nanLongitude;
  }

  double minLatitude, maxLatitude, minLongitude, maxLongitude, minShifted, maxShifted;
  bool nanLatitude, nanLongitude;
};

}  // namespace

std::optional<MKCoordinateRegion> MKCoordinateRegion::fromCoordinates(
    std::span<const CLLocationCoordinate2D> coordinates) {
  if (coordinates.empty()) return std::nullopt;
  if (coordinates.size() == 1) return MKCoordinateRegion{coordinates.front(), kSinglePointSpan};

  // Both candidates in one sweep: they share the latitudes and differ only in the longitudes.
  // Two interleaved lanes of accumulators halve the chains of dependent comparisons.
  Bounds lanes[2] = {Bounds(coordinates.front()), Bounds(coordinates.front())};
  const std::size_t count = coordinates.size();
  std::size_t i = 1;
  for (; i + 1 < count; i += 2) {
    lanes[0].add(coordinates[i]);
    lanes[1].add(coordinates[i + 1]);
  }
  if (i < count) lanes[0].add(coordinates[i]);
  Bounds b = lanes[0];
  b.merge(lanes[1]);
  // Comparisons skip NaN; make every NaN count, wherever it is.
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  if (b.nanLatitude) b.minLatitude = b.maxLatitude = kNaN;
  if (b.nanLongitude) b.minLongitude = b.maxLongitude = b.minShifted = b.maxShifted = kNaN;

  const MKCoordinateRegion plain =
      boxRegion(b.minLatitude, b.maxLatitude, b.minLongitude, b.maxLongitude);
  MKCoordinateRegion shifted = boxRegion(b.minLatitude, b.maxLatitude, b.minShifted, b.maxShifted);
  if (shifted.center.longitude > 180.0) shifted.center.longitude -= 360.0;
  return shifted.span.longitudeDelta < plain.span.longitudeDelta ? shifted : plain;
}

bool MKCoordinateRegion::isValid() const {
  return std::fabs(center.latitude) <= 90.0 && std::fabs(center.longitude) <= 180.0 &&
         span.latitudeDelta > 0.0 && span.latitudeDelta <= 180.0 && span.longitudeDelta > 0.0 &&
         span.longitudeDelta <= 360.0;
}

std::string MKCoordinateRegion::formattedDescription() const {
  return invariantFormat("◎ %.6f, %.6f\n⇿ %.6f° × %.6f°", center.latitude, center.longitude,
                         span.latitudeDelta, span.longitudeDelta);
}

}  // namespace qm
