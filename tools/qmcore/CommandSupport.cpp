// What every command group reads and writes the same way: numbers given as arguments, numbers
// printed, files read.

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

double parseNumber(const std::string& text, const std::string& what) {
  const char* begin = text.c_str();
  char* end = nullptr;
  errno = 0;
  const double value = std::strtod(begin, &end);
  if (text.empty() || end != begin + text.size() || errno == ERANGE || std::isnan(value)) {
    throw UsageError(what + " is not a number: '" + text + "'");
  }
  return value;
}

double parseFiniteNumber(const std::string& text, const std::string& what) {
  const double value = parseNumber(text, what);
  if (!std::isfinite(value)) throw UsageError(what + " is not a finite number: '" + text + "'");
  return value;
}

std::string numberText(double value) {
  const double magnitude = std::fabs(value);
  const bool fixed = magnitude == 0.0 || (magnitude >= 1e-6 && magnitude < 1e21);
  char buffer[512];
  const auto result =
      fixed ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
            : std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw UsageError("cannot read the file '" + path + "'");
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace qm::tool
