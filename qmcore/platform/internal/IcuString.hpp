// Conversions between UTF-8 and ICU's UTF-16 strings, for the platform layer's ICU wrappers.
// Nothing outside qmcore/platform includes ICU headers.

#ifndef QMCORE_PLATFORM_INTERNAL_ICUSTRING_HPP_
#define QMCORE_PLATFORM_INTERNAL_ICUSTRING_HPP_

#include <unicode/unistr.h>

#include <string>
#include <string_view>

namespace qm::internal {

inline icu::UnicodeString fromUtf8(std::string_view text) {
  return icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

inline std::string toUtf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_ICUSTRING_HPP_
