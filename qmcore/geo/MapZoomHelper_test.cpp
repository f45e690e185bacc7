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
constexpr double kDegree = kPi / 180;
constexpr double kAtZoom0 = 156543.03392;

double cosDegrees(double degrees) { return std::cos(degrees * kPi / 180.0); }

TEST(MapZoomHelperTest, MetersPerPixelClampsLatitudeAndZoom) {
  const struct {
    double latitude;
    std::int64_t zoom;
    double expected;
  } cases[] = {
      {0, -3, kAtZoom0},
      {0, 1, kAtZoom0 / 2},
      {0, 24, kAtZoom0 / 16777216.0},
      {0, 25, kAtZoom0 / 16777216.0},
      {60, 0, cosDegrees(60) * kAtZoom0},
      {89, 3, cosDegrees(85.0511) * kAtZoom0 / 8},
      {-89, 3, cosDegrees(-85.0511) * kAtZoom0 / 8},
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::metersPerPixel(c.latitude, c.zoom), c.expected)
        << "latitude " << c.latitude << ", zoom " << c.zoom;
  }
}

TEST(MapZoomHelperTest, PitchesAreRaisedToAHundredthOfADegreeForwardAndOfARadianBackward) {
  // Forward, the pitch is at least 0.01 degrees; backward, at least 0.01 radians (the map view
  // first raises it to 0.01 degrees, which changes nothing more).
  const struct {
    double pitch;
    double altitudeRadians, zoomRadians;
  } cases[] = {
      {0.6, 0.6 * kDegree, 0.6 * kDegree},
      {0.5, 0.5 * kDegree, 0.01},
      {0.01, 0.01 * kDegree, 0.01},
      {0.005, 0.01 * kDegree, 0.01},
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
  // Backward, the latitude is not clamped: at 89 degrees the forward conversion uses 85.0511.
  EXPECT_DOUBLE_EQ(MapZoomHelper::zoomLevelValue(1000, 89, 45, {100, 100}),
                   std::log2(cosDegrees(89) * kAtZoom0 / (2 * 1000 * std::tan(kPi / 4) / 100)));
}

TEST(MapZoomHelperTest, ZoomLevelsRoundHalvesAwayFromZeroWithoutLimitsAndAreZeroWithoutAView) {
  // The altitude at which a viewport of height 2 at a pitch of 45 degrees shows `zoom`.
  const auto showing = [](double zoom) { return kAtZoom0 / std::pow(2.0, zoom); };
  const struct {
    double altitude, pitch, height;
    std::int64_t expected;
  } cases[] = {
      {showing(10.6), 45, 2, 11},
      {showing(-0.4), 45, 2, 0},
      {showing(-0.6), 45, 2, -1},
      {showing(26.2), 45, 2, 26},
      {1000, 45, 0, 0},
      {1000, 45, kNaN, 0},
      {0, 45, 100, 0},
      {kNaN, 45, 100, 0},
      {1000, kNaN, 100, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.altitude);
    EXPECT_EQ(MapZoomHelper::zoomLevel(c.altitude, 0, c.pitch, {10, c.height}), c.expected);
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{c.altitude, c.pitch, 0, c.height}), c.expected);
  }
  EXPECT_EQ(MapZoomHelper::altitude(10, 0, 45, {100, 0}), 0.0);
  EXPECT_EQ(MapZoomHelper::altitude(10, 0, 45, {100, kNaN}), 0.0);
}

TEST(MapZoomHelperDeathTest, AZoomThatIsNoIntegerStops) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(1000, kNaN, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(kInf, 0, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(MKMapView{1000, 45, kNaN, 100}), "not a 64-bit integer");
}

TEST(GeoToCoreGraphicsHelperTest, MapsContainedPointsAndRefusesTheRest) {
  const MKMapRect rect{{100, 200}, {100, 50}};
  const struct {
    const char* what;
    MKMapPoint point;
    std::optional<CGPoint> expected;
  } cases[] = {
      {"origin belongs to the rectangle", {100, 200}, CGPoint{0, 0}},
      {"x and y scale separately", {125, 240}, CGPoint{50, 320}},
      {"far x edge is outside", {200, 225}, std::nullopt},
      {"far y edge is outside", {150, 250}, std::nullopt},
      {"left of the rectangle", {99.9, 225}, std::nullopt},
      {"above the rectangle", {150, 199}, std::nullopt},
      {"NaN point", {kNaN, 225}, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GeoToCoreGraphicsHelper::cgPoint(c.point, rect, {200, 400}), c.expected) << c.what;
  }
  EXPECT_EQ(GeoToCoreGraphicsHelper::cgPoint({100, 200}, {{100, 200}, {0, 50}}, {1, 1}),
            std::nullopt);
}

}  // namespace
}  // namespace qm
