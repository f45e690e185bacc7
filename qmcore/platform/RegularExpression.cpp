#include "qmcore/platform/RegularExpression.hpp"

#include <unicode/regex.h>

#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {

struct RegularExpression::Compiled {
  std::unique_ptr<icu::RegexPattern> pattern;
};

std::optional<std::string> RegularExpressionMatch::group(int index) const {
  if (index < 0 || index >= static_cast<int>(groups_.size())) return std::nullopt;
  return groups_[static_cast<size_t>(index)];
}

std::optional<RegularExpression> RegularExpression::create(std::string_view pattern,
                                                           RegularExpressionOptions options) {
  UErrorCode status = U_ZERO_ERROR;
  UParseError parseError;
  const uint32_t flags = options.caseInsensitive ? UREGEX_CASE_INSENSITIVE : 0;
  std::unique_ptr<icu::RegexPattern> compiled(
      icu::RegexPattern::compile(internal::fromUtf8(pattern), flags, parseError, status));
  if (U_FAILURE(status) || compiled == nullptr) return std::nullopt;
  return RegularExpression(std::make_shared<const Compiled>(Compiled{std::move(compiled)}));
}

RegularExpression::RegularExpression(std::shared_ptr<const Compiled> compiled)
    : compiled_(std::move(compiled)) {}

RegularExpression::~RegularExpression() = default;

bool RegularExpression::matchesWholeText(std::string_view text) const {
  UErrorCode status = U_ZERO_ERROR;
  const icu::UnicodeString input = internal::fromUtf8(text);
  const std::unique_ptr<icu::RegexMatcher> matcher(compiled_->pattern->matcher(input, status));
  if (U_FAILURE(status)) return false;
  const bool matched = matcher->matches(status);
  return U_SUCCESS(status) && matched;
}

std::optional<RegularExpressionMatch> RegularExpression::firstMatch(std::string_view text) const {
  UErrorCode status = U_ZERO_ERROR;
  const icu::UnicodeString input = internal::fromUtf8(text);
  const std::unique_ptr<icu::RegexMatcher> matcher(compiled_->pattern->matcher(input, status));
  if (U_FAILURE(status) || !matcher->find(0, status) || U_FAILURE(status)) return std::nullopt;
  std::vector<std::optional<std::string>> groups;
  for (int32_t i = 0; i <= matcher->groupCount(); ++i) {
    if (matcher->start(i, status) < 0) {
      groups.emplace_back(std::nullopt);
    } else {
      groups.emplace_back(internal::toUtf8(matcher->group(i, status)));
    }
  }
  if (U_FAILURE(status)) return std::nullopt;
  return RegularExpressionMatch(std::move(groups));
}

std::string RegularExpression::replacingMatches(std::string_view text,
                                                std::string_view replacement) const {
  UErrorCode status = U_ZERO_ERROR;
  const icu::UnicodeString input = internal::fromUtf8(text);
  const std::unique_ptr<icu::RegexMatcher> matcher(compiled_->pattern->matcher(input, status));
  if (U_FAILURE(status)) return std::string(text);
  const icu::UnicodeString result = matcher->replaceAll(internal::fromUtf8(replacement), status);
  if (U_FAILURE(status)) return std::string(text);
  return internal::toUtf8(result);
}

}  // namespace qm
