// The ways a coordinate screen can write a position: the coordinate system (latitude and
// longitude, UTM or MGRS), the angle notation of latitude and longitude, and the naming of a
// UTM zone's latitude part. Each choice list has stable integer codes (stored in settings), a
// display order (`allCases`) and names for the screens.
//
//   for (const qm::QMCoordinateType type : qm::allCases<qm::QMCoordinateType>()) {
//     qm::localizedName(type);  // "Latitude, Longitude", "MGRS", "UTM"
//   }
//   qm::localizedName(qm::QMGeoCoordinateFormat::kDegreesMinutes);  // "degrees, minutes"
//   qm::localizedName(static_cast<qm::QMUtmCoordinateFormat>(7));   // "---"
//
// Names come from the library's string tables in the current locale. Thread-safe.

#ifndef QMCORE_GEO_COORDINATEFORMATS_HPP_
#define QMCORE_GEO_COORDINATEFORMATS_HPP_

#include <cstdint>
#include <span>
#include <string>

namespace qm {

enum class QMCoordinateType : std::intptr_t {
  kLatitudeLongitude = 0,
  kUTM = 1,
  kMGRS = 2,
};

enum class QMGeoCoordinateFormat : std::intptr_t {
  kDegrees = 0,                // 47.376900°
  kDegreesMinutes = 1,         // 47° 22.614'
  kDegreesMinutesSeconds = 2,  // 47° 22' 36.8"
};

enum class QMUtmCoordinateFormat : std::intptr_t {
  kHemisphere = 0,    // 32N
  kLatitudeBand = 1,  // 32T
};

// Every case of a choice list in display order: geographic, MGRS, UTM (not the code order);
// degrees, degrees and minutes, degrees, minutes and seconds; hemisphere, latitude band.
template <typename Enum>
std::span<const Enum> allCases();
template <>
std::span<const QMCoordinateType> allCases<QMCoordinateType>();
template <>
std::span<const QMGeoCoordinateFormat> allCases<QMGeoCoordinateFormat>();
template <>
std::span<const QMUtmCoordinateFormat> allCases<QMUtmCoordinateFormat>();

// Display names in the current locale. Geographic coordinates and the UTM formats are looked up
// in the string tables; "UTM" and "MGRS" are the same in every language; the angle notations are
// looked up and then lower-cased. A code without a case names itself "---".
std::string localizedName(QMCoordinateType type);
std::string localizedName(QMGeoCoordinateFormat format);
std::string localizedName(QMUtmCoordinateFormat format);

}  // namespace qm

#endif  // QMCORE_GEO_COORDINATEFORMATS_HPP_
