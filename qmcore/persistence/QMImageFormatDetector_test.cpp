#include "qmcore/persistence/QMImageFormatDetector.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "qmcore/platform/ImageCodec.hpp"

namespace qm {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(QMImageFormatDetectorTest, RecognisesTheSignaturesOnly) {
  const struct {
    Bytes bytes;
    QMImageFormat format;
  } cases[] = {
      {{0xFF}, QMImageFormat::unknown},
      {{0xFF, 0xD8}, QMImageFormat::jpeg},
      {{0xFF, 0xD9, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A}, QMImageFormat::unknown},
      {{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0}, QMImageFormat::png},
      {{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A}, QMImageFormat::unknown},
      {{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x00}, QMImageFormat::unknown},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMImageFormatDetector::format(std::span<const std::uint8_t>(c.bytes)), c.format)
        << ::testing::PrintToString(c.bytes);
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
