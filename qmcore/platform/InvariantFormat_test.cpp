#include "qmcore/platform/InvariantFormat.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace qm {
namespace {

TEST(InvariantFormatTest, MatchesPrintfInThePosixLocale) {
  EXPECT_EQ(invariantFormat("%.2f%s", 1.005, "km"), "1.00km");
  EXPECT_EQ(invariantFormat("%.0f", -0.5), "-0");
  EXPECT_EQ(invariantFormat("%.0f", 2.5), "2");
  EXPECT_EQ(invariantFormat("%+.2f", 0.0), "+0.00");
  EXPECT_EQ(invariantFormat("%f", 0.3048), "0.304800");
  EXPECT_EQ(invariantFormat("%02d:%02d", 5, 9), "05:09");
}

TEST(InvariantFormatTest, LongTextsAreNotCut) {
  const std::string word(1000, 'x');
  EXPECT_EQ(invariantFormat("%s.%s", word.c_str(), word.c_str()), word + "." + word);
}

TEST(InvariantFormatTest, IgnoresTheHostsCLocale) {
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
    GTEST_SKIP() << "the de_DE.UTF-8 C locale is not installed (scripts/bootstrap.sh makes it)";
  }
  char native[32];
  std::snprintf(native, sizeof native, "%.1f", 1.5);
  EXPECT_STREQ(native, "1,5");  // the host's printf now writes a comma
  EXPECT_EQ(invariantFormat("%.1f", 1.5), "1.5");
  std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace qm
