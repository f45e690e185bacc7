// The library's single way of writing diagnostics: `debuglog`, its build switches and the
// file it writes to.
//
//   qm::debuglog([&] { return "[FILE]: Error when cleaning up temporary directory: " + text; });
//
// stdout:  "2026-11-23 21:55:16.123000+0000 debuglog[:] [FILE]: Error when ..."
// queued for "debuglog.log" in the temporary directory (the file logger adds its own stamp):
//          "2026-11-23 21:55:16.123000+0000, debuglog[:] [FILE]: Error when ..."
//
// Everything is gated by `kQMEnableDebugLog` (BuildConfig.hpp), on in debug builds and off in
// release builds. When it is off the callable is never called, so the cost of building the
// text disappears: always build log texts inside the callable, never before the call.
//
// The console line and the file message read the clock separately, in that order, on the
// caller's thread. The file message is handed to the file sink (below), which queues it; lines
// submitted from one thread keep their order in the file.
//
// Thread-safety: every function here may be called from any thread.

#ifndef QMCORE_FILES_DEBUGLOG_HPP_
#define QMCORE_FILES_DEBUGLOG_HPP_

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "qmcore/files/LogDescription.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/platform/Date.hpp"

namespace qm {

// The log file `debuglog` writes to, in the temporary directory.
inline constexpr std::string_view QMDebugLogFileName = "debuglog.log";

// Switches offered to apps for their own logging; the library does not read them.
inline constexpr bool QMRestHelperLog = false;
inline constexpr bool QMSyncServerLog = false;
inline constexpr bool QMSyncLog = false;
inline constexpr bool kQMLogTrackFiles = false;
inline constexpr bool kQMLogMotionVerbose = false;

// The long time stamp of log lines, "yyyy-MM-dd HH:mm:ss.SSSSSSZZ" in the current locale and
// time zone ("2026-11-23 21:55:16.123000+0000"). The formatter is made once per process.
std::string debugLogTimestamp(Date date);

namespace internal {
// Prints the console line for `description` and hands the file message to the file sink.
void writeDebugLog(const std::string& description);
}  // namespace internal

// Calls `produce` once and logs its result (any type; see LogDescription.hpp), when the debug
// log is compiled in. Otherwise does nothing at all.
template <typename Producer>
void debuglog(Producer&& produce) {
  if constexpr (kQMEnableDebugLog) {
    internal::writeDebugLog(logDescription(std::forward<Producer>(produce)()));
  }
}

// ---------------------------------------------------------------------------------------------
// Connections. The file message of every `debuglog` goes to a file sink; the clock of the time
// stamps is the process environment's. Both can be replaced, by the file logger and by tests.

// Receives the file message of a `debuglog` call: the log file's name (always
// `QMDebugLogFileName`) and the message without a line feed. Called on the logging thread; it
// must queue rather than block for long, and must not call `debuglog` itself.
using DebugLogFileSink = std::function<void(std::string_view fileName, std::string message)>;

// Installs `sink` and returns the one it replaces. An empty sink restores the default: the
// file logger's append (`internal::appendToDebugLogFile`).
DebugLogFileSink setDebugLogFileSink(DebugLogFileSink sink);

// Installs the clock of the time stamps and returns the one it replaces. Empty restores the
// default, `Env::Default().now()`.
std::function<Date()> setDebugLogClock(std::function<Date()> now);

// Replaces the file sink for the lifetime of the object, and puts the previous one back.
class ScopedDebugLogFileSink {
 public:
  explicit ScopedDebugLogFileSink(DebugLogFileSink sink)
      : previous_(setDebugLogFileSink(std::move(sink))) {}
  ~ScopedDebugLogFileSink() { setDebugLogFileSink(std::move(previous_)); }
  ScopedDebugLogFileSink(const ScopedDebugLogFileSink&) = delete;
  ScopedDebugLogFileSink& operator=(const ScopedDebugLogFileSink&) = delete;

 private:
  DebugLogFileSink previous_;
};

namespace internal {
// The default file sink: the file logger's append of `message` to `fileName` in the temporary
// directory (`QMFileLogger::shared().logTofile`). Defined in DebugLogFileSink.cpp, the one
// place where the facade meets the logger.
void appendToDebugLogFile(std::string_view fileName, std::string message);
}  // namespace internal

}  // namespace qm

#endif  // QMCORE_FILES_DEBUGLOG_HPP_
