#include "qmcore/formatting/BearingFormatter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

TEST(BearingFormatter, QuadrantsLettersAndTruncatedMinutes) {
  const struct {
    double azimuth;
    const char* text;
  } cases[] = {
      {225.5, "S45°30'W"},
      {90, "S90°0'E"},  // a quadrant starts at its lower bound
      {89.999, "N89°59'E"},
      {180, "S0°0'W"},
      {179.999, "S0°0'E"},
      {270, "N90°0'W"},
      {359.99, "N0°0'W"},  // 0.01° is less than a minute
      {360, "N0°0'E"},
      {720.5, "N0°30'E"},
      // The sign is dropped, not folded to 360 - value.
      {-45, "N45°0'E"},
      {-359.99, "N0°0'W"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(BearingFormatter::textForAzimuth(c.azimuth), c.text) << c.azimuth;
  }
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(BearingFormatter::textForAzimuth(90), "S90°0'O");
}

TEST(BearingFormatter, NonFiniteAzimuthsGiveNoText) {
  for (const double azimuth : {std::nan(""), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(BearingFormatter::textForAzimuth(azimuth), "") << azimuth;
  }
}

}  // namespace
}  // namespace qm
