// qmcore time and qmcore filesize: the clock, title and spoken texts of a time span, and the
// text of a file size.

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "qmcore/formatting/QMFormatter.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

void printTimeTexts(double ticks, const ToolContext& context) {
  const struct {
    const char* label;
    std::string text;
  } lines[] = {
      {"hmsTextForTicks", QMFormatter::hmsTextForTicks(ticks)},
      {"hmTextForTicks", QMFormatter::hmTextForTicks(ticks)},
      {"timeTitleTextForTicks", QMFormatter::timeTitleTextForTicks(ticks)},
      {"textPerTicks", QMFormatter::textPerTicks(ticks)},
      {"textForTicksSkipHours", QMFormatter::textForTicksSkipHours(ticks)},
      {"timeAnnouncementTextForTicks2", QMFormatter::timeAnnouncementTextForTicks2(ticks)},
  };
  Record record(Record::Layout::kLabelledLines);
  for (const auto& line : lines) record.field(line.label, line.text);
  record.print(context);
}

std::int64_t parseByteCount(const std::string& text) {
  const double value = parseNumber(text, "BYTES");
  // 2^63 is the first double beyond the 64-bit range.
  if (value != std::trunc(value) || value >= 9223372036854775808.0 ||
      value < -9223372036854775808.0) {
    throw UsageError("BYTES is not a whole number of bytes: '" + text + "'");
  }
  return static_cast<std::int64_t>(value);
}

}  // namespace

void addTextCommands(CLI::App& app, ToolContext& context) {
  CLI::App* time = app.add_subcommand(
      "time",
      "The clock, title and spoken texts of a time span of TICKS seconds, one labelled line "
      "each (fractions and negative spans allowed, e.g. -61.5)");
  auto ticks = std::make_shared<std::string>();
  time->add_option("TICKS", *ticks, "The time span in seconds")->required();
  time->callback([ticks, &context] {
    const double value = parseFiniteNumber(*ticks, "TICKS");
    printTimeTexts(value, context);
  });

  CLI::App* filesize = app.add_subcommand(
      "filesize", "The text of a file size of BYTES bytes (binary multiples: 1536 is 2 KB)");
  auto bytes = std::make_shared<std::string>();
  filesize->add_option("BYTES", *bytes, "The size in bytes, a whole number")->required();
  filesize->callback([bytes, &context] {
    const std::int64_t count = parseByteCount(*bytes);
    Record(Record::Layout::kOneLine)
        .jsonField("bytes", count)
        .field("text", QMFormatter::stringFromFileSize(count))
        .print(context);
  });
}

}  // namespace qm::tool
