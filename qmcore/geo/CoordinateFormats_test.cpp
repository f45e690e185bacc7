#include "qmcore/geo/CoordinateFormats.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

template <typename Enum>
std::vector<std::string> names() {
  std::vector<std::string> result;
  for (const Enum value : allCases<Enum>()) result.push_back(localizedName(value));
  return result;
}

TEST(CoordinateFormatsTest, NamesInDisplayOrderAndTheLanguage) {
  const testing::ScopedLocale locale("de_DE");
  // MGRS is listed before UTM; only the angle notations are lower-cased.
  EXPECT_EQ(names<QMCoordinateType>(), (std::vector<std::string>{"Breite, Länge", "MGRS", "UTM"}));
  EXPECT_EQ(names<QMGeoCoordinateFormat>(),
            (std::vector<std::string>{"grad", "grad, minuten", "grad, minuten, sekunden"}));
  EXPECT_EQ(names<QMUtmCoordinateFormat>(),
            (std::vector<std::string>{"Hemisphäre", "Breitenband"}));
  // Codes without a case name themselves with dashes.
  EXPECT_EQ(localizedName(static_cast<QMCoordinateType>(3)), "---");
  EXPECT_EQ(localizedName(static_cast<QMGeoCoordinateFormat>(-1)), "---");
  EXPECT_EQ(localizedName(static_cast<QMUtmCoordinateFormat>(2)), "---");
}

}  // namespace
}  // namespace qm
