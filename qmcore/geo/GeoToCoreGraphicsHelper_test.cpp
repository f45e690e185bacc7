#include "qmcore/geo/GeoToCoreGraphicsHelper.hpp"

#include <gtest/gtest.h>

#include <optional>

#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

using testing::kInf;
using testing::kNaN;

TEST(GeoToCoreGraphicsHelperTest, MapsContainedPointsAndRefusesTheRest) {
  const MKMapRect rect{{100, 200}, {100, 50}};
  const CGSize view{200, 400};
  const struct {
    const char* what;
    MKMapRect rect;
    MKMapPoint point;
    std::optional<CGPoint> expected;
  } cases[] = {
      {"centre", rect, {150, 225}, CGPoint{100, 200}},
      {"origin belongs to the rectangle", rect, {100, 200}, CGPoint{0, 0}},
      {"x and y scale separately", rect, {125, 240}, CGPoint{50, 320}},
      {"far x edge is outside", rect, {200, 225}, std::nullopt},
      {"far y edge is outside", rect, {150, 250}, std::nullopt},
      {"left of the rectangle", rect, {99.9, 225}, std::nullopt},
      {"above the rectangle", rect, {150, 199}, std::nullopt},
      {"zero width", {{100, 200}, {0, 50}}, {100, 200}, std::nullopt},
      {"zero height", {{100, 200}, {100, 0}}, {100, 200}, std::nullopt},
      {"zero rectangle", {}, {0, 0}, std::nullopt},
      {"negative width", {{100, 200}, {-100, 50}}, {50, 225}, std::nullopt},
      {"NaN size", {{100, 200}, {kNaN, 50}}, {150, 225}, std::nullopt},
      {"NaN point", rect, {kNaN, 225}, std::nullopt},
      {"infinite point", rect, {kInf, 225}, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GeoToCoreGraphicsHelper::cgPoint(c.point, c.rect, view), c.expected) << c.what;
  }
}

}  // namespace
}  // namespace qm
