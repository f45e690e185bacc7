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

TEST(QMASCIIStringSanitizerTest, KeepsOnlySingleScalarPrintableCharacters) {
  using namespace std::string_view_literals;
  const struct {
    std::string_view in;
    const char* out;
  } cases[] = {
      {"", ""},
      {"plain text ~!@#", "plain text ~!@#"},
      {" ", " "},
      {"a\tb\nc", "abc"},
      {"line\r\nnext", "linenext"},
      {"\r\n", ""},
      {"bell\x07 del\x7f", "bell del"},
      {"nul\0byte"sv, "nulbyte"},
      {"\x1f\x20\x7e\x7f", " ~"},
      {"caf\xc3\xa9", "caf"},   // é precomposed: not ASCII
      {"cafe\xcc\x81", "caf"},  // e + combining acute: one cluster, dropped
      {"e\xcc\x81x", "x"},      // the mark takes its letter with it
      {"\xcc\x81x", "x"},       // a mark at the start stands alone
      {"a\xe2\x80\x8d"
       "b",
       "b"},  // a joiner clings to the letter before it
      {"\xd8\x80"
       "7 apples",
       " apples"},  // a prepended mark takes the digit after it
      {"\xf0\x9f\x87\xa9\xf0\x9f\x87\xaa flag", " flag"},  // a flag
      {"1\xef\xb8\x8f\xe2\x83\xa3!", "!"},  // keycap sequence built on an ASCII digit
      {"\xe2\x80\x9cquoted\xe2\x80\x9d", "quoted"},
      {"\xff\xfe ok \xc3", " ok "},  // invalid UTF-8 bytes are dropped
      {"\xc3(", "("},
      {"\xe6\x97\xa5\xe6\x9c\xac", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(std::string(c.in)));
    EXPECT_EQ(sanitize(c.in), c.out);
    EXPECT_EQ(sanitize(c.in), walkEveryCluster(c.in));
  }
}

TEST(QMASCIIStringSanitizerTest, CutsAfterFiltering) {
  const struct {
    const char* in;
    std::int64_t max;
    const char* out;
  } cases[] = {
      {"\xc3\xa9 abc", 2, " a"},
      {"abc", 0, ""},
      {"abc", 3, "abc"},
      {"abc", 100, "abc"},
      {"\tab\ncd", 3, "abc"},
      {"e\xcc\x81"
       "abc\xc3\xa9"
       "def",
       5, "abcde"},
      {"", 4, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(sanitize(c.in, c.max), c.out) << c.in << " " << c.max;
}

TEST(QMASCIIStringSanitizerDeathTest, ANegativeLengthStopsTheProgram) {
  EXPECT_DEATH(sanitize("abc", -1), "maxLength");
}

// Random text of ASCII, accented letters, combining marks, joiners, flags, prepended marks and
// CR LF pairs: the fast ASCII runs must give what the walk over every cluster gives.
TEST(QMASCIIStringSanitizerTest, AgreesWithTheClusterWalkOnRandomMixedText) {
  const std::vector<std::string> pieces = {"a",
                                           "Z",
                                           " ",
                                           "~",
                                           "0",
                                           "\r",
                                           "\n",
                                           "\r\n",
                                           "\t",
                                           "\x7f",
                                           "\xc3\xa9",
                                           "\xcc\x81",
                                           "\xcc\x88",
                                           "\xe2\x80\x8d",
                                           "\xef\xb8\x8f",
                                           "\xf0\x9f\x87\xa9",
                                           "\xf0\x9f\x98\x80",
                                           "\xd8\x80",
                                           "\xe0\xa4\x95",
                                           "\xe0\xa5\x8d",
                                           "\xe1\x84\x80",
                                           "\xe1\x85\xa1",
                                           "\xff",
                                           "\xe2\x83\xa3",
                                           "\xe0\xa4\xbe"};
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
