#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "qmcore/platform/UnicodeText.hpp"

namespace qm {
namespace {

// The rule read literally: every grapheme cluster, kept when it is one scalar from 32 to 126.
std::string walkEveryCluster(std::string_view text) {
  std::string out;
  for (const std::string& cluster : graphemeClusters(text)) {
    if (cluster.size() == 1 && cluster[0] >= 32 && cluster[0] <= 126) out += cluster;
  }
  return out;
}

std::string sanitize(std::string_view text, std::optional<std::int64_t> max = {}) {
  return QMASCIIStringSanitizer::sanitizeForPrintableASCII(text, max);
}

TEST(QMASCIIStringSanitizerTest, KeepsOnlySingleScalarPrintableCharactersAndCutsAfterwards) {
  const struct {
    std::string_view in;
    const char* out;
    std::optional<std::int64_t> max = std::nullopt;
  } cases[] = {
      {"\x1f\x20\x7e\x7f", " ~"},
      {"cafe\u0301", "caf"},           // e + combining acute: one cluster, dropped
      {"\u06007 apples", " apples"},   // a prepended mark takes the digit after it
      {"\xff\xfe ok \xc3(", " ok ("},  // invalid UTF-8 bytes are dropped
      {"\u00e9 abc", " a", 2},
      {"abc", "", 0},
      {"abc", "abc", 3},
      {"e\u0301abc\u00e9def", "abcde", 5},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(sanitize(c.in, c.max), c.out) << ::testing::PrintToString(std::string(c.in));
  }
}

TEST(QMASCIIStringSanitizerDeathTest, ANegativeLengthStopsTheProgram) {
  EXPECT_DEATH(sanitize("abc", -1), "maxLength");
}

// Random text of ASCII, accented letters, combining marks, joiners, flags, prepended marks and
// CR LF pairs: the fast ASCII runs must give what the walk over every cluster gives.
TEST(QMASCIIStringSanitizerTest, AgreesWithTheClusterWalkOnRandomMixedText) {
  const std::vector<std::string> pieces = {
      "a",      " ",      "~",      "0",      "\r",     "\n",     "\r\n",       "\t",
      "\x7f",   "\xff",   "\u00e9", "\u0301", "\u0308", "\u200d", "\ufe0f",     "\u20e3",
      "\u0600", "\u0915", "\u094d", "\u093e", "\u1100", "\u1161", "\U0001F1E9", "\U0001F600"};
  std::mt19937 random(20261123);
  std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 40);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (int i = length(random); i > 0; --i) {
      // Mostly ASCII, like real file names and log lines.
      text +=
          random() % 3 == 0 ? pieces[pick(random)] : std::string(1, "abc xyz.-_"[random() % 10]);
    }
    ASSERT_EQ(sanitize(text), walkEveryCluster(text)) << ::testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace qm
