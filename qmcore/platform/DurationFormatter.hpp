// Spelled-out durations in the user's language, the stand-in for the phone platform's
// `NSDateComponentsFormatter` in its full units style with hours, minutes and seconds.
//
//   qm::fullDurationText(1, 5, 3);   // "1 hour, 5 minutes, 3 seconds" (en_US)
//   qm::fullDurationText(2, 0, 0);   // "2 hours": zero components are dropped
//   qm::fullDurationText(0, 0, 0);   // "0 seconds"
//
// Thread-safe. ICU's measure formatters are built once per locale and cached, so a locale
// change takes effect on the next call.

#ifndef QMCORE_PLATFORM_DURATIONFORMATTER_HPP_
#define QMCORE_PLATFORM_DURATIONFORMATTER_HPP_

#include <cstdint>
#include <string>
#include <string_view>

namespace qm {

// The components in words, joined by the locale's list pattern for units ("1 hour, 5
// minutes, 3 seconds"; German "1 Stunde, 5 Minuten und 3 Sekunden"). Components that are zero
// are left out; when all are, the result is the seconds ("0 seconds"). A negative component is
// written with its sign. `locale` empty means the current locale. An empty text when ICU
// fails (no locale data).
std::string fullDurationText(std::int64_t hours, std::int64_t minutes, std::int64_t seconds,
                             std::string_view locale = {});

}  // namespace qm

#endif  // QMCORE_PLATFORM_DURATIONFORMATTER_HPP_
