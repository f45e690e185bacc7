#include "qmcore/geo/CoordinateFormats.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

TEST(CoordinateFormatsTest, NamesInDisplayOrderAndTheLanguage) {
  const testing::ScopedLocale locale("de_DE");
  std::vector<std::string> names;
  for (const auto type : allCases<QMCoordinateType>()) names.push_back(localizedName(type));
  for (const auto format : allCases<QMGeoCoordinateFormat>())
    names.push_back(localizedName(format));
  for (const auto format : allCases<QMUtmCoordinateFormat>())
    names.push_back(localizedName(format));
  // MGRS is listed before UTM; only the angle notations are lower-cased.
  EXPECT_EQ(names,
            (std::vector<std::string>{"Breite, Länge", "MGRS", "UTM", "grad", "grad, minuten",
                                      "grad, minuten, sekunden", "Hemisphäre", "Breitenband"}));
  // Codes without a case name themselves with dashes.
  EXPECT_EQ(localizedName(static_cast<QMCoordinateType>(3)), "---");
  EXPECT_EQ(localizedName(static_cast<QMGeoCoordinateFormat>(-1)), "---");
  EXPECT_EQ(localizedName(static_cast<QMUtmCoordinateFormat>(2)), "---");
}

}  // namespace
}  // namespace qm
