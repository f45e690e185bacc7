// The two entry points of the ISO 8601 reader must give the same result for every text
// without a zero byte (NaN counts as equal to NaN), and a zero byte inside a sized text makes
// it NaN. Finite results are never infinite.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "qmcore/formatting/ISO8601.hpp"

namespace {

[[noreturn]] void fail(std::string_view text, double sized, double terminated) {
  std::fprintf(stderr, "ISO 8601 readers differ on \"%.*s\": view %.17g, zero-terminated %.17g\n",
               static_cast<int>(text.size()), text.data(), sized, terminated);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const double sized = qm::QMParseISO8601Date(text);
  if (std::isinf(sized)) fail(text, sized, sized);
  if (text.find('\0') != std::string_view::npos) {
    if (!std::isnan(sized)) fail(text, sized, NAN);
    return 0;
  }
  // An exactly sized copy, so that AddressSanitizer catches a read past the terminator.
  const auto terminated = std::make_unique<char[]>(size + 1);
  std::memcpy(terminated.get(), data, size);
  terminated[size] = '\0';
  const double zeroTerminated = qm::QMParseISO8601Date(terminated.get());
  const bool same = std::isnan(sized) ? std::isnan(zeroTerminated) : sized == zeroTerminated;
  if (!same) fail(text, sized, zeroTerminated);
  return 0;
}
