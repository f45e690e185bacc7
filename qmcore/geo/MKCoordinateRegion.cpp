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

}  // namespace

std::optional<MKCoordinateRegion> MKCoordinateRegion::fromCoordinates(
    std::span<const CLLocationCoordinate2D> coordinates) {
  if (coordinates.empty()) return std::nullopt;
  if (coordinates.size() == 1) return MKCoordinateRegion{coordinates.front(), kSinglePointSpan};

  // Both candidates in one sweep: they share the latitudes and differ only in the longitudes.
  const CLLocationCoordinate2D& first = coordinates.front();
  double minLatitude = first.latitude;
  double maxLatitude = first.latitude;
  double minLongitude = first.longitude;
  double maxLongitude = first.longitude;
  double minShifted = first.longitude < 0.0 ? first.longitude + 360.0 : first.longitude;
  double maxShifted = minShifted;
  bool nanLatitude = false;
  bool nanLongitude = false;
  for (const CLLocationCoordinate2D& c : coordinates.subspan(1)) {
    const double shifted = c.longitude < 0.0 ? c.longitude + 360.0 : c.longitude;
    minLatitude = c.latitude < minLatitude ? c.latitude : minLatitude;
    maxLatitude = c.latitude > maxLatitude ? c.latitude : maxLatitude;
    minLongitude = c.longitude < minLongitude ? c.longitude : minLongitude;
    maxLongitude = c.longitude > maxLongitude ? c.longitude : maxLongitude;
    minShifted = shifted < minShifted ? shifted : minShifted;
    maxShifted = shifted > maxShifted ? shifted : maxShifted;
    nanLatitude |= c.latitude != c.latitude;
    nanLongitude |= c.longitude != c.longitude;
  }
  // Comparisons skip a NaN that is not first; make every NaN count, wherever it is.
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  if (nanLatitude || std::isnan(first.latitude)) minLatitude = maxLatitude = kNaN;
  if (nanLongitude || std::isnan(first.longitude)) {
    minLongitude = maxLongitude = minShifted = maxShifted = kNaN;
  }

  const MKCoordinateRegion plain = boxRegion(minLatitude, maxLatitude, minLongitude, maxLongitude);
  MKCoordinateRegion shifted = boxRegion(minLatitude, maxLatitude, minShifted, maxShifted);
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
