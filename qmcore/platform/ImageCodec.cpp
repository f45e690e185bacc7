#include "qmcore/platform/ImageCodec.hpp"

#include <string>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/internal/JpegCodec.hpp"
#include "qmcore/platform/internal/PngCodec.hpp"

namespace qm {

std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) {
  if (image.empty()) return std::nullopt;
  return internal::pngEncode(image);
}

std::optional<std::vector<std::uint8_t>> encodeJPEG(const Image& image, double quality) {
  if (image.empty()) return std::nullopt;
  return internal::jpegEncode(image, quality);
}

Image decodeImage(std::span<const std::uint8_t> bytes) {
  static constexpr std::uint8_t kPngSignature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
  if (bytes.size() >= 8 && std::equal(bytes.begin(), bytes.begin() + 8, kPngSignature)) {
    return internal::pngDecode(bytes);
  }
  if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xD8) {
    return internal::jpegDecode(bytes);
  }
  throw ErrorException(Error(std::string(kImageCodecErrorDomain), 3,
                             "The data is neither a PNG nor a JPEG picture."));
}

}  // namespace qm
