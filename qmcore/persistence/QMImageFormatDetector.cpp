#include "qmcore/persistence/QMImageFormatDetector.hpp"

#include <algorithm>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/ImageCodec.hpp"

namespace qm {

QMImageFormat QMImageFormatDetector::format(std::optional<std::span<const std::uint8_t>> data) {
  if (!data) return QMImageFormat::unknown;
  static constexpr std::uint8_t kPngSignature[] = {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A};
  const std::span<const std::uint8_t> head = data->first(std::min<std::size_t>(data->size(), 8));
  if (head.size() >= 2 && head[0] == 0xFF) {
    return head[1] == 0xD8 ? QMImageFormat::jpeg : QMImageFormat::unknown;
  }
  if (head.size() == 8 && std::equal(head.begin(), head.end(), kPngSignature)) {
    return QMImageFormat::png;
  }
  return QMImageFormat::unknown;
}

std::string QMImageFormatDetector::formatName(QMImageFormat format) {
  switch (static_cast<std::int64_t>(format)) {
    case 1:
      return "JPEG";
    case 2:
      return "PNG";
    default:
      return "UNKNOWN";
  }
}

std::optional<std::vector<std::uint8_t>> QMImageFormatDetector::imageDataFor(
    QMImageFormat format, const std::optional<Image>& image, double quality) {
  switch (format) {
    case QMImageFormat::unknown:
      return std::nullopt;
    case QMImageFormat::jpeg:
      return image ? encodeJPEG(*image, quality) : std::nullopt;
    case QMImageFormat::png:
      return image ? encodePNG(*image) : std::nullopt;
  }
  fatalError("imageDataFor: unexpected QMImageFormat raw value " +
             std::to_string(static_cast<std::int64_t>(format)));
}

}  // namespace qm
