#include "qmcore/geo/CoordinateFormats.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qmcore/geo/CoordinateRecords.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

template <typename Enum>
std::vector<std::intptr_t> codes() {
  std::vector<std::intptr_t> result;
  for (const Enum value : allCases<Enum>()) result.push_back(static_cast<std::intptr_t>(value));
  return result;
}

template <typename Enum>
std::vector<std::string> names() {
  std::vector<std::string> result;
  for (const Enum value : allCases<Enum>()) result.push_back(localizedName(value));
  return result;
}

TEST(CoordinateFormatsTest, DisplayOrderAndCodes) {
  // MGRS (2) is listed before UTM (1).
  EXPECT_EQ(codes<QMCoordinateType>(), (std::vector<std::intptr_t>{0, 2, 1}));
  EXPECT_EQ(codes<QMGeoCoordinateFormat>(), (std::vector<std::intptr_t>{0, 1, 2}));
  EXPECT_EQ(codes<QMUtmCoordinateFormat>(), (std::vector<std::intptr_t>{0, 1}));
}

TEST(CoordinateFormatsTest, NamesPerLanguage) {
  const struct {
    const char* locale;
    std::vector<std::string> types, geoFormats, utmFormats;
  } cases[] = {
      {"en_US",
       {"Latitude, Longitude", "MGRS", "UTM"},
       {"degrees", "degrees, minutes", "degrees, minutes, seconds"},
       {"Hemisphere", "Latitude band"}},
      // Lower-casing applies to the angle notations only, whatever the language.
      {"de_DE",
       {"Breite, Länge", "MGRS", "UTM"},
       {"grad", "grad, minuten", "grad, minuten, sekunden"},
       {"Hemisphäre", "Breitenband"}},
  };
  for (const auto& c : cases) {
    const testing::ScopedLocale locale(c.locale);
    EXPECT_EQ(names<QMCoordinateType>(), c.types) << c.locale;
    EXPECT_EQ(names<QMGeoCoordinateFormat>(), c.geoFormats) << c.locale;
    EXPECT_EQ(names<QMUtmCoordinateFormat>(), c.utmFormats) << c.locale;
  }
}

TEST(CoordinateFormatsTest, CodesWithoutACaseNameThemselvesDashes) {
  for (const std::intptr_t code : {-1, 3, 100}) {
    EXPECT_EQ(localizedName(static_cast<QMCoordinateType>(code)), "---") << code;
    EXPECT_EQ(localizedName(static_cast<QMGeoCoordinateFormat>(code)), "---") << code;
  }
  for (const std::intptr_t code : {-1, 2, 100}) {
    EXPECT_EQ(localizedName(static_cast<QMUtmCoordinateFormat>(code)), "---") << code;
  }
}

TEST(CoordinateRecordsTest, StartValues) {
  const CoordinateContainer container({47.5, -8.25}, QMCoordinateType::kMGRS);
  EXPECT_EQ(container.geoCoordinate, (CLLocationCoordinate2D{47.5, -8.25}));
  EXPECT_EQ(container.targetCoordinateType, QMCoordinateType::kMGRS);
  EXPECT_EQ(container.component1, 0.0);
  EXPECT_EQ(container.component2, 0.0);
  EXPECT_EQ(container.zone, std::nullopt);
  const MGRSCoordinates mgrs;
  EXPECT_FALSE(mgrs.isValid);
  EXPECT_EQ(mgrs.zone, 0u);
}

}  // namespace
}  // namespace qm
