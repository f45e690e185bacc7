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

TEST(DisplayOrientation, SourcesFollowTheirOwnSetterAndRejectStrayValues) {
  const O saved = currentDisplayOrientation();
  FixedDisplayOrientation fixed(O::kLandscapeLeft);
  setCurrentDisplayOrientation(O::kPortraitUpsideDown);
  EXPECT_EQ(DisplayOrientationSource::current().displayOrientation(), O::kPortraitUpsideDown);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeLeft);
  fixed.setDisplayOrientation(O::kLandscapeRight);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeRight);
  EXPECT_EQ(currentDisplayOrientation(), O::kPortraitUpsideDown);

  setCurrentDisplayOrientation(static_cast<O>(7));
  fixed.setDisplayOrientation(static_cast<O>(-3));
  EXPECT_EQ(DisplayOrientationSource::current().displayOrientation(), O::kUnknown);
  EXPECT_EQ(fixed.displayOrientation(), O::kUnknown);
  EXPECT_EQ(FixedDisplayOrientation(static_cast<O>(9)).displayOrientation(), O::kUnknown);
  setCurrentDisplayOrientation(saved);
}

}  // namespace
}  // namespace qm
