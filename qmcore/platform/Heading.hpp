// A compass reading, the stand-in for the phone platform's heading object.
//
// Both headings are in degrees clockwise from north, relative to the top of the device (not of
// the display: `UnitsProvider::orientationCorrectedHeading` turns them). A plain value type.

#ifndef QMCORE_PLATFORM_HEADING_HPP_
#define QMCORE_PLATFORM_HEADING_HPP_

namespace qm {

struct Heading {
  // Against geographic north.
  double trueHeading;
  // Against magnetic north.
  double magneticHeading;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_HEADING_HPP_
