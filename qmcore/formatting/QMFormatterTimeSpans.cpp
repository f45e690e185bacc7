// Time-span texts of QMFormatter: clock texts, titles and spoken durations of tick counts.

#include <cmath>
#include <limits>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/DurationFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMTimeUnit.hpp"

namespace qm {
namespace {

// trunc(value) as an int, clamped to the int range; 0 for NaN. (Converting an out-of-range
// double to int directly is undefined.)
int truncatedInt(double value) {
  if (std::isnan(value)) return 0;
  if (value <= static_cast<double>(std::numeric_limits<int>::min())) {
    return std::numeric_limits<int>::min();
  }
  if (value >= static_cast<double>(std::numeric_limits<int>::max())) {
    return std::numeric_limits<int>::max();
  }
  return static_cast<int>(value);
}

// The magnitude of a span as a clock shows it, and its sign text.
struct ClockTime {
  const char* sign;
  int hours;
  int minutes;
  int seconds;
};

// Truncates at every step: 59.9 gives 00:00:59, -61 gives -00:01:01.
ClockTime clockTimeForTicks(double ticks) {
  const double magnitude = std::fabs(ticks);
  const int hours = truncatedInt(magnitude / kSecondsPerHour);
  const double rest = std::fma(-static_cast<double>(hours), kSecondsPerHour, magnitude);
  const int minutes = truncatedInt(rest / kSecondsPerMinute);
  const int seconds = truncatedInt(rest - minutes * kSecondsPerMinute);
  return ClockTime{
      .sign = ticks < 0 ? "-" : "", .hours = hours, .minutes = minutes, .seconds = seconds};
}

}  // namespace

std::string QMFormatter::textForTimerForMinute(int minute, int second) {
  return invariantFormat("%02d:%02d", minute, second);
}

std::string QMFormatter::hmsTextForTicks(double ticks) {
  const ClockTime t = clockTimeForTicks(ticks);
  return invariantFormat("%s%02d:%02d:%02d", t.sign, t.hours, t.minutes, t.seconds);
}

std::string QMFormatter::timeAnnouncementTextForTicks(double ticks) {
  return hmsTextForTicks(ticks);
}

std::string QMFormatter::timeAnnouncementTextForTicks2(double ticks) {
  const ClockTime t = clockTimeForTicks(ticks);
  std::int64_t hours = t.hours;
  std::int64_t minutes = t.minutes;
  std::int64_t seconds = t.seconds;
  // The sign goes on the first component that is shown.
  if (*t.sign != '\0') {
    std::int64_t& first = hours != 0 ? hours : minutes != 0 ? minutes : seconds;
    first = -first;
  }
  return fullDurationText(hours, minutes, seconds);
}

std::string QMFormatter::timeTitleTextForTicks(double ticks) {
  const ClockTime t = clockTimeForTicks(ticks);
  return invariantFormat("%s%02d%s%02d%s%02d%s", t.sign, t.hours,
                         QMTimeUnit::localizedHourAbbreviation().c_str(), t.minutes,
                         QMTimeUnit::localizedMinuteAbbreviation().c_str(), t.seconds,
                         QMTimeUnit::localizedSecondAbbreviation().c_str());
}

std::string QMFormatter::hmTextForTicks(double ticks) {
  const ClockTime t = clockTimeForTicks(ticks);
  return invariantFormat("%s%02d:%02d", t.sign, t.hours, t.minutes);
}

std::string QMFormatter::textForTicksSkipHours(double ticks) {
  const int minutes = truncatedInt(ticks / kSecondsPerMinute);
  const int seconds = truncatedInt(ticks - minutes * kSecondsPerMinute);
  return textForTimerForMinute(minutes, seconds);
}

std::string QMFormatter::textPerTicks(double ticks) {
  const int days = truncatedInt(ticks / kSecondsPerDay);
  double rest = ticks - days * kSecondsPerDay;
  const int hours = truncatedInt(rest / kSecondsPerHour);
  rest -= hours * kSecondsPerHour;
  const int minutes = truncatedInt(rest / kSecondsPerMinute);
  rest -= minutes * kSecondsPerMinute;
  const int seconds = truncatedInt(rest);
  if (days < 1) return invariantFormat("%02d:%02d:%02d", hours, minutes, seconds);
  // The days stand after the clock time, as the recording screens show them.
  const std::string dayWord = CoreStrings::CLSTRING(days == 1 ? "day" : "days");
  return invariantFormat("%02d:%02d:%02d, %d %s", hours, minutes, seconds, days, dayWord.c_str());
}

}  // namespace qm
