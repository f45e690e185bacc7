#include "qmcore/geo/CoordinateFormats.hpp"

#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {
namespace {

constexpr std::string_view kNoName = "---";

constexpr QMCoordinateType kCoordinateTypes[] = {QMCoordinateType::kLatitudeLongitude,
                                                 QMCoordinateType::kMGRS, QMCoordinateType::kUTM};
constexpr QMGeoCoordinateFormat kGeoFormats[] = {QMGeoCoordinateFormat::kDegrees,
                                                 QMGeoCoordinateFormat::kDegreesMinutes,
                                                 QMGeoCoordinateFormat::kDegreesMinutesSeconds};
constexpr QMUtmCoordinateFormat kUtmFormats[] = {QMUtmCoordinateFormat::kHemisphere,
                                                 QMUtmCoordinateFormat::kLatitudeBand};

}  // namespace

template <>
std::span<const QMCoordinateType> allCases<QMCoordinateType>() {
  return kCoordinateTypes;
}

template <>
std::span<const QMGeoCoordinateFormat> allCases<QMGeoCoordinateFormat>() {
  return kGeoFormats;
}

template <>
std::span<const QMUtmCoordinateFormat> allCases<QMUtmCoordinateFormat>() {
  return kUtmFormats;
}

std::string localizedName(QMCoordinateType type) {
  switch (type) {
    case QMCoordinateType::kLatitudeLongitude:
      return CoreStrings::CLSTRING("Latitude, Longitude");
    case QMCoordinateType::kUTM:
      return "UTM";
    case QMCoordinateType::kMGRS:
      return "MGRS";
  }
  return std::string(kNoName);
}

std::string localizedName(QMGeoCoordinateFormat format) {
  switch (format) {
    case QMGeoCoordinateFormat::kDegrees:
      return lowercaseString(CoreStrings::CLSTRING("Degrees"));
    case QMGeoCoordinateFormat::kDegreesMinutes:
      return lowercaseString(CoreStrings::CLSTRING("Dm"));
    case QMGeoCoordinateFormat::kDegreesMinutesSeconds:
      return lowercaseString(CoreStrings::CLSTRING("Dms"));
  }
  return std::string(kNoName);
}

std::string localizedName(QMUtmCoordinateFormat format) {
  switch (format) {
    case QMUtmCoordinateFormat::kHemisphere:
      return CoreStrings::CLSTRING("Hemisphere");
    case QMUtmCoordinateFormat::kLatitudeBand:
      return CoreStrings::CLSTRING("Latitude band");
  }
  return std::string(kNoName);
}

}  // namespace qm
