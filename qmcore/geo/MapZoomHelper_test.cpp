#include "qmcore/geo/MapZoomHelper.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <optional>

#include "qmcore/geo/GeoToCoreGraphicsHelper.hpp"
#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

using testing::kInf;
using testing::kNaN;
constexpr double kPi = 3.141592653589793;
constexpr double kAtZoom0 = 156543.03392;

double cosDegrees(double degrees) { return std::cos(degrees * kPi / 180.0); }

TEST(MapZoomHelperTest, MetersPerPixelClampsLatitudeAndZoom) {
  const struct {
    double latitude;
    std::int64_t zoom;
    double expected;
  } cases[] = {
      {0, 1, kAtZoom0 / 2},
      {0, 24, kAtZoom0 / 16777216.0},
      {0, 25, kAtZoom0 / 16777216.0},
      {0, -3, kAtZoom0},
      {60, 0, cosDegrees(60) * kAtZoom0},
      {89, 3, cosDegrees(85.0511) * kAtZoom0 / 8},
      {-89, 3, cosDegrees(-85.0511) * kAtZoom0 / 8},
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::metersPerPixel(c.latitude, c.zoom), c.expected)
        << "latitude " << c.latitude << ", zoom " << c.zoom;
  }
  EXPECT_EQ(MapZoomHelper::metersPerPixel(0, 0), 156543.03392);
  EXPECT_TRUE(std::isnan(MapZoomHelper::metersPerPixel(kNaN, 0)));
}

TEST(MapZoomHelperTest, PitchesAreRaisedToAHundredthOfADegreeForwardAndOfARadianBackward) {
  // Forward, the pitch is at least 0.01 degrees; backward, at least 0.01 radians (the map view
  // first raises it to 0.01 degrees, which changes nothing more).
  constexpr double kDegree = kPi / 180;
  const struct {
    double pitch;
    double altitudeRadians, zoomRadians;
  } cases[] = {
      {45, 45 * kDegree, 45 * kDegree}, {0.6, 0.6 * kDegree, 0.6 * kDegree},
      {0.5, 0.5 * kDegree, 0.01},       {0.01, 0.01 * kDegree, 0.01},
      {0.005, 0.01 * kDegree, 0.01},    {-30, 0.01 * kDegree, 0.01},
  };
  const double resolution = MapZoomHelper::metersPerPixel(0, 10);
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::altitude(10, 0, c.pitch, {300, 600}),
                     resolution * 600 / (2 * std::tan(c.altitudeRadians)))
        << c.pitch;
    EXPECT_DOUBLE_EQ(MapZoomHelper::zoomLevelValue(1000, 0, c.pitch, {100, 100}),
                     std::log2(kAtZoom0 / (2 * 1000 * std::tan(c.zoomRadians) / 100)))
        << c.pitch;
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{5000, c.pitch, 30, 800}),
              MapZoomHelper::zoomLevel(5000, 30, c.pitch, {400, 800}))
        << c.pitch;
  }
}

TEST(MapZoomHelperTest, NoViewportHeightOrPositiveAltitudeGivesZero) {
  for (const double height : {0.0, -1.0, kNaN}) {
    EXPECT_EQ(MapZoomHelper::altitude(10, 0, 45, {100, height}), 0.0);
    EXPECT_EQ(MapZoomHelper::zoomLevel(1000, 0, 45, {100, height}), 0);
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{1000, 45, 0, height}), 0);
  }
  for (const double altitude : {0.0, -100.0, kNaN}) {
    EXPECT_EQ(MapZoomHelper::zoomLevel(altitude, 0, 45, {100, 100}), 0) << altitude;
  }
  EXPECT_EQ(MapZoomHelper::zoomLevel(1000, 0, kNaN, {100, 100}), 0);
}

TEST(MapZoomHelperTest, ZoomLevelRoundsHalvesAwayFromZeroWithoutLimits) {
  const struct {
    double zoomValue;
    std::int64_t expected;
  } cases[] = {{10.4, 10}, {10.6, 11}, {-0.4, 0}, {-0.6, -1}, {26.2, 26}, {40.0, 40}};
  for (const auto& c : cases) {
    // The altitude at which a viewport of height 2 at a pitch of 45 degrees shows exactly
    // `zoomValue` at the equator.
    const double altitude = kAtZoom0 / std::pow(2.0, c.zoomValue) / std::tan(45 * kPi / 180.0);
    EXPECT_EQ(MapZoomHelper::zoomLevel(altitude, 0, 45, {10, 2}), c.expected) << c.zoomValue;
  }
}

TEST(MapZoomHelperTest, OnlyTheAltitudeClampsTheLatitude) {
  EXPECT_DOUBLE_EQ(MapZoomHelper::altitude(5, 89, 45, {300, 600}),
                   MapZoomHelper::altitude(5, 85.0511, 45, {300, 600}));
  // At 89 degrees the forward conversion would use 85.0511; the backward one uses 89.
  EXPECT_DOUBLE_EQ(MapZoomHelper::zoomLevelValue(1000, 89, 45, {100, 100}),
                   std::log2(cosDegrees(89) * kAtZoom0 / (2 * 1000 * std::tan(kPi / 4) / 100)));
}

TEST(MapZoomHelperDeathTest, AZoomThatIsNoIntegerStops) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(1000, kNaN, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(kInf, 0, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(1000, 180, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(MKMapView{1000, 45, kNaN, 100}), "not a 64-bit integer");
}

TEST(GeoToCoreGraphicsHelperTest, MapsContainedPointsAndRefusesTheRest) {
  const MKMapRect rect{{100, 200}, {100, 50}};
  const struct {
    const char* what;
    MKMapRect rect;
    MKMapPoint point;
    std::optional<CGPoint> expected;
  } cases[] = {
      {"origin belongs to the rectangle", rect, {100, 200}, CGPoint{0, 0}},
      {"x and y scale separately", rect, {125, 240}, CGPoint{50, 320}},
      {"far x edge is outside", rect, {200, 225}, std::nullopt},
      {"far y edge is outside", rect, {150, 250}, std::nullopt},
      {"left of the rectangle", rect, {99.9, 225}, std::nullopt},
      {"above the rectangle", rect, {150, 199}, std::nullopt},
      {"zero width", {{100, 200}, {0, 50}}, {100, 200}, std::nullopt},
      {"zero height", {{100, 200}, {100, 0}}, {100, 200}, std::nullopt},
      {"NaN size", {{100, 200}, {kNaN, 50}}, {150, 225}, std::nullopt},
      {"NaN point", rect, {kNaN, 225}, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GeoToCoreGraphicsHelper::cgPoint(c.point, c.rect, {200, 400}), c.expected) << c.what;
  }
}

}  // namespace
}  // namespace qm
