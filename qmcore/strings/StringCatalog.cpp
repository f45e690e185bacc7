#include "qmcore/strings/StringCatalog.hpp"

#include <algorithm>
#include <unordered_set>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/StringTables.hpp"

namespace qm {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Skips the digits at `i`; returns their value, or -1 when there are none.
int readNumber(std::string_view text, size_t& i) {
  int value = -1;
  while (i < text.size() && isDigit(text[i]) && value < 1000) {
    value = (value < 0 ? 0 : value * 10) + (text[i] - '0');
    ++i;
  }
  return value;
}

// The conversion of the placeholder that starts after the "%" at `i`, in the platform's
// format syntax: [n$] flags width [.precision] length conversion. Advances `i` past it; none
// (and `i` unchanged) when no conversion follows, so the "%" is a plain character.
std::optional<std::string> readPlaceholder(std::string_view text, size_t& i, int& next) {
  size_t j = i;
  int number = -1;
  if (size_t k = j; readNumber(text, k) > 0 && k < text.size() && text[k] == '$') {
    number = readNumber(text, j);
    ++j;
  }
  while (j < text.size() && std::string_view("-+ #0'").find(text[j]) != std::string_view::npos) {
    ++j;
  }
  readNumber(text, j);
  if (j < text.size() && text[j] == '.') {
    ++j;
    readNumber(text, j);
  }
  while (j < text.size() && std::string_view("hlqLzjt").find(text[j]) != std::string_view::npos) {
    ++j;
  }
  if (j >= text.size() ||
      std::string_view("@dDiuUxXoOfFeEgGaAcCsSp").find(text[j]) == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string conversion(text.substr(i, j + 1 - i));
  i = j + 1;
  // The argument number and the conversion letter; flags and widths may differ between
  // languages ("%02d" and "%d" take the same argument).
  const int argument = number > 0 ? number : ++next;
  return "%" + std::to_string(argument) + "$" + conversion.back();
}

}  // namespace

std::vector<std::string_view> StringCatalog::languages() {
  const auto languages = internal::tableLanguages();
  return {languages.begin(), languages.end()};
}

std::vector<std::string_view> StringCatalog::keys() {
  std::vector<std::string_view> keys;
  for (const internal::StringEntry& entry : internal::stringTable("en")) keys.push_back(entry.key);
  return keys;
}

std::string_view StringCatalog::tableLanguage(std::string_view localeIdentifier) {
  const std::string_view language = languageOfLocale(localeIdentifier);
  for (const std::string_view candidate : internal::tableLanguages()) {
    if (candidate == language) return candidate;
  }
  return "en";
}

std::optional<std::string_view> StringCatalog::text(std::string_view key,
                                                    std::string_view language) {
  for (const internal::StringEntry& entry : internal::stringTable(language)) {
    if (entry.key == key) return entry.text;
  }
  return std::nullopt;
}

std::vector<std::string_view> StringCatalog::missingKeys(std::string_view localeIdentifier) {
  std::unordered_set<std::string_view> present;
  for (const internal::StringEntry& entry :
       internal::stringTable(languageOfLocale(localeIdentifier))) {
    present.insert(entry.key);
  }
  std::vector<std::string_view> missing;
  for (const std::string_view key : keys()) {
    if (!present.contains(key)) missing.push_back(key);
  }
  return missing;
}

std::vector<std::string> StringCatalog::placeholders(std::string_view format) {
  std::vector<std::string> found;
  int next = 0;  // the argument of the last unnumbered placeholder
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') continue;
    if (i + 1 < format.size() && format[i + 1] == '%') {
      ++i;
      continue;
    }
    size_t after = i + 1;
    if (auto placeholder = readPlaceholder(format, after, next)) {
      found.push_back(std::move(*placeholder));
      i = after - 1;
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace qm
