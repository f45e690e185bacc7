// Colour texts read from a settings store. Reading must never crash; a text that reads as a
// colour must be written back as a text that reads as the same colour (three decimals apart),
// and black must come back exactly for every malformed text.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/persistence/ColorPersistance.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::optional<qm::Color> parsed = qm::parseColorString(text);
  const qm::Color color = qm::colorWithString(text);
  if (!parsed) {
    if (!(color == qm::Color::black())) std::abort();
    return 0;
  }
  if (!(color == *parsed) || color.components().size() != 4) std::abort();
  const std::string written = qm::stringFromColor(color);
  const std::optional<qm::Color> again = qm::parseColorString(written);
  if (!again) {
    std::fprintf(stderr, "written text does not read back: %s\n", written.c_str());
    std::abort();
  }
  for (int i = 0; i < 4; ++i) {
    const double a = color.components()[i];
    const double b = again->components()[i];
    if (std::isfinite(a) && std::fabs(a) < 1e6 && std::fabs(a - b) > 0.0006) std::abort();
  }
  return 0;
}
