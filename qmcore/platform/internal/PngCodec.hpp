// libpng behind the image codec: its only user. Not for use outside qmcore/platform.

#ifndef QMCORE_PLATFORM_INTERNAL_PNGCODEC_HPP_
#define QMCORE_PLATFORM_INTERNAL_PNGCODEC_HPP_

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "qmcore/platform/Image.hpp"

namespace qm::internal {

// Largest picture decoded, in pixels: bounds the memory a hostile header of a few hundred bytes
// can ask for to 256 MiB, while a 48-megapixel camera picture still fits.
inline constexpr std::uint64_t kMaxDecodedPixels = std::uint64_t{1} << 26;

std::optional<std::vector<std::uint8_t>> pngEncode(const Image& image);
// Throws ErrorException (domain kImageCodecErrorDomain, code 1).
Image pngDecode(std::span<const std::uint8_t> bytes);

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_PNGCODEC_HPP_
