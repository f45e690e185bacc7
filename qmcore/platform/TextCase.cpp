#include "qmcore/platform/TextCase.hpp"

#include <unicode/locid.h>

#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {

std::string lowercaseString(std::string_view text) {
  icu::UnicodeString s = internal::fromUtf8(text);
  return internal::toUtf8(s.toLower(icu::Locale::getRoot()));
}

std::string uppercaseString(std::string_view text) {
  icu::UnicodeString s = internal::fromUtf8(text);
  return internal::toUtf8(s.toUpper(icu::Locale::getRoot()));
}

}  // namespace qm
