// `QMProfiler`: how much memory the process uses, as a short text, and a debug-log line of it.
//
//   qm::QMProfiler::memoryFootprint();          // "memory: 42 MB"
//   qm::QMProfiler::logMemoryFootprint("sync"); // "[MEMORY][sync] Current memory footpint is:
//                                               //  memory: 42 MB" (debug builds only)
//
// The footprint is the process's resident anonymous memory plus its swapped-out memory
// (RssAnon + VmSwap of /proc/self/status), the Linux counterpart of a physical footprint.
// "memory: NA" when it cannot be read.

#ifndef QMCORE_FILES_QMPROFILER_HPP_
#define QMCORE_FILES_QMPROFILER_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qm {

class QMProfiler {
 public:
  QMProfiler() = delete;

  static std::string memoryFootprint();
  // Logs "[MEMORY][<context>] Current memory footpint is: <memoryFootprint()>" through
  // `debuglog`; an absent context gives "[MEMORY][]". The text is only built in debug builds.
  static void logMemoryFootprint(const std::optional<std::string_view>& context = std::nullopt);

  // The footprint in bytes read from the text of a /proc/<pid>/status file: RssAnon plus
  // VmSwap (a missing VmSwap counts as 0); absent without a well-formed RssAnon line.
  static std::optional<std::uint64_t> footprintFromProcStatus(std::string_view status);
  // "memory: N MB" for a footprint of `bytes` (through a 32-bit float, then whole MiB rounded
  // down), "memory: NA" for none.
  static std::string footprintText(std::optional<std::uint64_t> bytes);
};

}  // namespace qm

#endif  // QMCORE_FILES_QMPROFILER_HPP_
