// PNG and JPEG encoding and decoding, the stand-ins for the phone platform's image encoders
// (libpng and libjpeg-turbo underneath; no other code sees them).
//
//   std::optional<std::vector<std::uint8_t>> png = qm::encodePNG(image);
//   std::optional<std::vector<std::uint8_t>> jpeg = qm::encodeJPEG(image, 0.8);
//   qm::Image back = qm::decodeImage(*png);   // throws ErrorException when not decodable
//
// PNG is lossless 8-bit RGBA. JPEG is 8-bit RGB (alpha is dropped, as the platform's encoder
// does) at a quality from 0.0 to 1.0, mapped onto libjpeg's 0 to 100 (values outside are
// clamped; libjpeg takes 0 as its lowest quality, 1).
// Thread-safe: every call has its own codec state.

#ifndef QMCORE_PLATFORM_IMAGECODEC_HPP_
#define QMCORE_PLATFORM_IMAGECODEC_HPP_

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "qmcore/platform/Image.hpp"

namespace qm {

// The error domain of decoding failures; code 1 for PNG, 2 for JPEG, 3 for other data.
inline constexpr std::string_view kImageCodecErrorDomain = "qm.image";

// The encoded bytes; absent for an empty image or when the encoder fails.
std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image);
std::optional<std::vector<std::uint8_t>> encodeJPEG(const Image& image, double quality);

// The picture of PNG or JPEG bytes (told apart by their signatures), as RGBA. Throws
// ErrorException with a readable description for anything else, truncated or corrupt data,
// or pictures beyond 2^28 pixels.
Image decodeImage(std::span<const std::uint8_t> bytes);

}  // namespace qm

#endif  // QMCORE_PLATFORM_IMAGECODEC_HPP_
