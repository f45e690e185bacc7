// Colours as short texts, so that user-chosen colours can be kept in a settings store: the
// additions the apps know as `UIColor(Persistance)` (spelled so).
//
//   qm::stringFromColor(qm::Color::rgba(1, 0, 0, 1));       // "{1.000, 0.000, 0.000, 1.000}"
//   qm::colorWithString(" {0.5, 0.25, 0.125, 1}\n");        // rgba(0.5, 0.25, 0.125, 1)
//   qm::colorWithString("{0.5,0.25,0.125,1}");              // black: the pieces need ", "
//
// Thread-safe; nothing is shared.

#ifndef QMCORE_PERSISTENCE_COLORPERSISTANCE_HPP_
#define QMCORE_PERSISTENCE_COLORPERSISTANCE_HPP_

#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Color.hpp"

namespace qm {

// The colour's colour-space model.
ColorSpaceModel colorSpaceModel(const Color& color);

// Whether the components read as red, green, blue and alpha: true for RGB and monochrome.
bool canProvideRGBComponents(const Color& color);

// "{r, g, b, a}", each number as "%0.3f" (three decimals, rounded, "." in every locale):
// components 0, 1 and 2, then the last one as alpha. A colour with fewer than three components
// before alpha (a grey and alpha) repeats its first component in the missing places, so a grey
// g reads "{g, g, g, a}": the grey stays first, alpha last, and the text reads back as the same
// grey. A colour with no components gives "{0.000, 0.000, 0.000, 0.000}".
std::string stringFromColor(const Color& color);

// The colour of a colour text: white space and line breaks trimmed from both ends, then "{",
// four pieces separated by exactly ", " and "}". Each piece reads as a 32-bit float the lenient
// way (leading white space skipped, the longest numeric prefix, 0 when there is none), with
// no clamping, into an RGB colour. Any other shape gives `Color::black()`.
Color colorWithString(std::string_view text);

// The same reading, with absent for the shapes `colorWithString` turns into black (what a
// stored colour must never be).
std::optional<Color> parseColorString(std::string_view text);

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_COLORPERSISTANCE_HPP_
