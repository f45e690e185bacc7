#include "qmcore/persistence/QMImageFormatDetector.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "qmcore/platform/ImageCodec.hpp"

namespace qm {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(QMImageFormatDetectorTest, RecognisesTheSignaturesOnly) {
  const struct {
    const char* name;
    std::optional<Bytes> bytes;
    QMImageFormat format;
  } cases[] = {
      {"no data", std::nullopt, QMImageFormat::unknown},
      {"FF alone", Bytes{0xFF}, QMImageFormat::unknown},
      {"FF D8", Bytes{0xFF, 0xD8}, QMImageFormat::jpeg},
      {"FF D9", Bytes{0xFF, 0xD9}, QMImageFormat::unknown},
      {"PNG signature", Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A}, QMImageFormat::png},
      {"PNG signature and more", Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0, 0},
       QMImageFormat::png},
      {"seven bytes of it", Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A},
       QMImageFormat::unknown},
      {"last byte 00", Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x00},
       QMImageFormat::unknown},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::optional<std::span<const std::uint8_t>> span =
        c.bytes ? std::optional<std::span<const std::uint8_t>>(*c.bytes) : std::nullopt;
    EXPECT_EQ(QMImageFormatDetector::format(span), c.format);
  }
}

TEST(QMImageFormatDetectorTest, EncodesInTheAskedFormatNamedByItsSignature) {
  Bytes rgba;
  for (int i = 0; i < 16 * 16; ++i) {
    rgba.insert(rgba.end(), {std::uint8_t(i), std::uint8_t(i * 7), std::uint8_t(255 - i), 200});
  }
  const Image image(16, 16, rgba);
  const auto png = QMImageFormatDetector::imageDataFor(QMImageFormat::png, image, 0.0);
  ASSERT_TRUE(png);
  EXPECT_EQ(QMImageFormatDetector::formatName(QMImageFormatDetector::format(*png)), "PNG");
  EXPECT_EQ(decodeImage(*png), image);  // lossless whatever the quality
  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::png, image, 1.0), png);

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
