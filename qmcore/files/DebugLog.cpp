#include "qmcore/files/DebugLog.hpp"

#include <cstdio>
#include <memory>
#include <mutex>

#include "qmcore/platform/DateFormatter.hpp"
#include "qmcore/platform/Env.hpp"

namespace qm {

namespace {

struct Connections {
  std::mutex mutex;
  std::shared_ptr<const DebugLogFileSink> sink;
  std::shared_ptr<const std::function<Date()>> clock;
};

Connections& connections() {
  static Connections instance;
  return instance;
}

Date now() {
  std::shared_ptr<const std::function<Date()>> clock;
  {
    Connections& c = connections();
    const std::lock_guard lock(c.mutex);
    clock = c.clock;
  }
  return clock != nullptr ? (*clock)() : Env::Default().now();
}

void submitToFile(std::string message) {
  std::shared_ptr<const DebugLogFileSink> sink;
  {
    Connections& c = connections();
    const std::lock_guard lock(c.mutex);
    sink = c.sink;
  }
  if (sink != nullptr) {
    (*sink)(QMDebugLogFileName, std::move(message));
  } else {
    internal::appendToDebugLogFile(QMDebugLogFileName, std::move(message));
  }
}

}  // namespace

std::string debugLogTimestamp(Date date) {
  static const DateFormatter formatter("yyyy-MM-dd HH:mm:ss.SSSSSSZZ");
  return formatter.format(date);
}

DebugLogFileSink setDebugLogFileSink(DebugLogFileSink sink) {
  auto next = sink ? std::make_shared<const DebugLogFileSink>(std::move(sink)) : nullptr;
  Connections& c = connections();
  const std::lock_guard lock(c.mutex);
  std::swap(next, c.sink);
  return next != nullptr ? *next : DebugLogFileSink();
}

std::function<Date()> setDebugLogClock(std::function<Date()> now) {
  auto next = now ? std::make_shared<const std::function<Date()>>(std::move(now)) : nullptr;
  Connections& c = connections();
  const std::lock_guard lock(c.mutex);
  std::swap(next, c.clock);
  return next != nullptr ? *next : std::function<Date()>();
}

namespace internal {

void writeDebugLog(const std::string& description) {
  // One fwrite per line: stdio locks the stream per call, so lines do not interleave.
  const std::string line = debugLogTimestamp(now()) + " debuglog[:] " + description + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  submitToFile(debugLogTimestamp(now()) + ", debuglog[:] " + description);
}

}  // namespace internal

}  // namespace qm
