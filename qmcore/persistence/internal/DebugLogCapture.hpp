// For tests: collects the texts that `debuglog` writes while the capture is alive, instead of
// sending them to the log file.

#ifndef QMCORE_PERSISTENCE_INTERNAL_DEBUGLOGCAPTURE_HPP_
#define QMCORE_PERSISTENCE_INTERNAL_DEBUGLOGCAPTURE_HPP_

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/files/DebugLog.hpp"

namespace qm::internal {

class ScopedLogCapture {
 public:
  ScopedLogCapture()
      : sink_([this](std::string_view, std::string message) {
          // The file message is "<time stamp>, debuglog[:] <text>"; keep the text.
          static constexpr std::string_view kTag = "debuglog[:] ";
          const std::size_t at = message.find(kTag);
          const std::lock_guard<std::mutex> lock(mutex_);
          lines_.push_back(at == std::string::npos ? message : message.substr(at + kTag.size()));
        }) {}

  std::vector<std::string> lines() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
  ScopedDebugLogFileSink sink_;
};

}  // namespace qm::internal

#endif  // QMCORE_PERSISTENCE_INTERNAL_DEBUGLOGCAPTURE_HPP_
