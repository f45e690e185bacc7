// Bytes that claim to be pictures: detection must agree with the signatures, and decoding must
// give a picture of the stated size or a clear error, never a crash.

#include <cstdint>
#include <cstdlib>
#include <span>

#include "qmcore/persistence/QMImageFormatDetector.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/ImageCodec.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  const qm::QMImageFormat format = qm::QMImageFormatDetector::format(bytes);
  const bool jpeg = size >= 2 && data[0] == 0xFF && data[1] == 0xD8;
  if ((format == qm::QMImageFormat::jpeg) != jpeg) std::abort();
  try {
    const qm::Image image = qm::decodeImage(bytes);
    if (image.rgba().size() != static_cast<std::size_t>(image.width()) * image.height() * 4) {
      std::abort();
    }
    if (format == qm::QMImageFormat::unknown) std::abort();
  } catch (const qm::ErrorException& e) {
    if (e.error().localizedDescription().empty()) std::abort();
  }
  return 0;
}
