// Any bytes through the printable-ASCII sanitiser: the result must be exactly what a walk over
// ICU's grapheme clusters keeps, only printable ASCII, and cut to the asked length.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"
#include "qmcore/platform/UnicodeText.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  const bool cut = provider.ConsumeBool();
  const std::int64_t max = provider.ConsumeIntegralInRange<std::int64_t>(0, 64);
  const std::string text = provider.ConsumeRemainingBytesAsString();

  std::string expected;
  for (const std::string& cluster : qm::graphemeClusters(text)) {
    if (cluster.size() == 1 && cluster[0] >= 32 && cluster[0] <= 126) expected += cluster;
  }
  const std::string all = qm::QMASCIIStringSanitizer::sanitizeForPrintableASCII(text);
  if (all != expected) std::abort();
  if (cut) {
    const std::string part = qm::QMASCIIStringSanitizer::sanitizeForPrintableASCII(text, max);
    if (part != expected.substr(0, static_cast<std::size_t>(max))) std::abort();
  }
  return 0;
}
