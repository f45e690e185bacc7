#include "qmcore/platform/DisplayOrientation.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

using O = DisplayOrientation;

TEST(DisplayOrientation, CodesMapToTheirOrientationsAndStrayCodesToUnknown) {
  const struct {
    int code;
    O expected;
  } cases[] = {
      {0, O::kUnknown},       {1, O::kPortrait},       {2, O::kPortraitUpsideDown},
      {3, O::kLandscapeLeft}, {4, O::kLandscapeRight}, {5, O::kUnknown},
      {-1, O::kUnknown},      {1 << 30, O::kUnknown},
  };
  for (const auto& c : cases) EXPECT_EQ(displayOrientationFromCode(c.code), c.expected) << c.code;
}

class CurrentDisplayOrientation : public ::testing::Test {
 protected:
  void SetUp() override { saved_ = currentDisplayOrientation(); }
  void TearDown() override { setCurrentDisplayOrientation(saved_); }
  O saved_ = O::kUnknown;
};

TEST_F(CurrentDisplayOrientation, TheCurrentSourceFollowsTheHostAndRejectsStrayValues) {
  const DisplayOrientationSource& source = DisplayOrientationSource::current();
  for (const O o : {O::kLandscapeLeft, O::kPortraitUpsideDown, O::kUnknown, O::kLandscapeRight}) {
    setCurrentDisplayOrientation(o);
    EXPECT_EQ(currentDisplayOrientation(), o);
    EXPECT_EQ(source.displayOrientation(), o);
  }
  setCurrentDisplayOrientation(static_cast<O>(7));
  EXPECT_EQ(source.displayOrientation(), O::kUnknown);
  EXPECT_EQ(&DisplayOrientationSource::current(), &source);
}

TEST_F(CurrentDisplayOrientation, AFixedSourceIgnoresTheProcessValue) {
  FixedDisplayOrientation fixed(O::kLandscapeLeft);
  setCurrentDisplayOrientation(O::kPortrait);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeLeft);
  fixed.setDisplayOrientation(O::kLandscapeRight);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeRight);
  EXPECT_EQ(currentDisplayOrientation(), O::kPortrait);
  fixed.setDisplayOrientation(static_cast<O>(-3));
  EXPECT_EQ(fixed.displayOrientation(), O::kUnknown);
  EXPECT_EQ(FixedDisplayOrientation(static_cast<O>(9)).displayOrientation(), O::kUnknown);
}

}  // namespace
}  // namespace qm
