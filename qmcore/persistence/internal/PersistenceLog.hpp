// The one way this folder writes its diagnostics. Lines are built only when the build's debug
// log switch is on (`kQMEnableDebugLog`); otherwise the closure is never called.
//
// Until the library's log facade is in place, lines go to stderr, one each; tests capture
// them with `ScopedLogCapture`.

#ifndef QMCORE_PERSISTENCE_INTERNAL_PERSISTENCELOG_HPP_
#define QMCORE_PERSISTENCE_INTERNAL_PERSISTENCELOG_HPP_

#include <functional>
#include <string>
#include <vector>

#include "qmcore/platform/BuildConfig.hpp"

namespace qm::internal {

// Writes one line.
void writePersistenceLogLine(const std::string& line);

// Calls `makeLine` and writes its text when the debug log is compiled in.
template <typename MakeLine>
void persistenceLog(MakeLine&& makeLine) {
  if constexpr (kQMEnableDebugLog) writePersistenceLogLine(makeLine());
}

// While alive, the lines written on this thread are collected here instead of printed.
class ScopedLogCapture {
 public:
  ScopedLogCapture();
  ~ScopedLogCapture();
  ScopedLogCapture(const ScopedLogCapture&) = delete;
  ScopedLogCapture& operator=(const ScopedLogCapture&) = delete;

  const std::vector<std::string>& lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
  ScopedLogCapture* previous_;
};

}  // namespace qm::internal

#endif  // QMCORE_PERSISTENCE_INTERNAL_PERSISTENCELOG_HPP_
