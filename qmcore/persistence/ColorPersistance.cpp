#include "qmcore/persistence/ColorPersistance.hpp"

#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <vector>

#include "qmcore/platform/InvariantFormat.hpp"

namespace qm {
namespace {

bool isTrimmed(unsigned char c) {
  // ASCII white space and line breaks; the platform's set also holds Unicode spaces, which a
  // stored colour text never carries.
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

std::string_view trim(std::string_view text) {
  while (!text.empty() && isTrimmed(static_cast<unsigned char>(text.front()))) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isTrimmed(static_cast<unsigned char>(text.back()))) {
    text.remove_suffix(1);
  }
  return text;
}

// The platform's lenient float reading, without the C library's locale: decimal numbers only
// (no "inf", "nan" or hexadecimal), overflow to an infinity.
float lenientFloat(std::string_view piece) {
  while (!piece.empty() && isTrimmed(static_cast<unsigned char>(piece.front()))) {
    piece.remove_prefix(1);
  }
  bool negative = false;
  if (!piece.empty() && (piece.front() == '+' || piece.front() == '-')) {
    negative = piece.front() == '-';
    piece.remove_prefix(1);
  }
  if (piece.empty() ||
      !(std::isdigit(static_cast<unsigned char>(piece.front())) || piece.front() == '.')) {
    return 0.0f;
  }
  float value = 0.0f;
  const auto [end, error] =
      std::from_chars(piece.data(), piece.data() + piece.size(), value, std::chars_format::general);
  if (error == std::errc::result_out_of_range) {
    // Beyond float's range either way: tell overflow from underflow by the exponent's sign.
    double wide = 0.0;
    std::from_chars(piece.data(), piece.data() + piece.size(), wide, std::chars_format::general);
    value =
        std::fabs(wide) >= 1.0 || std::isinf(wide) ? std::numeric_limits<float>::infinity() : 0.0f;
  } else if (error != std::errc()) {
    value = 0.0f;
  }
  (void)end;
  return negative ? -value : value;
}

std::vector<std::string_view> splitAtCommaSpace(std::string_view text) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const std::size_t at = text.find(", ");
    if (at == std::string_view::npos) break;
    pieces.push_back(text.substr(0, at));
    text.remove_prefix(at + 2);
  }
  pieces.push_back(text);
  return pieces;
}

}  // namespace

ColorSpaceModel colorSpaceModel(const Color& color) { return color.model(); }

bool canProvideRGBComponents(const Color& color) {
  return color.model() == ColorSpaceModel::kRGB || color.model() == ColorSpaceModel::kMonochrome;
}

std::string stringFromColor(const Color& color) {
  const std::vector<double>& c = color.components();
  if (c.empty()) return invariantFormat("{%0.3f, %0.3f, %0.3f, %0.3f}", 0.0, 0.0, 0.0, 0.0);
  const std::size_t colours = c.size() - 1;  // the components before alpha
  const auto at = [&](std::size_t i) { return i < colours ? c[i] : c[0]; };
  return invariantFormat("{%0.3f, %0.3f, %0.3f, %0.3f}", at(0), at(1), at(2), c.back());
}

Color colorWithString(std::string_view text) {
  return parseColorString(text).value_or(Color::black());
}

std::optional<Color> parseColorString(std::string_view text) {
  text = trim(text);
  if (text.size() < 2 || text.front() != '{' || text.back() != '}') return std::nullopt;
  const std::vector<std::string_view> pieces = splitAtCommaSpace(text.substr(1, text.size() - 2));
  if (pieces.size() != 4) return std::nullopt;
  return Color::rgba(lenientFloat(pieces[0]), lenientFloat(pieces[1]), lenientFloat(pieces[2]),
                     lenientFloat(pieces[3]));
}

}  // namespace qm
