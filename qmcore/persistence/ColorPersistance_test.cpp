#include "qmcore/persistence/ColorPersistance.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

namespace qm {
namespace {

TEST(ColorPersistanceTest, ReadsTextsOfFourPiecesAndGivesBlackForEveryOtherShape) {
  constexpr float kInf = std::numeric_limits<float>::infinity();
  const struct {
    const char* text;
    Color color;
  } cases[] = {
      {"  {0.5, 0.25, 0.125, 1}\n", Color::rgba(0.5, 0.25, 0.125, 1)},
      // Lenient numbers: the longest numeric prefix, 0 without one, no clamping.
      {"{ 0.5x, -0.25, +2, .5}", Color::rgba(0.5, -0.25, 2, 0.5)},
      {"{inf, nan, 5e-1, 1}", Color::rgba(0, 0, 0.5, 1)},
      {"{1e39, -1e39, 1e-50, }", Color::rgba(kInf, -kInf, 0, 0)},
      // The separator is exactly ", ".
      {"{0.5,0.25,0.125,1}", Color::black()},
      {"{0.5, 0.25, 0.125}", Color::black()},
      {"{0.5, 0.25, 0.125, 1, 1}", Color::black()},
      {"{0.5, 0.25, 0.125, 1", Color::black()},
      {"0.5, 0.25, 0.125, 1}", Color::black()},
      {"", Color::black()},
  };
  for (const auto& c : cases) EXPECT_EQ(colorWithString(c.text), c.color) << c.text;
  // Each piece is read as a 32-bit float.
  EXPECT_EQ(colorWithString("{0.1, 0, 0, 1}").components()[0], static_cast<double>(0.1f));
}

TEST(ColorPersistanceTest, WritesThreeDecimalsRoundedAndAlphaFromTheLastComponent) {
  const struct {
    Color color;
    const char* text;
  } cases[] = {
      {Color::rgba(0.12345, 0.9996, 0.0004, 0.5), "{0.123, 1.000, 0.000, 0.500}"},
      // A grey repeats itself in the colour places, alpha last.
      {Color::white(0.25, 0.75), "{0.250, 0.250, 0.250, 0.750}"},
      // Four colour components (CMYK) and alpha: the first three, then alpha.
      {Color(ColorSpaceModel::kCMYK, {0.1, 0.2, 0.3, 0.4, 0.9}), "{0.100, 0.200, 0.300, 0.900}"},
      {Color(ColorSpaceModel::kPattern, {}), "{0.000, 0.000, 0.000, 0.000}"},
  };
  for (const auto& c : cases) EXPECT_EQ(stringFromColor(c.color), c.text);
}

TEST(ColorPersistanceTest, TextsAreTheSameUnderADecimalCommaLocale) {
  const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "no de_DE locale";
  EXPECT_EQ(stringFromColor(Color::rgba(0.5, 0.25, 0, 1)), "{0.500, 0.250, 0.000, 1.000}");
  EXPECT_FLOAT_EQ(colorWithString("{0.5, 0, 0, 1}").components()[0], 0.5);
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(ColorPersistanceTest, RgbAndMonochromeProvideRgbComponents) {
  for (const ColorSpaceModel model :
       {ColorSpaceModel::kMonochrome, ColorSpaceModel::kRGB, ColorSpaceModel::kCMYK}) {
    const Color color(model, {0, 1});
    EXPECT_EQ(colorSpaceModel(color), model);
    EXPECT_EQ(canProvideRGBComponents(color), model != ColorSpaceModel::kCMYK);
  }
}

}  // namespace
}  // namespace qm
