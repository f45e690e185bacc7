// Reduces any text to printable ASCII, for places that take nothing else (file names sent to
// other systems, log lines, device names).
//
//   QMASCIIStringSanitizer::sanitizeForPrintableASCII("é abc", 2);   // " a"
//   QMASCIIStringSanitizer::sanitizeForPrintableASCII("a\tb\nc");    // "abc"
//
// The text is walked by user-perceived characters (extended grapheme clusters, as ICU finds
// them). A character is kept only when it is one Unicode scalar from 32 (space) to 126 (tilde);
// everything else is dropped, nothing transliterated: controls (tab, line feed, CR LF), DEL,
// non-ASCII letters, and letters carrying a combining mark ("e" followed by U+0301 goes as a
// whole, while "e" alone stays). Invalid UTF-8 bytes are characters of their own and dropped.
//
// Runs of ASCII are copied without ICU; only the characters next to non-ASCII text go through
// the cluster walk, so mostly-ASCII text costs little more than a copy.
// Thread-safe.

#ifndef QMCORE_PERSISTENCE_QMASCIISTRINGSANITIZER_HPP_
#define QMCORE_PERSISTENCE_QMASCIISTRINGSANITIZER_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qm {

class QMASCIIStringSanitizer {
 public:
  // The printable ASCII characters of `text`, in order; with `maxLength`, only the first
  // `maxLength` of them (the cut comes after filtering). A negative `maxLength` is a programmer
  // error and stops the program.
  static std::string sanitizeForPrintableASCII(std::string_view text,
                                               std::optional<std::int64_t> maxLength = {});
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_QMASCIISTRINGSANITIZER_HPP_
