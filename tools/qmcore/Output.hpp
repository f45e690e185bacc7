// The tool's one output sink. Each command hands its results to it as records of named fields,
// and the sink prints every record either as the command's text or, with --json, as one JSON
// object on one line (JSON Lines), so that text and JSON always carry the same fields.
//
//   Record(Record::Layout::kLabelledLines)
//       .field("text", "328ft")
//       .field("vertical speed", unitObject, ".vspeed-m/s (meters/second, m/s)")
//       .print(context);
//   // text:   "text: 328ft\nvertical speed: .vspeed-m/s (meters/second, m/s)\n"
//   // --json: {"text":"328ft","verticalSpeed":{...}}

#ifndef QMCORE_TOOLS_QMCORE_OUTPUT_HPP_
#define QMCORE_TOOLS_QMCORE_OUTPUT_HPP_

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

// Keeps the keys in the order the fields were added, the order of the text.
using Json = nlohmann::ordered_json;

// A number as a JSON value: whole numbers as integers, so that 98 reads "98" as in the text
// rather than "98.0"; non-finite numbers become null.
Json jsonNumber(double value);

// One result of a command.
class Record {
 public:
  enum class Layout {
    kLabelledLines,  // "label: text", one line per field (format, heading, settings, time)
    kOneLine,        // the fields' texts on one line, separated by tabs (units, convert, ...)
  };

  // A field's label in the text, and its JSON key when that is not the label in lowerCamelCase
  // ("vertical speed" gives "verticalSpeed").
  struct Name {
    Name(const char* label) : label(label) {}  // NOLINT: a plain label is the usual name
    Name(const char* label, const char* key) : label(label), key(key) {}
    std::string_view label;
    std::string_view key;
  };

  explicit Record(Layout layout) : layout_(layout) {}

  // A field both outputs show; in JSON its value is `text`, or `value` when given.
  Record& field(Name name, std::string text);
  Record& field(Name name, double value, std::string text);  // value as jsonNumber
  Record& field(Name name, Json value, std::string text);

  // A field only the JSON object has: the arguments that a bare line of text leaves to the
  // reader, so that each JSON line stands on its own.
  Record& jsonField(std::string_view key, double value);  // value as jsonNumber
  Record& jsonField(std::string_view key, Json value);

  // Writes the record to stdout: as text, or as one JSON object line when context.json is set.
  void print(const ToolContext& context) const;

 private:
  struct Field {
    std::string label;
    std::string key;
    Json value;
    std::optional<std::string> text;  // none for a JSON-only field
  };

  Layout layout_;
  std::vector<Field> fields_;
};

// Writes a line that only the text output has, such as a heading between groups of records.
void printTextLine(const ToolContext& context, const std::string& line);

}  // namespace qm::tool

#endif  // QMCORE_TOOLS_QMCORE_OUTPUT_HPP_
