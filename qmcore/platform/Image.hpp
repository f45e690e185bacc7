// A decoded picture, the stand-in for the phone platform's `UIImage`: width and height in
// pixels and 8-bit RGBA pixels, row by row from the top, without padding.
//
//   qm::Image image(2, 1, {255, 0, 0, 255, 0, 0, 255, 128});  // red, half-transparent blue
//
// A plain value: copy it freely, from any thread.

#ifndef QMCORE_PLATFORM_IMAGE_HPP_
#define QMCORE_PLATFORM_IMAGE_HPP_

#include <cstdint>
#include <utility>
#include <vector>

namespace qm {

class Image {
 public:
  // `rgba` holds width * height * 4 bytes; a shorter or longer vector makes an empty image
  // (0 by 0), so that a badly built image never reads out of bounds.
  Image(std::uint32_t width, std::uint32_t height, std::vector<std::uint8_t> rgba)
      : width_(width), height_(height), rgba_(std::move(rgba)) {
    if (rgba_.size() != static_cast<std::uint64_t>(width) * height * 4) {
      width_ = height_ = 0;
      rgba_.clear();
    }
  }

  std::uint32_t width() const { return width_; }
  std::uint32_t height() const { return height_; }
  const std::vector<std::uint8_t>& rgba() const { return rgba_; }
  bool empty() const { return width_ == 0 || height_ == 0; }

  bool operator==(const Image&) const = default;

 private:
  std::uint32_t width_;
  std::uint32_t height_;
  std::vector<std::uint8_t> rgba_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_IMAGE_HPP_
