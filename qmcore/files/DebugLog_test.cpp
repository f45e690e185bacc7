#include "qmcore/files/DebugLog.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/files/CategoryDescriptionHolder.hpp"
#include "qmcore/files/QMLog.hpp"

namespace qm {
namespace {

// Collects what the facade prints and queues during one test, with a clock that moves on by
// a second at each reading, starting at 1970-01-01 00:00:00.25 UTC.
class DebugLogTest : public ::testing::Test {
 protected:
  DebugLogTest()
      : sink_([this](std::string_view name, std::string message) {
          files_.push_back(std::string(name) + "|" + message);
        }) {
    previousClock_ = setDebugLogClock([this] {
      const Date date = Date::fromUnixSeconds(0.25 + readings_);
      ++readings_;
      return date;
    });
    ::testing::internal::CaptureStdout();
  }
  ~DebugLogTest() override { setDebugLogClock(previousClock_); }

  std::string stdoutText() { return ::testing::internal::GetCapturedStdout(); }

  std::vector<std::string> files_;
  int readings_ = 0;
  ScopedDebugLogFileSink sink_;
  std::function<Date()> previousClock_;
};

// One way of calling the facade; `calls` counts the evaluations of the caller's callable.
struct EntryCase {
  const char* name;
  std::function<void(int& calls)> log;
  // What is logged when the switch is on; nullopt: nothing at all.
  std::optional<std::string> logged;
};

class DebugLogEntryTest : public DebugLogTest, public ::testing::WithParamInterface<EntryCase> {};

TEST_P(DebugLogEntryTest, FollowsTheSwitch) {
  int calls = 0;
  GetParam().log(calls);
  const std::string out = stdoutText();
  if (!kQMEnableDebugLog) {
    // Compiled out: the callable never runs, nothing is printed or queued, no clock is read.
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(out, "");
    EXPECT_TRUE(files_.empty());
    EXPECT_EQ(readings_, 0);
    return;
  }
  if (!GetParam().logged.has_value()) {
    EXPECT_EQ(out, "");
    EXPECT_TRUE(files_.empty());
    return;
  }
  EXPECT_LE(calls, 1);
  // Two separate readings of the clock: the console line first, then the file message.
  EXPECT_EQ(out, "1970-01-01 00:00:00.250000+0000 debuglog[:] " + *GetParam().logged + "\n");
  ASSERT_EQ(files_.size(), 1u);
  EXPECT_EQ(files_[0],
            "debuglog.log|1970-01-01 00:00:01.250000+0000, debuglog[:] " + *GetParam().logged);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, DebugLogEntryTest,
    ::testing::Values(EntryCase{"DebuglogText",
                                [](int& calls) {
                                  debuglog([&] {
                                    ++calls;
                                    return std::string("[FILE]: done");
                                  });
                                },
                                "[FILE]: done"},
                      EntryCase{"DebuglogNumber",
                                [](int& calls) {
                                  debuglog([&] {
                                    ++calls;
                                    return 2.5;
                                  });
                                },
                                "2.5"},
                      EntryCase{"QMLogLog", [](int&) { QMLog::log("sync started"); },
                                "sync started"},
                      EntryCase{"LogClosureText",
                                [](int& calls) {
                                  QMLog::logClosure([&]() -> std::optional<std::string> {
                                    ++calls;
                                    return "made";
                                  });
                                },
                                "made"},
                      EntryCase{"LogClosureNothing",
                                [](int& calls) {
                                  QMLog::logClosure([&]() -> std::optional<std::string> {
                                    ++calls;
                                    return std::nullopt;
                                  });
                                },
                                std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DebugLogTest, LinesFromOneThreadKeepTheirOrder) {
  for (int i = 0; i < 3; ++i) debuglog([i] { return i; });
  stdoutText();
  const std::vector<std::string> expected =
      kQMEnableDebugLog
          ? std::vector<std::string>{"debuglog.log|1970-01-01 00:00:01.250000+0000, debuglog[:] 0",
                                     "debuglog.log|1970-01-01 00:00:03.250000+0000, debuglog[:] 1",
                                     "debuglog.log|1970-01-01 00:00:05.250000+0000, debuglog[:] 2"}
          : std::vector<std::string>{};
  EXPECT_EQ(files_, expected);
}

TEST(DebugLogTimestampTest, HasMicrosecondDigitsAndTheZoneOffset) {
  EXPECT_EQ(debugLogTimestamp(Date::fromUnixSeconds(86400.5)), "1970-01-02 00:00:00.500000+0000");
}

struct DescriptionCase {
  std::string text;
  std::string expected;
};

class LogDescriptionTest : public ::testing::TestWithParam<DescriptionCase> {};

TEST_P(LogDescriptionTest, Describes) { EXPECT_EQ(GetParam().text, GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Values, LogDescriptionTest,
    ::testing::Values(DescriptionCase{logDescription(std::string("a b")), "a b"},
                      DescriptionCase{logDescription("literal"), "literal"},
                      DescriptionCase{logDescription(static_cast<const char*>(nullptr)), "nil"},
                      DescriptionCase{logDescription(true), "true"},
                      DescriptionCase{logDescription(-42), "-42"},
                      DescriptionCase{logDescription(0.1), "0.1"},
                      DescriptionCase{logDescription(1e21), "1e+21"},
                      DescriptionCase{logDescription(std::optional<int>()), "nil"},
                      DescriptionCase{logDescription(std::optional<int>(7)), "7"},
                      DescriptionCase{logDescription(Error("d", 1, "broken")), "broken"},
                      DescriptionCase{logDescription(std::vector<int>{1}), "<value>"}));

struct Category : CategoryDescriptionHolder {
  std::string t;
  std::string a;
  Category(std::string title, std::string abbreviation)
      : t(std::move(title)), a(std::move(abbreviation)) {}
  std::string categoryDescription() const override { return "unused"; }
  std::string title() const override { return t; }
  std::string abbreviation() const override { return a; }
};

TEST(CategoryDescriptionHolderTest, JoinsTitleAndAbbreviationWithoutSpace) {
  EXPECT_EQ(Category("Walking", "W").titleWithAbbreviation(), "Walking[W]");
  EXPECT_EQ(Category("", "").titleWithAbbreviation(), "[]");
  EXPECT_EQ(Category("Rad fahren", "R f").titleWithAbbreviation(), "Rad fahren[R f]");
}

}  // namespace
}  // namespace qm
