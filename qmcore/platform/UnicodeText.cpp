#include "qmcore/platform/UnicodeText.hpp"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>

#include <memory>

#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

// Break iterators keep their position and text, so each thread has its own; building one
// reads ICU's rule data and costs more than a short text's iteration.
icu::BreakIterator* characterIterator() {
  thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> created(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) created.reset();
    return created;
  }();
  return iterator.get();
}

}  // namespace

std::vector<std::string> graphemeClusters(std::string_view text) {
  std::vector<std::string> clusters;
  const icu::UnicodeString input = internal::fromUtf8(text);
  icu::BreakIterator* iterator = characterIterator();
  if (iterator == nullptr) {
    // No rule data: fall back to code points rather than lose the text.
    for (int32_t i = 0; i < input.length(); i = input.moveIndex32(i, 1)) {
      clusters.push_back(internal::toUtf8(input.tempSubStringBetween(i, input.moveIndex32(i, 1))));
    }
    return clusters;
  }
  iterator->setText(input);
  int32_t start = iterator->first();
  for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE;
       start = end, end = iterator->next()) {
    clusters.push_back(internal::toUtf8(input.tempSubStringBetween(start, end)));
  }
  // The iterator keeps a reference to its text; leave it on one that outlives this call.
  static const icu::UnicodeString kEmpty;
  iterator->setText(kEmpty);
  return clusters;
}

bool extendsPrecedingCharacter(char32_t c) {
  const int32_t kind = u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_GRAPHEME_CLUSTER_BREAK);
  return kind == U_GCB_EXTEND || kind == U_GCB_ZWJ || kind == U_GCB_SPACING_MARK;
}

bool prefixesFollowingCharacter(char32_t c) {
  return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_GRAPHEME_CLUSTER_BREAK) ==
         U_GCB_PREPEND;
}

std::string capitalizedString(std::string_view text) {
  icu::UnicodeString s = internal::fromUtf8(text);
  // A null iterator makes ICU use a word break iterator of the given locale.
  s.toTitle(nullptr, icu::Locale::getRoot());
  return internal::toUtf8(s);
}

}  // namespace qm
