// qmcore heading and qmcore bearing: the texts of a compass heading on a turned display, and
// the quadrant bearing of an azimuth.

#include <cstdint>
#include <memory>
#include <string>

#include "qmcore/formatting/BearingFormatter.hpp"
#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"
#include "tools/qmcore/ProviderSupport.hpp"

namespace qm::tool {
namespace {

const struct {
  const char* name;
  DisplayOrientation orientation;
} kOrientations[] = {
    {"portrait", DisplayOrientation::kPortrait},
    {"upside-down", DisplayOrientation::kPortraitUpsideDown},
    {"landscape-left", DisplayOrientation::kLandscapeLeft},
    {"landscape-right", DisplayOrientation::kLandscapeRight},
    {"unknown", DisplayOrientation::kUnknown},
};

DisplayOrientation parseOrientation(const std::string& name) {
  std::string names;
  for (const auto& o : kOrientations) {
    if (name == o.name) return o.orientation;
    names += names.empty() ? "" : ", ";
    names += o.name;
  }
  throw UsageError("unknown orientation '" + name + "' (one of " + names + ")");
}

// The host's say in the north type for one run: true north, or magnetic with --magnetic.
class NorthTypeSettings final : public EnvironmentSettingsDelegate {
 public:
  explicit NorthTypeSettings(std::int64_t northType) : northType_(northType) {}
  std::int64_t northType() override { return northType_; }

 private:
  std::int64_t northType_;
};

struct HeadingOptions {
  std::string degrees;
  bool mils = false;
  std::string orientation = "portrait";
  bool magnetic = false;
};

void printHeadingTexts(const HeadingOptions& options, const ToolContext& context) {
  const double degrees = parseFiniteNumber(options.degrees, "DEGREES");
  // As a host app would: report the display orientation and the north type, then ask.
  setCurrentDisplayOrientation(parseOrientation(options.orientation));
  const std::int64_t trueOrMagnetic = options.magnetic ? 1 : 0;
  const auto settings = std::make_shared<NorthTypeSettings>(trueOrMagnetic);
  EnvironmentSettings::shared().setDelegate(settings);

  // The one reading stands for both headings; the flag picks which one is used.
  const Heading heading{.trueHeading = degrees, .magneticHeading = degrees};
  const int angleUnit = options.mils ? 1 : 0;
  const double corrected = UnitsProvider::orientationCorrectedHeading(heading, trueOrMagnetic);
  Record(Record::Layout::kLabelledLines)
      .field("orientationCorrectedHeading", corrected, numberText(corrected))
      .field("textForCompassHeading",
             UnitsProvider::textForCompassHeading(heading, trueOrMagnetic, "", angleUnit))
      .field("shortCompassBearingText",
             UnitsProvider::shortCompassBearingText(corrected).value_or(""))
      .field("compassTitle", toolProvider(context).compassTitle())
      .print(context);
}

}  // namespace

void addHeadingCommands(CLI::App& app, ToolContext& context) {
  CLI::App* heading = app.add_subcommand(
      "heading",
      "The texts of a compass heading of DEGREES on a turned display: the corrected heading, "
      "the compass text, the cardinal abbreviation and the compass title");
  auto options = std::make_shared<HeadingOptions>();
  heading->add_option("DEGREES", options->degrees, "The heading against the device's top")
      ->required();
  heading->add_flag("--mils", options->mils, "Write the compass text in mils (6400 a circle)");
  heading->add_option("--orientation", options->orientation,
                      "The display: portrait (default), upside-down, landscape-left, "
                      "landscape-right or unknown");
  heading->add_flag("--magnetic", options->magnetic,
                    "The heading is against magnetic north (default: true north)");
  heading->callback([options, &context] { printHeadingTexts(*options, context); });

  CLI::App* bearing = app.add_subcommand(
      "bearing", "The quadrant bearing of AZIMUTH degrees, e.g. 225.5 gives S45°30'W");
  auto azimuth = std::make_shared<std::string>();
  bearing->add_option("AZIMUTH", *azimuth, "Degrees clockwise from north")->required();
  bearing->callback([azimuth, &context] {
    const double degrees = parseFiniteNumber(*azimuth, "AZIMUTH");
    Record(Record::Layout::kOneLine)
        .jsonField("azimuth", degrees)
        .field("text", BearingFormatter::textForAzimuth(degrees))
        .print(context);
  });
}

}  // namespace qm::tool
