// Unicode case mapping of UTF-8 texts, the stand-in for the phone platform's `lowercaseString`
// and `uppercaseString`.
//
// The mapping is the locale-independent one (Unicode's default case mapping), so a text maps the
// same way whatever the current locale is: "Fläche" -> "fläche", "Straße" -> "STRASSE".
// Invalid UTF-8 sequences come back as U+FFFD. Thread-safe.

#ifndef QMCORE_PLATFORM_TEXTCASE_HPP_
#define QMCORE_PLATFORM_TEXTCASE_HPP_

#include <string>
#include <string_view>

namespace qm {

std::string lowercaseString(std::string_view text);
std::string uppercaseString(std::string_view text);

}  // namespace qm

#endif  // QMCORE_PLATFORM_TEXTCASE_HPP_
