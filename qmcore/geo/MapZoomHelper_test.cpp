#include "qmcore/geo/MapZoomHelper.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

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
      {0, 0, kAtZoom0},
      {0, 1, kAtZoom0 / 2},
      {0, 24, kAtZoom0 / 16777216.0},
      {0, 25, kAtZoom0 / 16777216.0},
      {0, 30, kAtZoom0 / 16777216.0},
      {0, -3, kAtZoom0},
      {0, std::numeric_limits<std::int64_t>::min(), kAtZoom0},
      {60, 0, cosDegrees(60) * kAtZoom0},
      {85.0511, 3, cosDegrees(85.0511) * kAtZoom0 / 8},
      {89, 3, cosDegrees(85.0511) * kAtZoom0 / 8},
      {-89, 3, cosDegrees(-85.0511) * kAtZoom0 / 8},
      {-85.0511, 0, cosDegrees(-85.0511) * kAtZoom0},
      {-kInf, 0, cosDegrees(-85.0511) * kAtZoom0},
      {kInf, 0, cosDegrees(85.0511) * kAtZoom0},
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::metersPerPixel(c.latitude, c.zoom), c.expected)
        << "latitude " << c.latitude << ", zoom " << c.zoom;
  }
  EXPECT_EQ(MapZoomHelper::metersPerPixel(0, 0), 156543.03392);
  EXPECT_TRUE(std::isnan(MapZoomHelper::metersPerPixel(kNaN, 0)));
}

TEST(MapZoomHelperTest, AltitudeClampsThePitchInDegrees) {
  const CGSize viewport{300, 600};
  const double resolution = MapZoomHelper::metersPerPixel(0, 10);
  const struct {
    double pitch;
    double effectiveDegrees;
  } cases[] = {{45, 45}, {0.02, 0.02}, {0.01, 0.01}, {0.005, 0.01}, {0, 0.01}, {-30, 0.01}};
  for (const auto& c : cases) {
    const double expected = resolution * 600 / (2 * std::tan(c.effectiveDegrees * kPi / 180.0));
    EXPECT_DOUBLE_EQ(MapZoomHelper::altitude(10, 0, c.pitch, viewport), expected)
        << "pitch " << c.pitch;
  }
  // The latitude is clamped as in metersPerPixel.
  EXPECT_DOUBLE_EQ(MapZoomHelper::altitude(5, 89, 45, viewport),
                   MapZoomHelper::altitude(5, 85.0511, 45, viewport));
}

TEST(MapZoomHelperTest, NoViewportHeightGivesZero) {
  for (const double height : {0.0, -1.0, kNaN}) {
    EXPECT_EQ(MapZoomHelper::altitude(10, 0, 45, {100, height}), 0.0);
    EXPECT_EQ(MapZoomHelper::zoomLevel(1000, 0, 45, {100, height}), 0);
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{1000, 45, 0, height}), 0);
  }
}

TEST(MapZoomHelperTest, ZoomLevelRoundTripsTheAltitude) {
  for (std::int64_t zoom = 0; zoom <= 24; ++zoom) {
    for (const double latitude : {0.0, 47.0, -60.0}) {
      const double height = MapZoomHelper::altitude(zoom, latitude, 30, {390, 844});
      EXPECT_EQ(MapZoomHelper::zoomLevel(height, latitude, 30, {390, 844}), zoom)
          << "zoom " << zoom << ", latitude " << latitude;
    }
  }
}

// The altitude at which a viewport of height 2 at a pitch of 45 degrees shows exactly
// `zoomValue` at the equator.
double altitudeForZoomValue(double zoomValue) {
  return kAtZoom0 / std::pow(2.0, zoomValue) / std::tan(45 * kPi / 180.0);
}

TEST(MapZoomHelperTest, ZoomLevelRoundsHalvesAwayFromZeroWithoutLimits) {
  const struct {
    double zoomValue;
    std::int64_t expected;
  } cases[] = {
      {10.4, 10}, {10.6, 11}, {-0.4, 0}, {-0.6, -1}, {-2.6, -3}, {26.2, 26}, {40.0, 40},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MapZoomHelper::zoomLevel(altitudeForZoomValue(c.zoomValue), 0, 45, {10, 2}),
              c.expected)
        << c.zoomValue;
  }
}

TEST(MapZoomHelperTest, ZoomLevelDoesNotClampTheLatitude) {
  // At 89 degrees the forward conversion would use 85.0511; the backward one uses 89.
  const double height = 1000;
  const double m = 2 * height * std::tan(45 * kPi / 180.0) / 100;
  const std::int64_t expected = std::llround(std::log2(cosDegrees(89) * kAtZoom0 / m));
  EXPECT_EQ(MapZoomHelper::zoomLevel(height, 89, 45, {100, 100}), expected);
  EXPECT_NE(MapZoomHelper::zoomLevel(height, 89, 45, {100, 100}),
            MapZoomHelper::zoomLevel(height, 85.0511, 45, {100, 100}));
}

TEST(MapZoomHelperTest, ZoomLevelClampsThePitchInRadians) {
  // 0.5 degrees is 0.0087 radians, below 0.01 radians: it counts as 0.01 radians. The forward
  // conversion would have kept 0.5 degrees.
  const double height = 1000;
  const auto zoomAt = [&](double pitchRadians) {
    return std::log2(kAtZoom0 / (2 * height * std::tan(pitchRadians) / 100));
  };
  const struct {
    double pitchDegrees;
    double effectiveRadians;
  } cases[] = {{0.5, 0.01}, {0, 0.01}, {-10, 0.01}, {0.6, 0.6 * kPi / 180}, {30, 30 * kPi / 180}};
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::zoomLevelValue(height, 0, c.pitchDegrees, {100, 100}),
                     zoomAt(c.effectiveRadians))
        << c.pitchDegrees;
  }
}

TEST(MapZoomHelperTest, MapViewClampsThePitchTwice) {
  const double height = 5000;
  const struct {
    double pitchDegrees;
    double effectiveRadians;
  } cases[] = {
      // 0.005 degrees: raised to 0.01 degrees, then to 0.01 radians.
      {0.005, 0.01},
      {0.5, 0.01},
      {1.0, 1.0 * kPi / 180},
      {60, 60 * kPi / 180},
  };
  for (const auto& c : cases) {
    const double m = 2 * height * std::tan(c.effectiveRadians) / 800;
    const std::int64_t expected = std::llround(std::log2(cosDegrees(30) * kAtZoom0 / m));
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{height, c.pitchDegrees, 30, 800}), expected)
        << c.pitchDegrees;
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{height, c.pitchDegrees, 30, 800}),
              MapZoomHelper::zoomLevel(height, 30, c.pitchDegrees, {400, 800}));
  }
}

TEST(MapZoomHelperTest, NoPositiveAltitudeGivesZero) {
  for (const double altitude : {0.0, -100.0, kNaN}) {
    EXPECT_EQ(MapZoomHelper::zoomLevel(altitude, 0, 45, {100, 100}), 0) << altitude;
  }
  EXPECT_EQ(MapZoomHelper::zoomLevel(1000, 0, kNaN, {100, 100}), 0);
}

TEST(MapZoomHelperDeathTest, AZoomThatIsNoIntegerStops) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(1000, kNaN, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(kInf, 0, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(1000, 180, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(MKMapView{1000, 45, kNaN, 100}), "not a 64-bit integer");
  EXPECT_FALSE(std::isfinite(MapZoomHelper::zoomLevelValue(kInf, 0, 45, {100, 100})));
}

}  // namespace
}  // namespace qm
