#include "qmcore/platform/CharacterPrefix.hpp"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>

#include <memory>

#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

// Composed form, so that canonically equivalent spellings compare equal code unit by code unit.
icu::UnicodeString composed(std::string_view text) {
  const icu::UnicodeString input = internal::fromUtf8(text);
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
  if (U_FAILURE(status)) return input;
  icu::UnicodeString output = nfc->normalize(input, status);
  return U_FAILURE(status) ? input : output;
}

}  // namespace

bool hasCharacterPrefix(std::string_view text, std::string_view prefix) {
  if (prefix.empty()) return true;
  const icu::UnicodeString t = composed(text);
  const icu::UnicodeString p = composed(prefix);
  if (!t.startsWith(p)) return false;
  if (t.length() == p.length()) return true;
  // The prefix must end where a character of the text ends, not inside one.
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> characters(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  if (U_FAILURE(status)) return true;
  characters->setText(t);
  return characters->isBoundary(p.length());
}

}  // namespace qm
