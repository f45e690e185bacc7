#include "qmcore/platform/DateFormatter.hpp"

#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/parsepos.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <vector>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

// ICU's Gregorian calendar switches to the Julian calendar before 1582; moving the switch to
// the earliest representable date makes it proleptic.
constexpr UDate kProlepticGregorianChange = -1.0e300;

// Beyond this many distinct (locale, time zone, pattern) keys the cache starts afresh, so that
// callers passing ever new patterns cannot grow it without bound.
constexpr std::size_t kMaxCachedPatterns = 256;

// Idle formatters kept per key; more than this only happens when that many threads use one
// pattern at the same moment, and the extra ones are dropped when they come back.
constexpr std::size_t kMaxIdlePerPattern = 8;

std::unique_ptr<icu::SimpleDateFormat> makePrototype(const std::string& pattern,
                                                     const std::string& localeId,
                                                     const std::string& timeZoneId) {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(internal::fromUtf8(pattern),
                                                        icu::Locale(localeId.c_str()), status);
  if (U_FAILURE(status)) return nullptr;
  std::unique_ptr<icu::Calendar> calendar(format->getCalendar()->clone());
  if (auto* gregorian = dynamic_cast<icu::GregorianCalendar*>(calendar.get())) {
    gregorian->setGregorianChange(kProlepticGregorianChange, status);
  }
  format->adoptCalendar(calendar.release());
  format->adoptTimeZone(icu::TimeZone::createTimeZone(internal::fromUtf8(timeZoneId)));
  // Strict parsing also turns off ICU's whitespace, numeric and partial-literal leniencies.
  format->setLenient(false);
  return format;
}

// The ICU formatters of one (locale, time zone, pattern). A `SimpleDateFormat` keeps working
// state in its calendar, so one instance must not be used by two threads at once: each call
// borrows an idle clone of the prototype (or makes one) and gives it back afterwards. With one
// thread this is the same instance every time; cloning happens only when threads overlap.
class FormatterPool {
 public:
  explicit FormatterPool(std::unique_ptr<icu::SimpleDateFormat> prototype)
      : prototype_(std::move(prototype)) {}

  // Returns the borrowed formatter to the pool when it goes out of scope.
  class Lease {
   public:
    Lease(FormatterPool& pool, std::unique_ptr<icu::SimpleDateFormat> format)
        : pool_(pool), format_(std::move(format)) {}
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease() { pool_.giveBack(std::move(format_)); }

    // Null when ICU rejected the pattern.
    icu::SimpleDateFormat* get() const { return format_.get(); }

   private:
    FormatterPool& pool_;
    std::unique_ptr<icu::SimpleDateFormat> format_;
  };

  Lease borrow() {
    const std::lock_guard lock(mutex_);
    if (!idle_.empty()) {
      std::unique_ptr<icu::SimpleDateFormat> format = std::move(idle_.back());
      idle_.pop_back();
      return Lease(*this, std::move(format));
    }
    if (prototype_ == nullptr) return Lease(*this, nullptr);
    return Lease(*this, std::unique_ptr<icu::SimpleDateFormat>(prototype_->clone()));
  }

 private:
  void giveBack(std::unique_ptr<icu::SimpleDateFormat> format) {
    if (format == nullptr) return;
    const std::lock_guard lock(mutex_);
    if (idle_.size() < kMaxIdlePerPattern) idle_.push_back(std::move(format));
  }

  std::mutex mutex_;
  const std::unique_ptr<const icu::SimpleDateFormat> prototype_;  // never used to format
  std::vector<std::unique_ptr<icu::SimpleDateFormat>> idle_;
};

class FormatterCache {
 public:
  std::shared_ptr<FormatterPool> get(const DateFormatter& formatter) {
    const std::string localeId =
        formatter.locale().empty() ? currentLocaleIdentifier() : formatter.locale();
    const std::string timeZoneId =
        formatter.timeZone().empty() ? currentTimeZoneIdentifier() : formatter.timeZone();
    // The unit separator cannot occur in locale or time zone identifiers.
    std::string key = localeId;
    key += '\x1f';
    key += timeZoneId;
    key += '\x1f';
    key += formatter.pattern();
    {
      const std::shared_lock lock(mutex_);
      if (const auto it = pools_.find(key); it != pools_.end()) return it->second;
    }
    auto pool =
        std::make_shared<FormatterPool>(makePrototype(formatter.pattern(), localeId, timeZoneId));
    const std::unique_lock lock(mutex_);
    if (pools_.size() >= kMaxCachedPatterns) pools_.clear();
    return pools_.emplace(std::move(key), std::move(pool)).first->second;
  }

 private:
  std::shared_mutex mutex_;
  std::map<std::string, std::shared_ptr<FormatterPool>, std::less<>> pools_;
};

FormatterCache& formatterCache() {
  static FormatterCache cache;
  return cache;
}

}  // namespace

std::string DateFormatter::format(Date date) const {
  const double seconds = date.timeIntervalSince1970();
  if (!std::isfinite(seconds)) return {};
  const std::shared_ptr<FormatterPool> pool = formatterCache().get(*this);
  const FormatterPool::Lease lease = pool->borrow();
  if (lease.get() == nullptr) return {};
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString text;
  lease.get()->format(seconds * 1000.0, text, nullptr, status);
  if (U_FAILURE(status)) return {};
  return internal::toUtf8(text);
}

std::optional<Date> DateFormatter::parse(std::string_view text) const {
  const std::shared_ptr<FormatterPool> pool = formatterCache().get(*this);
  const FormatterPool::Lease lease = pool->borrow();
  if (lease.get() == nullptr) return std::nullopt;
  const icu::UnicodeString source = internal::fromUtf8(text);
  icu::ParsePosition position(0);
  const UDate millis = lease.get()->parse(source, position);
  if (position.getErrorIndex() >= 0 || position.getIndex() != source.length()) {
    return std::nullopt;
  }
  return Date::fromUnixSeconds(millis / 1000.0);
}

}  // namespace qm
