// Tells JPEG and PNG pictures apart by their leading bytes, names the formats, and encodes a
// picture in one of them.
//
//   QMImageFormatDetector::format(bytes);                          // QMImageFormat::png
//   QMImageFormatDetector::formatName(QMImageFormat::jpeg);        // "JPEG"
//   QMImageFormatDetector::imageDataFor(QMImageFormat::png, image, 0.0);  // lossless anyway
//
// Stateless and thread-safe.

#ifndef QMCORE_PERSISTENCE_QMIMAGEFORMATDETECTOR_HPP_
#define QMCORE_PERSISTENCE_QMIMAGEFORMATDETECTOR_HPP_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "qmcore/platform/Image.hpp"

namespace qm {

enum class QMImageFormat : std::int64_t {
  unknown = 0,
  jpeg = 1,
  png = 2,
};

class QMImageFormatDetector {
 public:
  // Looks at the first 8 bytes at most: FF D8 is JPEG (a first byte FF with another second
  // byte is unknown, without trying PNG); the eight-byte PNG signature is PNG; anything else,
  // no bytes included, is unknown. Never fails.
  static QMImageFormat format(std::optional<std::span<const std::uint8_t>> data);

  // "JPEG", "PNG", and "UNKNOWN" for every other value, raw values outside the enumeration
  // included.
  static std::string formatName(QMImageFormat format);

  // The picture encoded in `format`: PNG (lossless; `quality` ignored) or JPEG at `quality`
  // from 0.0 to 1.0. Absent without an image, for `unknown`, or when the encoder fails. A raw
  // value outside the enumeration is a programmer error and stops the program.
  static std::optional<std::vector<std::uint8_t>> imageDataFor(QMImageFormat format,
                                                               const std::optional<Image>& image,
                                                               double quality);
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_QMIMAGEFORMATDETECTOR_HPP_
