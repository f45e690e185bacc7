#include "qmcore/files/QMProfiler.hpp"

#include <charconv>
#include <fstream>
#include <iterator>
#include <limits>

#include "qmcore/files/DebugLog.hpp"

namespace qm {

namespace {

// The kB figure of the line "<key>:   1234 kB"; absent when the line is missing or malformed.
std::optional<std::uint64_t> kilobytes(std::string_view status, std::string_view key) {
  std::size_t at = 0;
  for (;;) {
    at = status.find(key, at);
    if (at == std::string_view::npos) return std::nullopt;
    if (at == 0 || status[at - 1] == '\n') break;
    at += key.size();
  }
  std::string_view rest = status.substr(at + key.size());
  rest = rest.substr(0, rest.find('\n'));
  if (rest.empty() || rest[0] != ':') return std::nullopt;
  rest.remove_prefix(1);
  while (!rest.empty() && (rest[0] == ' ' || rest[0] == '\t')) rest.remove_prefix(1);
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (error != std::errc() || end == rest.data()) return std::nullopt;
  if (std::string_view(end, static_cast<std::size_t>(rest.data() + rest.size() - end)) != " kB") {
    return std::nullopt;
  }
  if (value > std::numeric_limits<std::uint64_t>::max() / 1024) return std::nullopt;
  return value * 1024;
}

}  // namespace

std::optional<std::uint64_t> QMProfiler::footprintFromProcStatus(std::string_view status) {
  const std::optional<std::uint64_t> anonymous = kilobytes(status, "RssAnon");
  if (!anonymous) return std::nullopt;
  const std::uint64_t swapped = kilobytes(status, "VmSwap").value_or(0);
  if (swapped > std::numeric_limits<std::uint64_t>::max() - *anonymous) return std::nullopt;
  return *anonymous + swapped;
}

std::string QMProfiler::footprintText(std::optional<std::uint64_t> bytes) {
  if (!bytes) return "memory: NA";
  // Deliberately coarse: the float keeps about 24 significant bits.
  const auto coarse = static_cast<float>(*bytes);
  // A float of a value near 2^64 can round up past the largest integer; keep it in range.
  const std::uint64_t back = coarse >= 18446744073709551616.0f
                                 ? std::numeric_limits<std::uint64_t>::max()
                                 : static_cast<std::uint64_t>(coarse);
  return "memory: " + std::to_string(back >> 20) + " MB";
}

std::string QMProfiler::memoryFootprint() {
  std::ifstream file("/proc/self/status");
  if (!file) return footprintText(std::nullopt);
  const std::string status((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
  return footprintText(footprintFromProcStatus(status));
}

void QMProfiler::logMemoryFootprint(const std::optional<std::string_view>& context) {
  debuglog([&] {
    return "[MEMORY][" + std::string(context.value_or("")) +
           "] Current memory footpint is: " + memoryFootprint();
  });
}

}  // namespace qm
