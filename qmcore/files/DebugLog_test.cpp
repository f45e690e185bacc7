#include "qmcore/files/DebugLog.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/files/QMLog.hpp"

namespace qm {
namespace {

// Each entry point prints a console line and then queues the file message, reading the clock
// for each; a producer's absent text logs nothing.
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
  debuglog([&] {
    ++calls;
    return std::string("[FILE]: done");
  });
  QMLog::log("sync started");
  QMLog::logClosure([&]() -> std::optional<std::string> {
    ++calls;
    return std::nullopt;
  });
  QMLog::logClosure([]() -> std::optional<std::string> { return "made"; });
  const std::string out = ::testing::internal::GetCapturedStdout();
  setDebugLogClock({});
  if (!kQMEnableDebugLog) {
    // Compiled out: no callable runs, nothing is printed or queued, no clock is read.
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(out, "");
    EXPECT_TRUE(files.empty());
    EXPECT_EQ(readings, 0);
    return;
  }
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(out,
            "1970-01-01 00:00:00.250000+0000 debuglog[:] [FILE]: done\n"
            "1970-01-01 00:00:02.250000+0000 debuglog[:] sync started\n"
            "1970-01-01 00:00:04.250000+0000 debuglog[:] made\n");
  EXPECT_EQ(files, (std::vector<std::string>{
                       "debuglog.log|1970-01-01 00:00:01.250000+0000, debuglog[:] [FILE]: done",
                       "debuglog.log|1970-01-01 00:00:03.250000+0000, debuglog[:] sync started",
                       "debuglog.log|1970-01-01 00:00:05.250000+0000, debuglog[:] made"}));
}

TEST(LogDescriptionTest, DescribesEachKindOfValue) {
  EXPECT_EQ(logDescription("literal"), "literal");
  EXPECT_EQ(logDescription(static_cast<const char*>(nullptr)), "nil");
  EXPECT_EQ(logDescription(std::optional<int>()), "nil");
  EXPECT_EQ(logDescription(true), "true");
  EXPECT_EQ(logDescription(0.1), "0.1");  // the shortest text that reads back
  EXPECT_EQ(logDescription(1e21), "1e+21");
  EXPECT_EQ(logDescription(std::optional<int>(-7)), "-7");
  EXPECT_EQ(logDescription(Error("d", 1, "broken")), "broken");
  EXPECT_EQ(logDescription(std::vector<int>{1}), "<value>");
}

}  // namespace
}  // namespace qm
