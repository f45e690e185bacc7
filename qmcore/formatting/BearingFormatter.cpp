#include "qmcore/formatting/BearingFormatter.hpp"

#include <cmath>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {

std::string BearingFormatter::textForAzimuth(double azimuth) {
  if (!std::isfinite(azimuth)) return "";
  const double a = std::fmod(std::fabs(azimuth), 360.0);

  const char* from = "N";
  const char* towards = "E";
  double angle = a;
  if (a >= 270.0) {
    towards = "W";
    angle = 360.0 - a;
  } else if (a >= 180.0) {
    from = "S";
    towards = "W";
    angle = a - 180.0;
  } else if (a >= 90.0) {
    from = "S";
    angle = 180.0 - a;
  }

  const double degrees = std::floor(angle);
  const double minutes = std::floor((angle - degrees) * 60.0);
  return invariantFormat("%s%.0f°%.0f'%s", CoreStrings::CLSTRING(from).c_str(), degrees, minutes,
                         CoreStrings::CLSTRING(towards).c_str());
}

}  // namespace qm
