// The placeholder filler of the string tables gets formats from translators. It must never
// crash, leave a format without "%" as it is, and insert arguments verbatim: filling with
// markers and then replacing the markers by the arguments gives the same text as filling
// with the arguments directly (so an argument is never scanned for placeholders itself).

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "qmcore/strings/StringFormat.hpp"

namespace {

constexpr std::size_t kMaxArguments = 4;
using Arguments = std::array<std::string_view, kMaxArguments>;

// formatLocalized takes its arguments as an initializer list, whose length is fixed at compile
// time.
std::string fill(std::string_view format, const Arguments& a, std::size_t count) {
  switch (count) {
    case 0:
      return qm::formatLocalized(format, {});
    case 1:
      return qm::formatLocalized(format, {a[0]});
    case 2:
      return qm::formatLocalized(format, {a[0], a[1]});
    case 3:
      return qm::formatLocalized(format, {a[0], a[1], a[2]});
    default:
      return qm::formatLocalized(format, {a[0], a[1], a[2], a[3]});
  }
}

[[noreturn]] void fail(const char* what, std::string_view format) {
  std::fprintf(stderr, "%s for the format \"%.*s\"\n", what, static_cast<int>(format.size()),
               format.data());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  const std::size_t count = provider.ConsumeIntegralInRange<std::size_t>(0, kMaxArguments);
  std::array<std::string, kMaxArguments> storage;
  Arguments arguments;
  for (std::size_t i = 0; i < count; ++i) {
    storage[i] = provider.ConsumeRandomLengthString(32);
    arguments[i] = storage[i];
  }
  const std::string format = provider.ConsumeRemainingBytesAsString();

  const std::string filled = fill(format, arguments, count);
  if (format.find('%') == std::string::npos && filled != format) {
    fail("a format without placeholders changed", format);
  }

  // Markers: the byte 0x01 and the argument's number, when the format has no 0x01 of its own.
  if (format.find('\x01') != std::string::npos) return 0;
  std::array<std::string, kMaxArguments> markerStorage;
  Arguments markers;
  for (std::size_t i = 0; i < kMaxArguments; ++i) {
    markerStorage[i] = {'\x01', static_cast<char>('0' + i)};
    markers[i] = markerStorage[i];
  }
  const std::string marked = fill(format, markers, count);
  std::string expanded;
  for (std::size_t i = 0; i < marked.size(); ++i) {
    if (marked[i] == '\x01' && i + 1 < marked.size()) {
      expanded += arguments[static_cast<std::size_t>(marked[++i] - '0')];
    } else {
      expanded += marked[i];
    }
  }
  if (expanded != filled) fail("an argument was not inserted verbatim", format);
  return 0;
}
