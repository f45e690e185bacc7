#include "qmcore/platform/ImageCodec.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "qmcore/platform/Error.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

using Bytes = std::vector<std::uint8_t>;

// A picture with every channel varying, alpha included.
Image gradient(std::uint32_t width, std::uint32_t height) {
  Bytes rgba;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      rgba.insert(
          rgba.end(),
          {static_cast<std::uint8_t>(x * 255 / width), static_cast<std::uint8_t>(y * 255 / height),
           static_cast<std::uint8_t>((x + y) % 256), static_cast<std::uint8_t>(255 - x % 256)});
    }
  }
  return Image(width, height, std::move(rgba));
}

std::string text(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }

// The description of the error that decoding `bytes` throws; "decoded" when it throws none.
std::string decodingError(const Bytes& bytes, std::int64_t* code = nullptr) {
  try {
    decodeImage(bytes);
    return "decoded";
  } catch (const ErrorException& e) {
    EXPECT_EQ(e.error().domain(), kImageCodecErrorDomain);
    if (code != nullptr) *code = e.error().code();
    return e.error().localizedDescription();
  }
}

// python3's zlib and struct read our PNG back, filters and all, and must find the same pixels.
TEST(ImageCodecTest, PngIsLosslessAsAnotherReaderSeesIt) {
  testing::FakeEnv env;
  const std::filesystem::path tmp = env.temporaryDirectory();
  const Image image = gradient(37, 11);
  const std::optional<Bytes> png = encodePNG(image);
  ASSERT_TRUE(png);
  testing::writeFile(tmp / "a.png", text(*png));
  testing::writeFile(tmp / "a.rgba", text(image.rgba()));
  testing::writeFile(tmp / "check.py", R"PY(
import struct, sys, zlib
data, pos, idat = open(sys.argv[1], 'rb').read(), 8, b''
assert data[:8] == b'\x89PNG\r\n\x1a\n'
while pos < len(data):
    n, kind = struct.unpack('>I4s', data[pos:pos + 8])
    body, pos = data[pos + 8:pos + 8 + n], pos + 12 + n
    assert zlib.crc32(kind + body) == struct.unpack('>I', data[pos - 4:pos])[0]
    if kind == b'IHDR': w, h, depth, colour = struct.unpack('>IIBB', body[:10])
    if kind == b'IDAT': idat += body
assert (w, h, depth, colour) == (37, 11, 8, 6)
raw, out, prev, size = zlib.decompress(idat), bytearray(), bytearray(w * 4), w * 4 + 1
for y in range(h):
    f, line = raw[y * size], bytearray(raw[y * size + 1:(y + 1) * size])
    for i in range(len(line)):
        a, b, c = line[i - 4] if i >= 4 else 0, prev[i], prev[i - 4] if i >= 4 else 0
        p = a + b - c
        paeth = a if abs(p - a) <= min(abs(p - b), abs(p - c)) else b if abs(p - b) <= abs(p - c) else c
        line[i] = (line[i] + [0, a, b, (a + b) // 2, paeth][f]) & 255
    out += line; prev = line
assert bytes(out) == open(sys.argv[2], 'rb').read()
)PY");
  EXPECT_EQ(testing::run("python3 " + (tmp / "check.py").string() + " " + (tmp / "a.png").string() +
                         " " + (tmp / "a.rgba").string() + " 2>&1"),
            "");
  EXPECT_EQ(decodeImage(*png), image);
}

// djpeg (libjpeg-turbo's own program) reads our JPEG; cjpeg writes one that we read.
TEST(ImageCodecTest, JpegIsReadByAnotherReaderAndQualityTradesSizeForFidelity) {
  testing::FakeEnv env;
  const std::filesystem::path tmp = env.temporaryDirectory();
  const Image image = gradient(64, 48);
  const std::optional<Bytes> best = encodeJPEG(image, 1.0);
  ASSERT_TRUE(best);
  EXPECT_LT(encodeJPEG(image, 0.0)->size(), best->size() / 2);
  testing::writeFile(tmp / "q.jpg", text(*best));
  const std::string ppm = testing::run("djpeg " + (tmp / "q.jpg").string());
  const std::string header = "P6\n64 48\n255\n";
  ASSERT_EQ(ppm.size(), header.size() + 64 * 48 * 3);
  ASSERT_EQ(ppm.substr(0, header.size()), header);
  long error = 0;
  for (std::size_t i = 0; i < 64 * 48 * 3; ++i) {
    error +=
        std::abs(int(std::uint8_t(ppm[header.size() + i])) - int(image.rgba()[i / 3 * 4 + i % 3]));
  }
  EXPECT_LT(error, 64 * 48 * 3) << "more than one level off on average";
  testing::writeFile(tmp / "in.ppm", "P6\n3 2\n255\n" + std::string(18, '\xC8'));
  const std::string jpeg = testing::run("cjpeg -quality 100 " + (tmp / "in.ppm").string());
  const Image fromCjpeg = decodeImage(Bytes(jpeg.begin(), jpeg.end()));
  ASSERT_EQ(std::pair(fromCjpeg.width(), fromCjpeg.height()), std::pair(3u, 2u));
  EXPECT_NEAR(fromCjpeg.rgba()[0], 0xC8, 2);
  EXPECT_EQ(fromCjpeg.rgba()[3], 255);  // opaque
}

TEST(ImageCodecTest, DamagedOrForeignDataIsAClearError) {
  const Bytes png = *encodePNG(gradient(20, 20));
  const Bytes jpeg = *encodeJPEG(gradient(20, 20), 0.9);
  Bytes flipped = png;
  flipped[png.size() / 2] ^= 0xFF;
  const std::tuple<const char*, Bytes, std::int64_t> cases[] = {
      {"empty", {}, 3},
      {"PNG signature only", Bytes(png.begin(), png.begin() + 8), 1},
      {"PNG with a damaged byte", flipped, 1},
      {"JPEG cut in half", Bytes(jpeg.begin(), jpeg.begin() + jpeg.size() / 2), 2},
  };
  for (const auto& [name, bytes, expected] : cases) {
    std::int64_t code = 0;
    EXPECT_NE(decodingError(bytes, &code), "decoded") << name;
    EXPECT_EQ(code, expected) << name;
  }

  // A frame header claiming 8192 x 8193 pixels, a row beyond the limit, is refused before any
  // memory is taken for the pixels.
  Bytes huge = jpeg;
  const std::uint8_t startOfFrame[] = {0xFF, 0xC0};
  const auto frame =
      std::search(huge.begin(), huge.end(), std::begin(startOfFrame), std::end(startOfFrame));
  ASSERT_NE(frame, huge.end());
  const std::uint8_t heightAndWidth[] = {0x20, 0x01, 0x20, 0x00};
  std::copy(std::begin(heightAndWidth), std::end(heightAndWidth), frame + 5);
  EXPECT_NE(decodingError(huge).find("too many pixels"), std::string::npos);
}

TEST(ImageCodecTest, EmptyOrMisshapenImagesEncodeToNothing) {
  EXPECT_EQ(encodeJPEG(Image(0, 0, {}), 1), std::nullopt);
  EXPECT_EQ(encodePNG(Image(2, 2, Bytes(3))), std::nullopt);
}

}  // namespace
}  // namespace qm
