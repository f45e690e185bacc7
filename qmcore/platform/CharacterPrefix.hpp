// Prefix tests on whole user-perceived characters, the stand-in for the phone platform's
// `hasPrefix`, which compares canonically equivalent texts as equal and never splits a
// character:
//
//   qm::hasCharacterPrefix("Cafe Central", "Cafe");        // true
//   qm::hasCharacterPrefix("Cafe\u0301 Central", "Cafe");  // false: the e carries an accent
//   qm::hasCharacterPrefix("Caf\u00e9", "Cafe\u0301");     // true: the same text, composed
//
// Invalid UTF-8 is read with each bad sequence as U+FFFD. Thread-safe.

#ifndef QMCORE_PLATFORM_CHARACTERPREFIX_HPP_
#define QMCORE_PLATFORM_CHARACTERPREFIX_HPP_

#include <string_view>

namespace qm {

// Whether `text` begins with the characters of `prefix`. An empty prefix begins every text.
bool hasCharacterPrefix(std::string_view text, std::string_view prefix);

}  // namespace qm

#endif  // QMCORE_PLATFORM_CHARACTERPREFIX_HPP_
