// libjpeg(-turbo) behind the image codec: its only user. Not for use outside qmcore/platform.

#ifndef QMCORE_PLATFORM_INTERNAL_JPEGCODEC_HPP_
#define QMCORE_PLATFORM_INTERNAL_JPEGCODEC_HPP_

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "qmcore/platform/Image.hpp"

namespace qm::internal {

std::optional<std::vector<std::uint8_t>> jpegEncode(const Image& image, double quality);
// Throws ErrorException (domain kImageCodecErrorDomain, code 2). Data that libjpeg only warns
// about (a truncated file it would fill with grey) is an error too.
Image jpegDecode(std::span<const std::uint8_t> bytes);

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_JPEGCODEC_HPP_
