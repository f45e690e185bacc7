// Regular expressions with ICU's syntax and semantics, the stand-in for the phone platform's
// `NSRegularExpression` (which is ICU-based, so patterns mean the same thing here).
//
// A `RegularExpression` is compiled once and immutable; matching allocates a matcher per call.
//
//   const auto digits = qm::RegularExpression::create("@(\\d*)");
//   digits->firstMatch("speed@120")->group(1);      // "120"
//   qm::RegularExpression::create("\\s+")->replacingMatches("a  b", " ");  // "a b"
//
// Thread-safe: one expression may be used from any number of threads at once.

#ifndef QMCORE_PLATFORM_REGULAREXPRESSION_HPP_
#define QMCORE_PLATFORM_REGULAREXPRESSION_HPP_

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

struct RegularExpressionOptions {
  // Letters match regardless of case.
  bool caseInsensitive = false;
};

// One match: the whole matched text (group 0) and the texts of the capture groups.
class RegularExpressionMatch {
 public:
  explicit RegularExpressionMatch(std::vector<std::optional<std::string>> groups)
      : groups_(std::move(groups)) {}

  // Number of capture groups of the expression, not counting group 0.
  int numberOfGroups() const { return static_cast<int>(groups_.size()) - 1; }
  // The text of group `index` (0 = the whole match); absent when the group took no part in
  // the match or the index is out of range. A group that matched nothing gives "".
  std::optional<std::string> group(int index) const;

 private:
  std::vector<std::optional<std::string>> groups_;
};

class RegularExpression {
 public:
  // Compiles `pattern`. Absent when the pattern is not a valid ICU regular expression.
  static std::optional<RegularExpression> create(std::string_view pattern,
                                                 RegularExpressionOptions options = {});

  RegularExpression(const RegularExpression&) = default;
  RegularExpression& operator=(const RegularExpression&) = default;
  RegularExpression(RegularExpression&&) noexcept = default;
  RegularExpression& operator=(RegularExpression&&) noexcept = default;
  ~RegularExpression();

  // True when the whole text matches (as if the pattern were anchored at both ends).
  bool matchesWholeText(std::string_view text) const;

  // The first match in `text`, searching from its start; absent when there is none.
  std::optional<RegularExpressionMatch> firstMatch(std::string_view text) const;

  // `text` with every match replaced by `replacement`, in which "$1" stands for a capture
  // group and "\\$" for a dollar sign. A replacement that refers to a missing group leaves the
  // text unchanged.
  std::string replacingMatches(std::string_view text, std::string_view replacement) const;

 private:
  struct Compiled;
  explicit RegularExpression(std::shared_ptr<const Compiled> compiled);

  std::shared_ptr<const Compiled> compiled_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_REGULAREXPRESSION_HPP_
