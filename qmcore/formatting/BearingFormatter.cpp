#include "qmcore/formatting/BearingFormatter.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/strings/LocalizedTextCache.hpp"

namespace qm {
namespace {

enum Letter : std::size_t { kNorth, kEast, kSouth, kWest, kLetterCount };
constexpr std::array<std::string_view, kLetterCount> kLetterKeys = {"N", "E", "S", "W"};

}  // namespace

std::string BearingFormatter::textForAzimuth(double azimuth) {
  if (!std::isfinite(azimuth)) return "";
  const double a = std::fmod(std::fabs(azimuth), 360.0);

  Letter from = kNorth;
  Letter towards = kEast;
  double angle = a;
  if (a >= 270.0) {
    towards = kWest;
    angle = 360.0 - a;
  } else if (a >= 180.0) {
    from = kSouth;
    towards = kWest;
    angle = a - 180.0;
  } else if (a >= 90.0) {
    from = kSouth;
    angle = 180.0 - a;
  }

  const double degrees = std::floor(angle);
  const double minutes = std::floor((angle - degrees) * 60.0);
  // Bearings are redrawn many times a second: each thread keeps the letters of its locale.
  thread_local LocalizedTextCache letterCache(kLetterKeys);
  const auto letters = letterCache.texts();
  return invariantFormat("%s%.0f°%.0f'%s", letters[from].c_str(), degrees, minutes,
                         letters[towards].c_str());
}

}  // namespace qm
