#include "qmcore/platform/TextCase.hpp"

#include <gtest/gtest.h>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

TEST(TextCase, MapsBeyondAsciiAndIgnoresTheCurrentLocale) {
  const std::string saved = currentLocaleIdentifier();
  // Turkish would map "I" to dotless "ı" if the locale were used.
  setCurrentLocaleIdentifier("tr_TR");
  const struct {
    const char* text;
    const char* lower;
    const char* upper;
  } cases[] = {
      {"Fläche", "fläche", "FLÄCHE"},
      {"Straße", "straße", "STRASSE"},
      {"KNOTS", "knots", "KNOTS"},
      {"km/h", "km/h", "KM/H"},
      {"Inch", "inch", "INCH"},
      {"坪", "坪", "坪"},
      {"", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(lowercaseString(c.text), c.lower) << c.text;
    EXPECT_EQ(uppercaseString(c.text), c.upper) << c.text;
  }
  setCurrentLocaleIdentifier(saved);
}

}  // namespace
}  // namespace qm
