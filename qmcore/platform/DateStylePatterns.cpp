#include "qmcore/platform/DateStylePatterns.hpp"

#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>

#include <map>
#include <memory>
#include <mutex>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

icu::DateFormat::EStyle icuStyle(DateStyle style) {
  switch (style) {
    case DateStyle::kShort:
      return icu::DateFormat::kShort;
    case DateStyle::kMedium:
      return icu::DateFormat::kMedium;
    case DateStyle::kLong:
      return icu::DateFormat::kLong;
    case DateStyle::kFull:
      return icu::DateFormat::kFull;
  }
  return icu::DateFormat::kMedium;
}

std::string lookUpPattern(DateStyle style, const std::string& locale) {
  const std::unique_ptr<icu::DateFormat> format(
      icu::DateFormat::createDateInstance(icuStyle(style), icu::Locale(locale.c_str())));
  const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
  if (simple == nullptr) return {};
  icu::UnicodeString pattern;
  simple->toPattern(pattern);
  return internal::toUtf8(pattern);
}

}  // namespace

std::string datePatternForStyle(DateStyle style, std::string_view locale) {
  static std::mutex mutex;
  static std::map<std::string, std::string, std::less<>> patterns;
  const std::string localeId = locale.empty() ? currentLocaleIdentifier() : std::string(locale);
  const std::string key = std::to_string(static_cast<int>(style)) + '|' + localeId;
  {
    const std::lock_guard lock(mutex);
    if (const auto it = patterns.find(key); it != patterns.end()) return it->second;
  }
  std::string pattern = lookUpPattern(style, localeId);
  const std::lock_guard lock(mutex);
  return patterns.emplace(key, std::move(pattern)).first->second;
}

}  // namespace qm
