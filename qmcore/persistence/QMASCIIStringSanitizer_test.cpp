#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"
#include "qmcore/persistence/QMImageFormatDetector.hpp"
#include "qmcore/platform/ImageCodec.hpp"
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
      {"abc", "", 0},
      {"abc", "abc", 3},
      {"e\u0301abc\u00e9def", "abcde", 5},  // cut after dropping
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMASCIIStringSanitizer::sanitizeForPrintableASCII(c.in, c.max), c.out)
        << ::testing::PrintToString(std::string(c.in));
  }
}

TEST(QMASCIIStringSanitizerDeathTest, ANegativeLengthStopsTheProgram) {
  EXPECT_DEATH(QMASCIIStringSanitizer::sanitizeForPrintableASCII("abc", -1), "maxLength");
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
    ASSERT_EQ(QMASCIIStringSanitizer::sanitizeForPrintableASCII(text, {}), walkEveryCluster(text))
        << ::testing::PrintToString(text);
  }
}

using Bytes = std::vector<std::uint8_t>;

TEST(QMImageFormatDetectorTest, RecognisesTheSignaturesOnly) {
  // Real PNG and JPEG data are read in the encoding test.
  EXPECT_EQ(QMImageFormatDetector::format(Bytes{0xFF, 0xD8}), QMImageFormat::jpeg);
  EXPECT_EQ(QMImageFormatDetector::format(Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A}),
            QMImageFormat::png);
  for (const Bytes& bytes : {Bytes{0xFF}, Bytes{0xFF, 0xD9, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A},
                             Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A},
                             Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x00}}) {
    EXPECT_EQ(QMImageFormatDetector::format(bytes), QMImageFormat::unknown)
        << ::testing::PrintToString(bytes);
  }
  EXPECT_EQ(QMImageFormatDetector::format(std::nullopt), QMImageFormat::unknown);
}

TEST(QMImageFormatDetectorTest, EncodesInTheAskedFormatNamedByItsSignature) {
  const Image image(2, 2, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  const auto png = QMImageFormatDetector::imageDataFor(QMImageFormat::png, image, 0.0);
  ASSERT_TRUE(png);
  EXPECT_EQ(QMImageFormatDetector::formatName(QMImageFormatDetector::format(*png)), "PNG");
  EXPECT_EQ(decodeImage(*png), image);  // lossless whatever the quality
  const auto jpeg = QMImageFormatDetector::imageDataFor(QMImageFormat::jpeg, image, 0.7);
  ASSERT_TRUE(jpeg);
  EXPECT_EQ(QMImageFormatDetector::formatName(QMImageFormatDetector::format(*jpeg)), "JPEG");
  EXPECT_EQ(QMImageFormatDetector::formatName(static_cast<QMImageFormat>(7)), "UNKNOWN");

  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::unknown, image, 1), std::nullopt);
  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::png, std::nullopt, 1), std::nullopt);
  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::jpeg, std::nullopt, 1),
            std::nullopt);
}

TEST(QMImageFormatDetectorDeathTest, AnUnexpectedRawValueStopsTheProgram) {
  EXPECT_DEATH(QMImageFormatDetector::imageDataFor(static_cast<QMImageFormat>(3), std::nullopt, 1),
               "unexpected QMImageFormat");
}

}  // namespace
}  // namespace qm
