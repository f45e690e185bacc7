// The memory probe's reading of /proc/self/status text: any bytes give a footprint or none,
// and its text is one of the two forms.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "qmcore/files/QMProfiler.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view status(reinterpret_cast<const char*>(data), size);
  const std::optional<std::uint64_t> bytes = qm::QMProfiler::footprintFromProcStatus(status);
  const std::string text = qm::QMProfiler::footprintText(bytes);
  if (text.rfind("memory: ", 0) != 0) std::abort();
  if (!bytes && text != "memory: NA") std::abort();
  return 0;
}
