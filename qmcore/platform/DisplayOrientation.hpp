// The orientation of the app's display, the stand-in for the phone platform's status-bar
// interface orientation.
//
// Compass headings are measured against the top of the device; a screen shows them against
// the top of the display, so the library needs to know how the display is turned. The host
// app reports every change with `setCurrentDisplayOrientation`; the library reads it through a
// `DisplayOrientationSource`, normally `DisplayOrientationSource::current()`. Tests (and hosts
// with more than one display) pass a `FixedDisplayOrientation` of their own instead.
//
//   qm::setCurrentDisplayOrientation(qm::DisplayOrientation::kLandscapeLeft);
//   qm::DisplayOrientationSource::current().displayOrientation();  // kLandscapeLeft
//
// Thread-safe: the current value and a `FixedDisplayOrientation` may be read and set from any
// thread.

#ifndef QMCORE_PLATFORM_DISPLAYORIENTATION_HPP_
#define QMCORE_PLATFORM_DISPLAYORIENTATION_HPP_

#include <atomic>

namespace qm {

// The platform's codes, kept as the enumerators' values.
enum class DisplayOrientation : int {
  kUnknown = 0,
  kPortrait = 1,
  kPortraitUpsideDown = 2,
  kLandscapeLeft = 3,
  kLandscapeRight = 4,
};

// The orientation with the platform code `code`; a code outside 0-4 gives kUnknown.
DisplayOrientation displayOrientationFromCode(int code);

// The process-wide orientation as the host last set it; kUnknown until it does.
DisplayOrientation currentDisplayOrientation();

// Sets the process-wide orientation. A value outside the enumeration is stored as kUnknown.
void setCurrentDisplayOrientation(DisplayOrientation orientation);

// Where the library reads the display orientation from.
class DisplayOrientationSource {
 public:
  virtual ~DisplayOrientationSource() = default;

  virtual DisplayOrientation displayOrientation() const = 0;

  // The source that answers `currentDisplayOrientation()`; lives for the whole process.
  static const DisplayOrientationSource& current();
};

// A source with a value of its own, independent of the process-wide one.
class FixedDisplayOrientation final : public DisplayOrientationSource {
 public:
  explicit FixedDisplayOrientation(DisplayOrientation orientation = DisplayOrientation::kUnknown);

  DisplayOrientation displayOrientation() const override;
  // A value outside the enumeration is stored as kUnknown.
  void setDisplayOrientation(DisplayOrientation orientation);

 private:
  std::atomic<DisplayOrientation> orientation_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_DISPLAYORIENTATION_HPP_
