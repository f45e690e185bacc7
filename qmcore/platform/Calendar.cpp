#include "qmcore/platform/Calendar.hpp"

#include <unicode/dtfmtsym.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <cmath>
#include <limits>
#include <mutex>
#include <type_traits>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

constexpr double kMillisecondsPerSecond = 1000.0;

std::optional<UDate> toUDate(Date date) {
  const double millis = date.timeIntervalSince1970() * kMillisecondsPerSecond;
  if (!std::isfinite(millis)) return std::nullopt;
  return millis;
}

Date fromUDate(UDate millis) { return Date::fromUnixSeconds(millis / kMillisecondsPerSecond); }

bool fitsInt32(std::int64_t value) {
  return value >= std::numeric_limits<int32_t>::min() &&
         value <= std::numeric_limits<int32_t>::max();
}

}  // namespace

// The ICU calendar keeps the date it works on in its fields, so every use sets the time first
// and holds the lock until it has read what it needs.
struct Calendar::Impl {
  std::string localeIdentifier;
  std::unique_ptr<icu::Calendar> calendar;
  mutable std::mutex mutex;

  // Runs `use` with the calendar set to `date`; absent when ICU fails.
  template <typename Use>
  std::optional<std::invoke_result_t<Use, icu::Calendar&, UErrorCode&>> at(Date date,
                                                                           Use use) const {
    const auto millis = toUDate(date);
    if (!millis) return std::nullopt;
    const std::lock_guard lock(mutex);
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(*millis, status);
    if (U_FAILURE(status)) return std::nullopt;
    auto result = use(*calendar, status);
    if (U_FAILURE(status)) return std::nullopt;
    return result;
  }
};

Calendar Calendar::gregorian() {
  return Calendar(currentLocaleIdentifier(), currentTimeZoneIdentifier());
}

Calendar::Calendar(std::string_view localeIdentifier, std::string_view timeZoneIdentifier)
    : impl_(std::make_unique<Impl>()) {
  const std::unique_ptr<icu::TimeZone> zone(
      icu::TimeZone::createTimeZone(internal::fromUtf8(timeZoneIdentifier)));
  const icu::Locale locale(std::string(localeIdentifier).c_str());
  UErrorCode status = U_ZERO_ERROR;
  auto calendar = std::make_unique<icu::GregorianCalendar>(*zone, locale, status);
  if (U_FAILURE(status)) {
    // No data for the locale: the root locale's calendar still does the arithmetic.
    status = U_ZERO_ERROR;
    calendar = std::make_unique<icu::GregorianCalendar>(*zone, icu::Locale::getRoot(), status);
  }
  impl_->localeIdentifier = localeIdentifier;
  impl_->calendar = std::move(calendar);
}

Calendar::Calendar(const Calendar& other) : impl_(std::make_unique<Impl>()) {
  const std::lock_guard lock(other.impl_->mutex);
  impl_->localeIdentifier = other.impl_->localeIdentifier;
  impl_->calendar.reset(other.impl_->calendar->clone());
}

Calendar& Calendar::operator=(const Calendar& other) {
  if (this != &other) {
    Calendar copy(other);
    impl_.swap(copy.impl_);
  }
  return *this;
}

Calendar::~Calendar() = default;

int Calendar::firstWeekday() const {
  const std::lock_guard lock(impl_->mutex);
  UErrorCode status = U_ZERO_ERROR;
  return impl_->calendar->getFirstDayOfWeek(status);
}

void Calendar::setFirstWeekday(int weekday) {
  if (weekday < UCAL_SUNDAY || weekday > UCAL_SATURDAY) return;
  const std::lock_guard lock(impl_->mutex);
  impl_->calendar->setFirstDayOfWeek(static_cast<UCalendarDaysOfWeek>(weekday));
}

std::optional<Calendar::Components> Calendar::components(Date date) const {
  return impl_->at(date, [](icu::Calendar& c, UErrorCode& status) {
    return Components{.year = c.get(UCAL_EXTENDED_YEAR, status),
                      .month = c.get(UCAL_MONTH, status) + 1,
                      .day = c.get(UCAL_DATE, status),
                      .hour = c.get(UCAL_HOUR_OF_DAY, status),
                      .minute = c.get(UCAL_MINUTE, status),
                      .second = c.get(UCAL_SECOND, status)};
  });
}

std::optional<Date> Calendar::date(const Components& components) const {
  const std::lock_guard lock(impl_->mutex);
  icu::Calendar& c = *impl_->calendar;
  c.clear();
  c.set(UCAL_EXTENDED_YEAR, components.year);
  c.set(UCAL_MONTH, components.month - 1);
  c.set(UCAL_DATE, components.day);
  c.set(UCAL_HOUR_OF_DAY, components.hour);
  c.set(UCAL_MINUTE, components.minute);
  c.set(UCAL_SECOND, components.second);
  UErrorCode status = U_ZERO_ERROR;
  const UDate millis = c.getTime(status);
  if (U_FAILURE(status)) return std::nullopt;
  return fromUDate(millis);
}

std::optional<int> Calendar::weekday(Date date) const {
  return impl_->at(
      date, [](icu::Calendar& c, UErrorCode& status) { return c.get(UCAL_DAY_OF_WEEK, status); });
}

std::optional<Date> Calendar::dateByAddingDays(std::int64_t days, Date date) const {
  if (!fitsInt32(days)) return std::nullopt;
  return impl_->at(date, [days](icu::Calendar& c, UErrorCode& status) {
    c.add(UCAL_DATE, static_cast<int32_t>(days), status);
    return fromUDate(c.getTime(status));
  });
}

std::optional<Date> Calendar::dateByAddingWeeks(std::int64_t weeks, Date date) const {
  if (!fitsInt32(weeks)) return std::nullopt;
  return impl_->at(date, [weeks](icu::Calendar& c, UErrorCode& status) {
    c.add(UCAL_WEEK_OF_YEAR, static_cast<int32_t>(weeks), status);
    return fromUDate(c.getTime(status));
  });
}

std::optional<std::int64_t> Calendar::daysBetween(Date start, Date end) const {
  const auto endMillis = toUDate(end);
  if (!endMillis) return std::nullopt;
  return impl_->at(start, [&](icu::Calendar& c, UErrorCode& status) {
    return static_cast<std::int64_t>(c.fieldDifference(*endMillis, UCAL_DATE, status));
  });
}

std::optional<Calendar::WeekOfYear> Calendar::weekOfYear(Date date) const {
  return impl_->at(date, [](icu::Calendar& c, UErrorCode& status) {
    return WeekOfYear{.yearForWeekOfYear = c.get(UCAL_YEAR_WOY, status),
                      .weekOfYear = c.get(UCAL_WEEK_OF_YEAR, status)};
  });
}

std::optional<Date> Calendar::startOfWeek(const WeekOfYear& week) const {
  const std::lock_guard lock(impl_->mutex);
  icu::Calendar& c = *impl_->calendar;
  UErrorCode status = U_ZERO_ERROR;
  c.clear();
  c.set(UCAL_YEAR_WOY, week.yearForWeekOfYear);
  c.set(UCAL_WEEK_OF_YEAR, week.weekOfYear);
  c.set(UCAL_DAY_OF_WEEK, c.getFirstDayOfWeek(status));
  const UDate millis = c.getTime(status);
  if (U_FAILURE(status)) return std::nullopt;
  return fromUDate(millis);
}

std::vector<std::string> Calendar::standaloneMonthSymbols() const {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DateFormatSymbols symbols(icu::Locale(impl_->localeIdentifier.c_str()), "gregorian",
                                       status);
  if (U_FAILURE(status)) return {};
  int32_t count = 0;
  const icu::UnicodeString* months =
      symbols.getMonths(count, icu::DateFormatSymbols::STANDALONE, icu::DateFormatSymbols::WIDE);
  std::vector<std::string> names;
  for (int32_t i = 0; i < count; ++i) names.push_back(internal::toUtf8(months[i]));
  return names;
}

}  // namespace qm
