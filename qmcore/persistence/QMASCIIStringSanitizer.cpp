#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"

#include <string>
#include <vector>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/UnicodeText.hpp"

namespace qm {
namespace {

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
bool isPrintable(char c) { return c >= 32 && c <= 126; }

// Appends the kept characters of a piece of text whose both ends are cluster boundaries.
void walkClusters(std::string_view piece, std::string& out) {
  for (const std::string& cluster : graphemeClusters(piece)) {
    if (cluster.size() == 1 && isPrintable(cluster[0])) out += cluster[0];
  }
}

}  // namespace

std::string QMASCIIStringSanitizer::sanitizeForPrintableASCII(
    std::string_view text, std::optional<std::int64_t> maxLength) {
  if (maxLength && *maxLength < 0) {
    fatalError("sanitizeForPrintableASCII: maxLength must not be negative");
  }
  std::string out;
  out.reserve(text.size());
  // Between two ASCII characters there is always a cluster boundary (CR LF aside, whose both
  // halves are dropped anyway), so an ASCII character is a cluster of its own unless a
  // neighbour is non-ASCII: a combining mark after it, or a prepended mark before it. ASCII
  // runs are therefore copied directly, and each stretch of non-ASCII text goes to ICU with
  // the ASCII character before it and every character up to the next pair of ASCII characters.
  const std::size_t n = text.size();
  std::size_t i = 0;
  while (i < n) {
    const std::size_t runStart = i;
    while (i < n && isAscii(text[i])) ++i;
    // The last ASCII character before non-ASCII text may belong to the next cluster.
    const std::size_t copyEnd = i < n && i > runStart ? i - 1 : i;
    for (std::size_t k = runStart; k < copyEnd; ++k) {
      if (isPrintable(text[k])) out += text[k];
    }
    if (i >= n) break;
    std::size_t end = i;
    while (end < n && !(isAscii(text[end]) && (end + 1 == n || isAscii(text[end + 1])))) ++end;
    end = end < n ? end + 1 : n;
    walkClusters(text.substr(copyEnd, end - copyEnd), out);
    i = end;
    if (maxLength && out.size() >= static_cast<std::uint64_t>(*maxLength)) break;
  }
  if (maxLength && out.size() > static_cast<std::uint64_t>(*maxLength)) {
    out.resize(static_cast<std::size_t>(*maxLength));
  }
  return out;
}

}  // namespace qm
