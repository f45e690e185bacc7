#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"

#include <algorithm>
#include <string>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/UnicodeText.hpp"

namespace qm {
namespace {

bool isAscii(unsigned char c) { return c < 0x80; }
bool isPrintable(unsigned char c) { return c >= 32 && c <= 126; }

// Decodes the UTF-8 character at `at` (not ASCII): its code point and length, or U+FFFD and 1
// for an ill-formed byte (overlong forms, surrogates and values beyond U+10FFFF included), as
// ICU reads them: a well-formed sequence is never swallowed by the bad bytes before it.
char32_t decodeAt(std::string_view text, std::size_t at, std::size_t& length) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  length = 1;
  std::size_t count = 0;
  char32_t c = 0;
  char32_t minimum = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    count = 1, c = lead & 0x1F, minimum = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    count = 2, c = lead & 0x0F, minimum = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    count = 3, c = lead & 0x07, minimum = 0x10000;
  } else {
    return 0xFFFD;
  }
  if (at + count >= text.size()) return 0xFFFD;
  for (std::size_t i = 1; i <= count; ++i) {
    const unsigned char next = byte(at + i);
    if ((next & 0xC0) != 0x80) return 0xFFFD;
    c = (c << 6) | (next & 0x3F);
  }
  if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0xFFFD;
  length = count + 1;
  return c;
}

}  // namespace

std::string QMASCIIStringSanitizer::sanitizeForPrintableASCII(
    std::string_view text, std::optional<std::int64_t> maxLength) {
  if (maxLength && *maxLength < 0) {
    fatalError("sanitizeForPrintableASCII: maxLength must not be negative");
  }
  // Every non-ASCII character is dropped (it is not ASCII, or belongs to a cluster of several
  // scalars). A printable ASCII character is a cluster of its own, and kept, unless a
  // neighbour joins it: a mark after it that extends it (Extend, ZWJ, SpacingMark), or a
  // prepended mark before it. Between two ASCII characters the rules always break (CR LF
  // aside, both of which are dropped anyway), so only the characters next to non-ASCII text
  // need ICU's properties, and ASCII runs are copied as they are.
  const std::size_t limit = maxLength ? static_cast<std::size_t>(std::min<std::uint64_t>(
                                            static_cast<std::uint64_t>(*maxLength), text.size()))
                                      : text.size();
  std::string out;
  out.reserve(limit);
  const std::size_t n = text.size();
  bool afterPrepend = false;
  std::size_t i = 0;
  while (i < n && out.size() < limit) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (!isAscii(c)) {
      std::size_t length = 1;
      afterPrepend = prefixesFollowingCharacter(decodeAt(text, i, length));
      i += length;
      continue;
    }
    if (!afterPrepend) {
      // A run of printable ASCII: all kept but maybe its last character, which a mark after
      // the run may take.
      std::size_t end = i;
      while (end < n && isPrintable(static_cast<unsigned char>(text[end]))) ++end;
      if (end > i) {
        std::size_t keep = end;
        if (end < n && !isAscii(static_cast<unsigned char>(text[end]))) {
          std::size_t length = 1;
          if (extendsPrecedingCharacter(decodeAt(text, end, length))) --keep;
        }
        out.append(text.data() + i, std::min(keep - i, limit - out.size()));
        i = end;
        continue;
      }
    }
    // A control character, or a character taken by the prepended mark before it.
    afterPrepend = false;
    ++i;
  }
  return out;
}

}  // namespace qm
