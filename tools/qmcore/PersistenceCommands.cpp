// qmcore color, sequence, sanitize and image: colour texts, the persistent numbered sequences,
// the printable-ASCII sanitiser and the image formats.

#include <charconv>
#include <cstdint>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/persistence/AutoIncrementSequence.hpp"
#include "qmcore/persistence/ColorPersistance.hpp"
#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"
#include "qmcore/persistence/QMImageFormatDetector.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/ImageCodec.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"
#include "tools/qmcore/ProviderSupport.hpp"

namespace qm::tool {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The shortest text of a component as the 32-bit float it was read as.
std::string componentText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, static_cast<float>(value));
  return std::string(buffer, result.ptr);
}

const char* modelName(ColorSpaceModel model) {
  switch (model) {
    case ColorSpaceModel::kMonochrome:
      return "monochrome";
    case ColorSpaceModel::kRGB:
      return "RGB";
    default:
      return "other";
  }
}

void printColor(const std::string& text, const ToolContext& context) {
  const Color color = colorWithString(text);
  std::string components;
  Json values = Json::array();
  for (const double c : color.components()) {
    components += (components.empty() ? "" : " ") + componentText(c);
    values.push_back(jsonNumber(static_cast<float>(c)));
  }
  Record(Record::Layout::kLabelledLines)
      .field("model", modelName(colorSpaceModel(color)))
      .field("components", values, components)
      .field("text", stringFromColor(color))
      .print(context);
}

struct SequenceOptions {
  std::string action;
  std::string code;
  std::optional<std::int64_t> start, step, zeroes, value;
};

void printSequence(Env& env, const std::string& code, const ToolContext& context) {
  const bool stored =
      env.standardSettings()->hasKey(AutoIncrementSequence::storageKeyForSequenceCode(code));
  const AutoIncrementSequence s = AutoIncrementSequence::sequenceForCode(env, code);
  Record(Record::Layout::kLabelledLines)
      .field("code", s.code)
      .field("value", Json(s.value), s.formattedValue())
      .field("start", Json(s.start), std::to_string(s.start))
      .field("step", Json(s.step), std::to_string(s.step))
      .field("leading zeroes", Json(s.leadingZeroes), std::to_string(s.leadingZeroes))
      .field("stored", Json(stored), stored ? "yes" : "no")
      .field("description", s.localizedDescription())
      .print(context);
}

void runSequence(const SequenceOptions& o, const ToolContext& context) {
  Env& env = toolEnv(context);
  if (o.action == "save") {
    AutoIncrementSequence s = AutoIncrementSequence::sequenceForCode(env, o.code);
    s.code = o.code;
    if (o.start) s.start = *o.start;
    if (o.step) s.step = *o.step;
    if (o.zeroes) s.leadingZeroes = *o.zeroes;
    if (o.value) s.value = *o.value;
    AutoIncrementSequence::saveSequence(env, s);
  } else if (o.action == "reset") {
    AutoIncrementSequence::resetSequenceWithCode(env, o.code);
  }
  // The library leaves synchronising to its callers; the next run must see this one.
  if (o.action != "show" && !env.standardSettings()->synchronize()) {
    throw UsageError("the settings store could not be written");
  }
  printSequence(env, o.code, context);
}

Bytes readBytes(const std::string& path) {
  const std::string content = readFile(path);
  return Bytes(content.begin(), content.end());
}

struct ConvertOptions {
  std::string input;
  std::string output;
  std::string format;
  double quality = 1.0;
};

void runConvert(const ConvertOptions& o, const ToolContext& context) {
  const QMImageFormat format = o.format == "png" ? QMImageFormat::png : QMImageFormat::jpeg;
  const Bytes input = readBytes(o.input);
  std::optional<Image> image;
  try {
    image = decodeImage(input);
  } catch (const ErrorException& e) {
    throw UsageError("'" + o.input + "': " + e.error().localizedDescription());
  }
  const std::optional<Bytes> data = QMImageFormatDetector::imageDataFor(format, image, o.quality);
  if (!data) throw UsageError("the picture could not be encoded as " + o.format);
  std::ofstream out(o.output, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(data->data()),
            static_cast<std::streamsize>(data->size()));
  out.close();
  if (!out) throw UsageError("cannot write '" + o.output + "'");
  Record(Record::Layout::kLabelledLines)
      .field("format", QMImageFormatDetector::formatName(format))
      .field("width", Json(image->width()), std::to_string(image->width()))
      .field("height", Json(image->height()), std::to_string(image->height()))
      .field("bytes", Json(data->size()), std::to_string(data->size()))
      .print(context);
}

}  // namespace

void addPersistenceCommands(CLI::App& app, ToolContext& context) {
  CLI::App* color = app.add_subcommand(
      "color",
      "The colour of a colour text \"{r, g, b, a}\" (black when malformed): its model, "
      "components and the text written back");
  auto colorText = std::make_shared<std::string>();
  color->add_option("TEXT", *colorText, "The colour text")->required();
  color->callback([colorText, &context] { printColor(*colorText, context); });

  CLI::App* sequence = app.add_subcommand(
      "sequence",
      "A numbered sequence kept in the settings store: show it, save it with the "
      "given fields, or reset its value to its start");
  auto seq = std::make_shared<SequenceOptions>();
  sequence->add_option("ACTION", seq->action, "show, save or reset")
      ->required()
      ->check(CLI::IsMember({"show", "save", "reset"}));
  sequence->add_option("CODE", seq->code, "The sequence's code")->required();
  sequence->add_option("--start", seq->start, "save: the value a reset returns to");
  sequence->add_option("--step", seq->step, "save: the increment");
  sequence->add_option("--zeroes", seq->zeroes, "save: the minimum number of digits");
  sequence->add_option("--value", seq->value, "save: the current value");
  sequence->callback([seq, &context] {
    if (seq->action != "save" && (seq->start || seq->step || seq->zeroes || seq->value)) {
      throw UsageError("--start, --step, --zeroes and --value go with save only");
    }
    runSequence(*seq, context);
  });

  CLI::App* sanitize =
      app.add_subcommand("sanitize",
                         "TEXT reduced to printable ASCII (characters 32 to 126), cut to --max "
                         "characters after filtering");
  auto text = std::make_shared<std::string>();
  auto max = std::make_shared<std::optional<std::int64_t>>();
  sanitize->add_option("TEXT", *text, "The text")->required();
  sanitize->add_option("--max", *max, "The most characters to keep");
  sanitize->callback([text, max, &context] {
    if (*max && **max < 0) throw UsageError("--max must not be negative");
    Record(Record::Layout::kOneLine)
        .field("text", QMASCIIStringSanitizer::sanitizeForPrintableASCII(*text, *max))
        .print(context);
  });

  CLI::App* image = app.add_subcommand("image", "Image formats: detect and convert");
  image->require_subcommand(1);
  CLI::App* detect = image->add_subcommand(
      "detect", "The format of FILE by its first bytes: JPEG, PNG or UNKNOWN");
  auto file = std::make_shared<std::string>();
  detect->add_option("FILE", *file, "The file")->required();
  detect->callback([file, &context] {
    const Bytes bytes = readBytes(*file);
    Record(Record::Layout::kOneLine)
        .field("format", QMImageFormatDetector::formatName(QMImageFormatDetector::format(bytes)))
        .print(context);
  });
  CLI::App* convert = image->add_subcommand(
      "convert", "Decodes IN (PNG or JPEG) and writes it to OUT as PNG or JPEG");
  auto conv = std::make_shared<ConvertOptions>();
  convert->add_option("IN", conv->input, "The picture to read")->required();
  convert->add_option("OUT", conv->output, "The file to write")->required();
  convert->add_option("--format", conv->format, "png or jpeg")
      ->required()
      ->check(CLI::IsMember({"png", "jpeg"}));
  convert->add_option("--quality", conv->quality, "JPEG quality, 0.0 to 1.0 (PNG ignores it)")
      ->check(CLI::Range(0.0, 1.0));
  convert->callback([conv, &context] { runConvert(*conv, context); });
}

}  // namespace qm::tool
