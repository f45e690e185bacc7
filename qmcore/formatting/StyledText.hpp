// Styled text: a string made of runs, each set in a font of its own, the library's stand-in for
// the phone platform's attributed string. Instruments use it for their large split-font number,
// in which the decimals are set smaller than the whole part:
//
//   const qm::StyledText number = qm::StyledText::attributedStringForDouble(12.345, 2);
//   number.runs()[0];  // "12"  in StyledText::wholeFont()   (Helvetica-Bold 100)
//   number.runs()[1];  // ".35" in StyledText::decimalFont() (Helvetica-Bold 80)
//   number.string();   // "12.35"
//
// The library has no font system of its own, so a font is a description that the host's
// drawing code resolves: a font name, a size, a weight, and the font to use when the named one
// is not installed. The split-font number asks for "Helvetica-Bold" and names the platform's
// monospaced system font in bold, at the same size, as the fallback
// (`kMonospacedSystemFontName`).
//
// Thread-safety: StyledText is a value; distinct objects may be used on distinct threads. The
// static members may be called from any thread.

#ifndef QMCORE_FORMATTING_STYLEDTEXT_HPP_
#define QMCORE_FORMATTING_STYLEDTEXT_HPP_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

// The name by which a font description asks for the platform's monospaced system font.
inline constexpr std::string_view kMonospacedSystemFontName = "system-monospaced";

enum class FontWeight { kRegular, kBold };

struct FontDescription {
  // The font's name ("Helvetica-Bold") or kMonospacedSystemFontName.
  std::string name;
  // In points.
  double size;
  FontWeight weight;
  // The font to use, at the same size and weight, when `name` is not installed; empty when
  // there is nothing better to fall back to.
  std::string fallbackName;

  // The description of the fallback font, or nothing when there is none.
  std::optional<FontDescription> fallbackFont() const;

  bool operator==(const FontDescription&) const = default;
};

// A stretch of text in one font.
struct StyledRun {
  std::string text;
  FontDescription font;

  bool operator==(const StyledRun&) const = default;
};

class StyledText {
 public:
  StyledText() = default;

  // Appends `text` set in `font`. Text in the font of the last run extends that run, so that
  // runs always differ from their neighbours; empty text adds nothing.
  void append(std::string_view text, const FontDescription& font);

  const std::vector<StyledRun>& runs() const { return runs_; }
  // The plain text of all runs.
  std::string string() const;

  bool operator==(const StyledText&) const = default;

  // The font of the whole part of a split-font number: "Helvetica-Bold" 100, falling back to
  // the monospaced system font, bold, 100. Made once, on first use.
  static const FontDescription& wholeFont();
  // The font of the decimals: "Helvetica-Bold" 80, falling back to the monospaced system font,
  // bold, 80. Made once, on first use.
  static const FontDescription& decimalFont();

  // `value` rounded to `decimalPrecision` decimals (halves away from zero) as a split-font
  // number: the whole part in `wholeFont()`, then, when the precision is at least 1, a "." and
  // exactly that many decimals in `decimalFont()`. The point is "." in every locale.
  //
  //   attributedStringForDouble(9.999, 2)  // "10" + ".00"
  //   attributedStringForDouble(9.999, 0)  // "10"
  //   attributedStringForDouble(-1.25, 1)  // "-1" + ".-3": the fraction keeps its sign
  //
  // A negative precision counts as 0. A value that is not finite gives its printf text
  // ("nan", "inf") and zero decimals. Stops the program (`fatalError`) when the decimals do not
  // fit in a 64-bit integer, which takes a precision above 18.
  static StyledText attributedStringForDouble(double value, int decimalPrecision);

 private:
  std::vector<StyledRun> runs_;
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_STYLEDTEXT_HPP_
