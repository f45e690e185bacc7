#include "qmcore/platform/DisplayOrientation.hpp"

namespace qm {
namespace {

// Keeps values that came through a cast from an arbitrary integer out of the stored state.
DisplayOrientation checked(DisplayOrientation orientation) {
  return displayOrientationFromCode(static_cast<int>(orientation));
}

std::atomic<DisplayOrientation>& processOrientation() {
  static std::atomic<DisplayOrientation> orientation{DisplayOrientation::kUnknown};
  return orientation;
}

class ProcessDisplayOrientation final : public DisplayOrientationSource {
 public:
  DisplayOrientation displayOrientation() const override { return currentDisplayOrientation(); }
};

}  // namespace

DisplayOrientation displayOrientationFromCode(int code) {
  switch (code) {
    case 1:
      return DisplayOrientation::kPortrait;
    case 2:
      return DisplayOrientation::kPortraitUpsideDown;
    case 3:
      return DisplayOrientation::kLandscapeLeft;
    case 4:
      return DisplayOrientation::kLandscapeRight;
    default:
      return DisplayOrientation::kUnknown;
  }
}

DisplayOrientation currentDisplayOrientation() { return processOrientation().load(); }

void setCurrentDisplayOrientation(DisplayOrientation orientation) {
  processOrientation().store(checked(orientation));
}

const DisplayOrientationSource& DisplayOrientationSource::current() {
  static const ProcessDisplayOrientation source;
  return source;
}

FixedDisplayOrientation::FixedDisplayOrientation(DisplayOrientation orientation)
    : orientation_(checked(orientation)) {}

DisplayOrientation FixedDisplayOrientation::displayOrientation() const {
  return orientation_.load();
}

void FixedDisplayOrientation::setDisplayOrientation(DisplayOrientation orientation) {
  orientation_.store(checked(orientation));
}

}  // namespace qm
