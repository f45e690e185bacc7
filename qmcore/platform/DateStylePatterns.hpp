// The date patterns of a locale's standard date styles, the stand-in for the phone platform's
// `NSDateFormatterShortStyle` ... `NSDateFormatterFullStyle`. Combine the pattern with a
// `DateFormatter` ("qmcore/platform/DateFormatter.hpp") to format dates in that style.
//
//   qm::datePatternForStyle(qm::DateStyle::kMedium, "en_US");  // "MMM d, y": "Nov 16, 2026"
//   qm::datePatternForStyle(qm::DateStyle::kMedium, "de_DE");  // "dd.MM.y": "16.11.2026"
//
// Thread-safe. Patterns are looked up once per locale and style and then kept.

#ifndef QMCORE_PLATFORM_DATESTYLEPATTERNS_HPP_
#define QMCORE_PLATFORM_DATESTYLEPATTERNS_HPP_

#include <string>
#include <string_view>

namespace qm {

enum class DateStyle { kShort, kMedium, kLong, kFull };

// The pattern of a date without a time of day in `style`. `locale` empty means the current
// locale. A locale without data gets the root locale's pattern.
std::string datePatternForStyle(DateStyle style, std::string_view locale = {});

}  // namespace qm

#endif  // QMCORE_PLATFORM_DATESTYLEPATTERNS_HPP_
