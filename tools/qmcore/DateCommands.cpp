// qmcore date: ISO 8601 timestamps to Unix seconds, and the library's fixed date texts.

#include <charconv>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "qmcore/formatting/QMDateFormatter.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

struct NamedFormat {
  const char* name;
  const char* description;
  std::function<std::string(Date)> format;
};

// The shared instance keeps the locale and time zone of its first use, so it is reached only
// when a format runs, after --locale has taken effect (the list below is built for --help).
const QMDateFormatter& dates() { return QMDateFormatter::sharedInstance(); }

const std::vector<NamedFormat>& namedFormats() {
  static const std::vector<NamedFormat> formats = [] {
    return std::vector<NamedFormat>{
        {"xml", "XML timestamp with milliseconds (2020-05-01T10:00:00.123Z)",
         [](Date d) { return dates().xmlStringFromDate(d); }},
        {"iso", "ISO timestamp with hundredths (2020-05-01T10:00:00.12+0000)",
         [](Date d) { return dates().isoStringFromDate(d); }},
        {"filename", "text safe in file names (2020-05-01T10-00-00-123+0000)",
         [](Date d) { return dates().fileNameStringFromDate(d); }},
        {"short", "compact date and time (01-May-20 10:00:00)",
         [](Date d) { return dates().datetimeSecondsToShortUIString(d); }},
        {"shortdate", "compact date (01-May-20)",
         [](Date d) { return dates().dateOnlyToShortUIString(d); }},
        {"backup", "backup file name (20200501_100000)",
         [](Date d) { return QMDateFormatter::dateToBackupNameString(d); }},
        {"time", "time of day with milliseconds (10:00:00.123)",
         [](Date d) { return dates().hourMinuteSecondMillisecondsFromDate(d); }},
        {"gmt", "GMT offset of the time zone (GMT+2)",
         [](Date d) { return QMDateFormatter::timeZoneGMTPart(d); }},
        {"zone", "short name of the time zone (CEST, or a GMT offset)",
         [](Date d) { return QMDateFormatter::timeZoneLocalPart(d); }},
    };
  }();
  return formats;
}

std::string formatNamesHelp() {
  std::string help = "NAME is one of:";
  for (const NamedFormat& f : namedFormats()) {
    help += "\n  ";
    help += f.name;
    help += std::string(11 - std::string_view(f.name).size(), ' ');
    help += f.description;
  }
  return help;
}

const NamedFormat& findFormat(const std::string& name) {
  for (const NamedFormat& f : namedFormats()) {
    if (name == f.name) return f;
  }
  std::string known;
  for (const NamedFormat& f : namedFormats())
    known += (known.empty() ? "" : ", ") + std::string(f.name);
  throw UsageError("unknown date format '" + name + "' (known: " + known + ")");
}

// The shortest text that reads back as the same double, never in exponent notation.
std::string shortestText(double value) {
  char buffer[64];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
  return std::string(buffer, result.ptr);
}

void parseTimestamps(const std::vector<std::string>& texts, const ToolContext& context) {
  // Every text is checked before anything is printed, so that the lines of a successful run
  // match the arguments one to one and a failed run prints no partial output.
  std::vector<Record> records;
  for (const std::string& text : texts) {
    const double value = QMParseISO8601Date(std::string_view(text));
    if (std::isnan(value)) throw UsageError("not an ISO 8601 timestamp: '" + text + "'");
    records.push_back(Record(Record::Layout::kOneLine)
                          .jsonField("text", text)
                          .field("seconds", value, shortestText(value)));
  }
  for (const Record& record : records) record.print(context);
}

}  // namespace

void addDateCommands(CLI::App& app, ToolContext& context) {
  CLI::App* date = app.add_subcommand("date", "ISO 8601 timestamps and the fixed date texts");
  date->require_subcommand(1);

  CLI::App* parse = date->add_subcommand(
      "parse",
      "Unix seconds of ISO 8601 timestamps, one line per TEXT (e.g. 2000-01-01T12:00:00+01:00; "
      "no zone means UTC). When a TEXT does not parse, nothing is printed and the exit status "
      "is 2.");
  auto texts = std::make_shared<std::vector<std::string>>();
  parse->add_option("TEXT", *texts, "Timestamps")->required();
  parse->callback([texts, &context] { parseTimestamps(*texts, context); });

  CLI::App* format = date->add_subcommand(
      "format",
      "A date in one of the library's fixed formats, in the current locale (--locale) "
      "and the time zone of TZ");
  format->footer(formatNamesHelp());
  auto name = std::make_shared<std::string>();
  auto at = std::make_shared<std::string>();
  format->add_option("NAME", *name, "Format name (listed below)")->required();
  CLI::Option* atOption =
      format->add_option("--at", *at, "The date as Unix seconds (default: now)");
  format->callback([name, at, atOption, &context] {
    const NamedFormat& f = findFormat(*name);
    const Date when =
        atOption->count() == 0 ? Date::now() : Date::fromUnixSeconds(parseNumber(*at, "--at"));
    const std::string text = f.format(when);
    if (text.empty()) throw UsageError("no " + *name + " text for the date " + *at);
    Record(Record::Layout::kOneLine)
        .jsonField("name", *name)
        .jsonField("at", when.timeIntervalSince1970())
        .field("text", text)
        .print(context);
  });
}

}  // namespace qm::tool
