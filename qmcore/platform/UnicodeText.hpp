// Unicode-aware text operations on UTF-8 strings, the stand-ins for the phone platform's string
// methods that know about user-perceived characters and letter case.
//
//   qm::graphemeClusters("ab");          // {"a", "b"}
//   qm::graphemeClusters("e\u0301");     // {"e\u0301"}: a letter and its accent stay together
//   qm::capitalizedString("cURRENCY x"); // "Currency X"
//
// The case mapping is the locale-independent one, as the platform's `capitalizedString` is
// (plain lower and upper case are in "qmcore/platform/TextCase.hpp"). Invalid UTF-8 is read with
// each bad sequence as U+FFFD.
// All functions are thread-safe.

#ifndef QMCORE_PLATFORM_UNICODETEXT_HPP_
#define QMCORE_PLATFORM_UNICODETEXT_HPP_

#include <string>
#include <string_view>
#include <vector>

namespace qm {

// The user-perceived characters (extended grapheme clusters) of `text`, in order: a flag
// emoji, a letter with combining marks or a CR LF pair each come back as one element.
std::vector<std::string> graphemeClusters(std::string_view text);

// How a character joins its neighbours in extended grapheme clusters, by its Unicode
// Grapheme_Cluster_Break property (ICU's data): a combining mark, a joiner or a spacing mark
// (Extend, ZWJ, SpacingMark) attaches to the character before it; a prepended mark (Prepend)
// to the character after it, unless that one is a control. Other characters join a neighbour
// only when that neighbour says so (or by rules among non-ASCII characters: Hangul, flags,
// emoji sequences, Indic conjuncts).
bool extendsPrecedingCharacter(char32_t c);
bool prefixesFollowingCharacter(char32_t c);

// Each word with its first letter in title case and the rest in lower case.
std::string capitalizedString(std::string_view text);

}  // namespace qm

#endif  // QMCORE_PLATFORM_UNICODETEXT_HPP_
