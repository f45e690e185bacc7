// `QMLog`: the log facade in the form that object-runtime callers use, with the message given
// as a text or produced by a callable.
//
//   qm::QMLog::log("sync started");
//   qm::QMLog::logClosure([&]() -> std::optional<std::string> {
//     if (items.empty()) return std::nullopt;   // nothing logged
//     return "synced " + std::to_string(items.size()) + " items";
//   });
//
// Both do nothing unless the debug log is compiled in (`kQMEnableDebugLog`); `logClosure`
// then never calls its callable. What is logged goes through `debuglog` (DebugLog.hpp).

#ifndef QMCORE_FILES_QMLOG_HPP_
#define QMCORE_FILES_QMLOG_HPP_

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "qmcore/files/DebugLog.hpp"

namespace qm {

class QMLog {
 public:
  // Logging is always asynchronous with respect to the file; nothing reads this.
  static constexpr bool logSync = false;

  static void log(std::string_view message) {
    if constexpr (kQMEnableDebugLog) {
      debuglog([message] { return message; });
    }
  }

  // `produce` returns an optional text; an absent text logs nothing.
  template <typename Producer>
  static void logClosure(Producer&& produce) {
    if constexpr (kQMEnableDebugLog) {
      const std::optional<std::string> text = std::forward<Producer>(produce)();
      if (text.has_value()) debuglog([&text]() -> const std::string& { return *text; });
    }
  }

  QMLog() = delete;
};

}  // namespace qm

#endif  // QMCORE_FILES_QMLOG_HPP_
