#include "qmcore/formatting/StyledText.hpp"

#include <cmath>
#include <cstdint>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/InvariantFormat.hpp"

namespace qm {
namespace {

FontDescription helveticaBold(double size) {
  return FontDescription{.name = "Helvetica-Bold",
                         .size = size,
                         .weight = FontWeight::kBold,
                         .fallbackName = std::string(kMonospacedSystemFontName)};
}

// p × fraction as the integer it stands for. The product of a rounded fraction and its power of
// ten can land just below the integer (0.29 × 100 = 28.999999999999996), so it is rounded, not
// truncated.
std::int64_t decimalsAsInteger(double scaledFraction) {
  // 2^63: the first double beyond the 64-bit range; NaN fails both comparisons.
  if (!(scaledFraction > -9223372036854775808.0 && scaledFraction < 9223372036854775808.0)) {
    fatalError(invariantFormat("attributedStringForDouble: the decimals %g do not fit in 64 bits",
                               scaledFraction));
  }
  return std::llround(scaledFraction);
}

}  // namespace

std::optional<FontDescription> FontDescription::fallbackFont() const {
  if (fallbackName.empty()) return std::nullopt;
  return FontDescription{.name = fallbackName, .size = size, .weight = weight, .fallbackName = ""};
}

void StyledText::append(std::string_view text, const FontDescription& font) {
  if (text.empty()) return;
  if (!runs_.empty() && runs_.back().font == font) {
    runs_.back().text += text;
  } else {
    runs_.push_back(StyledRun{.text = std::string(text), .font = font});
  }
}

std::string StyledText::string() const {
  std::string result;
  for (const StyledRun& run : runs_) result += run.text;
  return result;
}

const FontDescription& StyledText::wholeFont() {
  static const FontDescription font = helveticaBold(100.0);
  return font;
}

const FontDescription& StyledText::decimalFont() {
  static const FontDescription font = helveticaBold(80.0);
  return font;
}

StyledText StyledText::attributedStringForDouble(double value, int decimalPrecision) {
  const int n = decimalPrecision < 0 ? 0 : decimalPrecision;
  const double p = std::pow(10.0, n);
  const double r = std::round(p * value) / p;  // std::round: halves away from zero
  const bool finite = std::isfinite(r);
  const double whole = finite ? std::trunc(r) : r;

  StyledText text;
  text.append(invariantFormat("%.0f", whole), wholeFont());
  if (n >= 1) {
    double fraction = finite ? r - whole : 0.0;
    fraction = std::round(p * fraction) / p;
    const std::int64_t k = decimalsAsInteger(p * fraction);
    text.append(invariantFormat(".%.*lld", n, static_cast<long long>(k)), decimalFont());
  }
  return text;
}

}  // namespace qm
