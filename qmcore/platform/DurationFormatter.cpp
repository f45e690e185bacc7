#include "qmcore/platform/DurationFormatter.hpp"

#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>

#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

// Measure formatters by locale. ICU does not promise that one may format from two threads at
// once, so the cache's lock is held while formatting; the texts are short.
class MeasureFormatCache {
 public:
  template <typename Use>
  std::string withFormatter(const std::string& locale, Use use) {
    const std::lock_guard lock(mutex_);
    auto it = formats_.find(locale);
    if (it == formats_.end()) {
      UErrorCode status = U_ZERO_ERROR;
      auto format = std::make_unique<icu::MeasureFormat>(icu::Locale(locale.c_str()),
                                                         UMEASFMT_WIDTH_WIDE, status);
      if (U_FAILURE(status)) return {};
      it = formats_.emplace(locale, std::move(format)).first;
    }
    return use(*it->second);
  }

 private:
  std::mutex mutex_;
  std::map<std::string, std::unique_ptr<icu::MeasureFormat>, std::less<>> formats_;
};

MeasureFormatCache& measureFormatCache() {
  static MeasureFormatCache cache;
  return cache;
}

}  // namespace

std::string fullDurationText(std::int64_t hours, std::int64_t minutes, std::int64_t seconds,
                             std::string_view locale) {
  const std::string localeId = locale.empty() ? currentLocaleIdentifier() : std::string(locale);
  UErrorCode status = U_ZERO_ERROR;
  std::vector<icu::Measure> measures;
  const auto add = [&](std::int64_t amount, icu::MeasureUnit* adoptedUnit) {
    // The Measure adopts the unit whatever happens, so it is made even when unused.
    icu::Measure measure(icu::Formattable(static_cast<int64_t>(amount)), adoptedUnit, status);
    if (amount != 0 && U_SUCCESS(status)) measures.push_back(measure);
  };
  add(hours, icu::MeasureUnit::createHour(status));
  add(minutes, icu::MeasureUnit::createMinute(status));
  add(seconds, icu::MeasureUnit::createSecond(status));
  if (U_SUCCESS(status) && measures.empty()) {
    measures.emplace_back(icu::Formattable(static_cast<int64_t>(0)),
                          icu::MeasureUnit::createSecond(status), status);
  }
  if (U_FAILURE(status)) return {};
  return measureFormatCache().withFormatter(localeId, [&](const icu::MeasureFormat& format) {
    icu::UnicodeString text;
    icu::FieldPosition position(icu::FieldPosition::DONT_CARE);
    UErrorCode formatStatus = U_ZERO_ERROR;
    format.formatMeasures(measures.data(), static_cast<int32_t>(measures.size()), text, position,
                          formatStatus);
    return U_SUCCESS(formatStatus) ? internal::toUtf8(text) : std::string();
  });
}

}  // namespace qm
