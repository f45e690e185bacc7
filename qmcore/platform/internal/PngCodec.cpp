#include "qmcore/platform/internal/PngCodec.hpp"

#include <png.h>

#include <memory>
#include <string>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/ImageCodec.hpp"

namespace qm::internal {
namespace {

// libpng's simplified interface keeps its state behind png_image; this frees it on every path.
struct PngImage {
  png_image image{};
  PngImage() { image.version = PNG_IMAGE_VERSION; }
  ~PngImage() { png_image_free(&image); }
  PngImage(const PngImage&) = delete;
  PngImage& operator=(const PngImage&) = delete;
};

[[noreturn]] void fail(const png_image& image, const char* what) {
  std::string message = std::string("The PNG picture cannot be read: ") + what;
  if (image.message[0] != '\0') message += std::string(" (") + image.message + ")";
  throw ErrorException(Error(std::string(kImageCodecErrorDomain), 1, message));
}

}  // namespace

std::optional<std::vector<std::uint8_t>> pngEncode(const Image& image) {
  PngImage png;
  png.image.width = image.width();
  png.image.height = image.height();
  png.image.format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = 0;
  // The first call measures, the second writes.
  if (!png_image_write_to_memory(&png.image, nullptr, &size, 0, image.rgba().data(), 0, nullptr)) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes(size);
  if (!png_image_write_to_memory(&png.image, bytes.data(), &size, 0, image.rgba().data(), 0,
                                 nullptr)) {
    return std::nullopt;
  }
  bytes.resize(size);
  return bytes;
}

Image pngDecode(std::span<const std::uint8_t> bytes) {
  PngImage png;
  if (!png_image_begin_read_from_memory(&png.image, bytes.data(), bytes.size())) {
    fail(png.image, "bad header");
  }
  if (static_cast<std::uint64_t>(png.image.width) * png.image.height > kMaxDecodedPixels) {
    fail(png.image, "too many pixels");
  }
  png.image.format = PNG_FORMAT_RGBA;
  std::vector<std::uint8_t> rgba(PNG_IMAGE_SIZE(png.image));
  if (!png_image_finish_read(&png.image, nullptr, rgba.data(), 0, nullptr)) {
    fail(png.image, "damaged data");
  }
  return Image(png.image.width, png.image.height, std::move(rgba));
}

}  // namespace qm::internal
