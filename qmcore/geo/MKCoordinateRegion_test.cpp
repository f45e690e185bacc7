#include "qmcore/geo/MKCoordinateRegion.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

using testing::kNaN;

TEST(MKCoordinateRegionTest, FitsTracks) {
  const struct {
    const char* what;
    std::vector<CLLocationCoordinate2D> track;
    MKCoordinateRegion expected;
  } cases[] = {
      {"one point gets the fixed span", {{47.5, 8.25}}, {{47.5, 8.25}, {1.0, 1.01}}},
      {"crossing the 180th meridian: centre 180 stays 180",
       {{0, 179}, {0, -179}},
       {{0, 180}, {0, 2}}},
      {"crossing east of centre: shifted centre beyond 180 comes back",
       {{-10, 170}, {10, -150}},
       {{0, -170}, {20, 40}}},
      {"all negative longitudes: both candidates agree, the plain one wins",
       {{1, -20}, {3, -10}},
       {{2, -15}, {2, 10}}},
      {"tie across the meridian at 180 wide", {{0, -90}, {0, 90}}, {{0, 0}, {0, 180}}},
      {"no margin: the box of the points", {{10, 10}, {12, 11}, {11, 14}}, {{11, 12}, {2, 4}}},
      {"minus zero is not negative", {{0, -0.0}, {0, 359}}, {{0, 179.5}, {0, 359}}},
  };
  for (const auto& c : cases) {
    const auto region = MKCoordinateRegion::fromCoordinates(c.track);
    ASSERT_TRUE(region.has_value()) << c.what;
    EXPECT_EQ(*region, c.expected) << c.what;
  }
  EXPECT_FALSE(MKCoordinateRegion::fromCoordinates({}).has_value());
}

TEST(MKCoordinateRegionTest, CentreIsMeasuredBackFromTheMaximum) {
  // (min + max) / 2 would be 0.30000000000000004 here; max - delta / 2 is not.
  const std::vector<CLLocationCoordinate2D> track{{0.1, 0.1}, {0.5, 0.5}};
  const auto region = MKCoordinateRegion::fromCoordinates(track);
  EXPECT_EQ(region->center.latitude, 0.5 - (0.5 - 0.1) * 0.5);
  EXPECT_EQ(region->span.latitudeDelta, 0.5 - 0.1);
}

TEST(MKCoordinateRegionTest, ANaNInEitherFieldOfAnyPointMakesTheRegionInvalid) {
  for (const std::size_t at : {0u, 1u, 2u}) {  // the first point and both lanes after it
    for (const CLLocationCoordinate2D bad : {CLLocationCoordinate2D{kNaN, 5}, {5, kNaN}}) {
      std::vector<CLLocationCoordinate2D> track{{1, 1}, {2, 2}, {3, 3}};
      track[at] = bad;
      EXPECT_FALSE(MKCoordinateRegion::fromCoordinates(track)->isValid()) << "NaN at " << at;
    }
  }
}

TEST(MKCoordinateRegionTest, ValidityLimits) {
  const struct {
    MKCoordinateRegion region;
    bool valid;
  } cases[] = {
      {{{0, 0}, {180, 360}}, true},       {{{-90, -180}, {1, 1}}, true},
      {{{0, 0}, {0, 1}}, false},          {{{0, 0}, {1, 0}}, false},
      {{{0, 0}, {180.000001, 1}}, false}, {{{0, 0}, {1, 360.000001}}, false},
      {{{90.000001, 0}, {1, 1}}, false},  {{{0, -180.000001}, {1, 1}}, false},
      {{{kNaN, 0}, {1, 1}}, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MKCoordinateRegionValidator::isValid(c.region), c.valid)
        << c.region.formattedDescription();
  }
  const MKCoordinateRegion region{{47.3769, -8.5417}, {0.0000125, 1.01}};
  EXPECT_EQ(region.formattedDescription(), "◎ 47.376900, -8.541700\n⇿ 0.000013° × 1.010000°");
}

}  // namespace
}  // namespace qm
