#include "qmcore/formatting/BearingFormatter.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {
namespace {

enum Letter : std::size_t { kNorth, kEast, kSouth, kWest, kLetterCount };
constexpr std::array<const char*, kLetterCount> kLetterKeys = {"N", "E", "S", "W"};

struct Letters {
  std::string locale;  // empty until filled: no current locale is empty
  std::array<std::string, kLetterCount> texts;
};

// The localized letters of the current locale, valid until this thread's next call. Each
// thread keeps the letters of the locale it last used: the string tables are fixed, so a
// letter changes only with the locale.
const Letters& currentLetters() {
  thread_local Letters cache;
  std::string locale = currentLocaleIdentifier();
  if (locale != cache.locale) {
    for (std::size_t i = 0; i < kLetterCount; ++i) {
      cache.texts[i] = CoreStrings::CLSTRING(kLetterKeys[i], locale);
    }
    cache.locale = std::move(locale);
  }
  return cache;
}

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
  const Letters& letters = currentLetters();
  return invariantFormat("%s%.0f°%.0f'%s", letters.texts[from].c_str(), degrees, minutes,
                         letters.texts[towards].c_str());
}

}  // namespace qm
