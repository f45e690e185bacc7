#include "qmcore/files/QMProfiler.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "qmcore/files/DebugLog.hpp"

namespace qm {
namespace {

struct FootprintCase {
  std::optional<std::uint64_t> bytes;
  std::string text;
};

class FootprintTextTest : public ::testing::TestWithParam<FootprintCase> {};

TEST_P(FootprintTextTest, RoundsThroughFloatThenWholeMebibytes) {
  EXPECT_EQ(QMProfiler::footprintText(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, FootprintTextTest,
    ::testing::Values(FootprintCase{std::nullopt, "memory: NA"}, FootprintCase{0, "memory: 0 MB"},
                      FootprintCase{1048575, "memory: 0 MB"},
                      FootprintCase{1048576, "memory: 1 MB"},
                      // 2^30 - 1 needs 30 bits: the float rounds it up to 2^30, 1024 MB.
                      FootprintCase{(1u << 30) - 1, "memory: 1024 MB"},
                      // 2^24 + 1 (16 MB and a byte) is kept as 2^24.
                      FootprintCase{(1u << 24) + 1, "memory: 16 MB"},
                      FootprintCase{UINT64_MAX, "memory: 17592186044415 MB"}));

struct StatusCase {
  std::string status;
  std::optional<std::uint64_t> bytes;
};

class ProcStatusTest : public ::testing::TestWithParam<StatusCase> {};

TEST_P(ProcStatusTest, AddsAnonymousAndSwappedMemory) {
  EXPECT_EQ(QMProfiler::footprintFromProcStatus(GetParam().status), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ProcStatusTest,
    ::testing::Values(
        StatusCase{"Name:\tqmcore\nVmRSS:\t  9000 kB\nRssAnon:\t  2048 kB\nVmSwap:\t  1024 kB\n",
                   3072 * 1024},
        StatusCase{"RssAnon:\t100 kB\n", 100 * 1024},  // no swap line: none swapped
        StatusCase{"VmSwap:\t1 kB\nRssAnon:\t1 kB", 2048},
        StatusCase{"RssFile:\t5 kB\n", std::nullopt},                     // no RssAnon
        StatusCase{"XRssAnon:\t5 kB\n", std::nullopt},                    // not at a line start
        StatusCase{"RssAnon:\tlots kB\n", std::nullopt},                  // not a number
        StatusCase{"RssAnon:\t5 MB\n", std::nullopt},                     // not kB
        StatusCase{"RssAnon:\t99999999999999999999 kB\n", std::nullopt},  // overflows
        StatusCase{"", std::nullopt}));

TEST(QMProfilerTest, ReadsThisProcess) {
  EXPECT_TRUE(std::regex_match(QMProfiler::memoryFootprint(), std::regex("memory: \\d+ MB")));
}

struct LogCase {
  std::optional<std::string_view> context;
  std::string prefix;
};

class LogFootprintTest : public ::testing::TestWithParam<LogCase> {};

TEST_P(LogFootprintTest, LogsTheFootprintUnderItsContext) {
  std::vector<std::string> messages;
  const ScopedDebugLogFileSink sink(
      [&](std::string_view, std::string message) { messages.push_back(message); });
  ::testing::internal::CaptureStdout();
  QMProfiler::logMemoryFootprint(GetParam().context);
  const std::string out = ::testing::internal::GetCapturedStdout();
  if (!kQMEnableDebugLog) {
    EXPECT_EQ(out, "");
    EXPECT_TRUE(messages.empty());
    return;
  }
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_TRUE(
      std::regex_search(messages[0], std::regex(", debuglog\\[:\\] " + GetParam().prefix +
                                                " Current memory footpint is: memory: \\d+ MB$")))
      << messages[0];
}

INSTANTIATE_TEST_SUITE_P(Contexts, LogFootprintTest,
                         ::testing::Values(LogCase{"ctx", "\\[MEMORY\\]\\[ctx\\]"},
                                           LogCase{std::nullopt, "\\[MEMORY\\]\\[\\]"},
                                           LogCase{"", "\\[MEMORY\\]\\[\\]"}));

}  // namespace
}  // namespace qm
