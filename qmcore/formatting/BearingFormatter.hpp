// Quadrant bearings: an azimuth written as the angle from the north-south line towards east or
// west, as surveyors and hikers read it.
//
//   qm::BearingFormatter::textForAzimuth(225.5);  // "S45°30'W"
//   qm::BearingFormatter::textForAzimuth(90);     // "S90°0'E"
//
// The letters are looked up in the library's string table for the current locale (German:
// "N45°0'O"); the numbers are always whole degrees and whole minutes, truncated.
//
// Thread-safe.

#ifndef QMCORE_FORMATTING_BEARINGFORMATTER_HPP_
#define QMCORE_FORMATTING_BEARINGFORMATTER_HPP_

#include <string>

namespace qm {

class BearingFormatter {
 public:
  BearingFormatter() = delete;

  // The quadrant bearing of `azimuth` (degrees clockwise from north). The azimuth is taken
  // modulo 360 after dropping its sign, so -45 reads as 45 ("N45°0'E"), not as 315. Minutes
  // are truncated: 359.99 gives "N0°0'W". An infinite or NaN azimuth gives "".
  static std::string textForAzimuth(double azimuth);
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_BEARINGFORMATTER_HPP_
