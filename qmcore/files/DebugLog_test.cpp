// The debug log, its facade, value descriptions and the memory footprint logged through it.

#include "qmcore/files/DebugLog.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "qmcore/files/QMLog.hpp"
#include "qmcore/files/QMProfiler.hpp"

namespace qm {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;

// Each entry point prints a console line and then queues the file message, reading the clock
// for each; a producer's absent text logs nothing. The profiler logs through them.
TEST(DebugLogTest, EveryEntryFollowsTheSwitch) {
  std::vector<std::string> files;
  const ScopedDebugLogFileSink sink([&](std::string_view name, std::string message) {
    files.push_back(std::string(name) + "|" + message);
  });
  // A clock that moves on by a second at each reading, from 1970-01-01 00:00:00.25 UTC.
  int readings = 0;
  setDebugLogClock([&] { return Date::fromUnixSeconds(0.25 + readings++); });
  ::testing::internal::CaptureStdout();
  int calls = 0;
  QMLog::log("sync started");
  QMLog::logClosure([&]() -> std::optional<std::string> {
    ++calls;
    return std::nullopt;
  });
  QMLog::logClosure([]() -> std::optional<std::string> { return "made"; });
  QMProfiler::logMemoryFootprint("ctx");
  const std::string out = ::testing::internal::GetCapturedStdout();
  setDebugLogClock({});
  if (!kQMEnableDebugLog) {
    // Compiled out: no callable runs, nothing is printed or queued, no clock is read.
    EXPECT_EQ(calls + readings, 0);
    EXPECT_TRUE(out.empty() && files.empty());
    return;
  }
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(out,
              ::testing::StartsWith("1970-01-01 00:00:00.250000+0000 debuglog[:] sync started\n"
                                    "1970-01-01 00:00:02.250000+0000 debuglog[:] made\n"));
  EXPECT_THAT(files,
              ElementsAre("debuglog.log|1970-01-01 00:00:01.250000+0000, debuglog[:] sync started",
                          "debuglog.log|1970-01-01 00:00:03.250000+0000, debuglog[:] made",
                          ContainsRegex("05\\.250000\\+0000, debuglog\\[:\\] \\[MEMORY\\]\\[ctx\\] "
                                        "Current memory footpint is: memory: [0-9]+ MB$")));
}

// Each kind of value by its own rule: texts as they are, absent values as "nil", numbers by
// their shortest text that reads back, errors by their description.
TEST(LogDescriptionTest, DescribesEachKindOfValue) {
  EXPECT_EQ(logDescription(static_cast<const char*>(nullptr)), "nil");
  EXPECT_EQ(logDescription(std::optional<int>()), "nil");
  EXPECT_EQ(logDescription(true), "true");
  EXPECT_EQ(logDescription(std::optional<double>(0.1)), "0.1");
  EXPECT_EQ(logDescription(Error("d", 1, "broken")), "broken");
  EXPECT_EQ(logDescription(std::vector<int>{1}), "<value>");
}

// The footprint is RssAnon plus VmSwap, read only from well-formed "<key>: <n> kB" lines at a
// line start, and shown through a float in whole mebibytes.
TEST(QMProfilerTest, FootprintAddsAnonymousAndSwappedMemory) {
  const std::pair<std::string, std::string> cases[] = {
      {"VmRSS:\t9 kB\nRssAnon:\t  1023 kB\n", "memory: 0 MB"},  // no swap line: none swapped
      {"VmSwap:\t1 kB\nRssAnon:\t1023 kB", "memory: 1 MB"},
      // 2^35 bytes less 1 kB needs 25 bits: the float rounds it up.
      {"RssAnon:\t33554431 kB\n", "memory: 32768 MB"},
      // The most kilobytes whose bytes fit in 64 bits; the float rounds them up past them.
      {"RssAnon:\t18014398509481983 kB\n", "memory: 17592186044415 MB"},
      {"RssAnon:\t18014398509481984 kB\n", "memory: NA"},
      {"XRssAnon:\t5 kB\n", "memory: NA"},
      {"RssAnon:\tlots kB\n", "memory: NA"},
      {"RssAnon:\t5 MB\n", "memory: NA"},
  };
  for (const auto& [status, text] : cases) {
    EXPECT_EQ(QMProfiler::footprintText(QMProfiler::footprintFromProcStatus(status)), text)
        << status;
  }
}

}  // namespace
}  // namespace qm
