// A colour, the stand-in for the phone platform's `UIColor` and its underlying graphics colour:
// a colour-space model and the components in that space, alpha last, each usually 0 to 1
// (nothing clamps them).
//
//   qm::Color red = qm::Color::rgba(1, 0, 0, 1);   // model kRGB, components {1, 0, 0, 1}
//   qm::Color grey = qm::Color::white(0.5, 1);     // model kMonochrome, components {0.5, 1}
//
// A plain value: copy it freely, from any thread.

#ifndef QMCORE_PLATFORM_COLOR_HPP_
#define QMCORE_PLATFORM_COLOR_HPP_

#include <utility>
#include <vector>

namespace qm {

// The platform's colour-space model codes.
enum class ColorSpaceModel : int {
  kUnknown = -1,
  kMonochrome = 0,
  kRGB = 1,
  kCMYK = 2,
  kLab = 3,
  kDeviceN = 4,
  kIndexed = 5,
  kPattern = 6,
};

class Color {
 public:
  Color(ColorSpaceModel model, std::vector<double> components)
      : model_(model), components_(std::move(components)) {}

  // Red, green, blue and alpha in the RGB model.
  static Color rgba(double red, double green, double blue, double alpha) {
    return Color(ColorSpaceModel::kRGB, {red, green, blue, alpha});
  }
  // A grey level and alpha in the monochrome model.
  static Color white(double white, double alpha) {
    return Color(ColorSpaceModel::kMonochrome, {white, alpha});
  }
  // The platform's black: grey 0, opaque, monochrome.
  static Color black() { return white(0.0, 1.0); }

  ColorSpaceModel model() const { return model_; }
  const std::vector<double>& components() const { return components_; }

  bool operator==(const Color&) const = default;

 private:
  ColorSpaceModel model_;
  std::vector<double> components_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_COLOR_HPP_
