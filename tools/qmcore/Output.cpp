#include "tools/qmcore/Output.hpp"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace qm::tool {
namespace {

// "vertical speed" -> "verticalSpeed".
std::string lowerCamelCase(std::string_view label) {
  std::string key;
  bool upper = false;
  for (const char c : label) {
    if (c == ' ') {
      upper = true;
      continue;
    }
    key += upper ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
    upper = false;
  }
  return key;
}

void write(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace

Json jsonNumber(double value) {
  // Every whole double below 2^63 converts to int64 exactly; -0 stays a double to keep its sign.
  if (std::trunc(value) == value && std::fabs(value) < 9223372036854775808.0 &&
      !(value == 0.0 && std::signbit(value))) {
    return static_cast<std::int64_t>(value);
  }
  return value;
}

Record& Record::field(Name name, std::string text) {
  Json value = text;
  return field(name, std::move(value), std::move(text));
}

Record& Record::field(Name name, double value, std::string text) {
  return field(name, jsonNumber(value), std::move(text));
}

Record& Record::field(Name name, Json value, std::string text) {
  std::string key = name.key.empty() ? lowerCamelCase(name.label) : std::string(name.key);
  fields_.push_back({std::string(name.label), std::move(key), std::move(value), std::move(text)});
  return *this;
}

Record& Record::jsonField(std::string_view key, double value) {
  return jsonField(key, jsonNumber(value));
}

Record& Record::jsonField(std::string_view key, Json value) {
  fields_.push_back({"", std::string(key), std::move(value), std::nullopt});
  return *this;
}

void Record::print(const ToolContext& context) const {
  std::string out;
  if (context.json) {
    Json object = Json::object();
    for (const Field& f : fields_) object[f.key] = f.value;
    // Replacing invalid UTF-8 rather than throwing: an echoed argument may hold any bytes.
    out = object.dump(-1, ' ', false, Json::error_handler_t::replace);
    out += '\n';
  } else {
    bool first = true;
    for (const Field& f : fields_) {
      if (!f.text) continue;
      if (layout_ == Layout::kLabelledLines) {
        out += f.label + ": " + *f.text + "\n";
      } else {
        out += (first ? "" : "\t") + *f.text;
      }
      first = false;
    }
    if (layout_ == Layout::kOneLine) out += '\n';
  }
  write(out);
}

void printTextLine(const ToolContext& context, const std::string& line) {
  if (!context.json) write(line + "\n");
}

}  // namespace qm::tool
